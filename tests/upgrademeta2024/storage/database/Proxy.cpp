#include "upgrademeta2024/storage/database/Proxy.h"

#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace test {
namespace {

int ConnectToServer() {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* addresses = nullptr;
  if (getaddrinfo(std::getenv("PGHOST"), std::getenv("PGPORT"), &hints, &addresses) != 0) {
    return -1;
  }
  int connection = -1;
  for (const addrinfo* address = addresses; address != nullptr && connection < 0; address = address->ai_next) {
    connection = socket(address->ai_family, SOCK_STREAM, 0);
    if (connect(connection, address->ai_addr, address->ai_addrlen) != 0) {
      close(connection);
      connection = -1;
    }
  }
  freeaddrinfo(addresses);
  return connection;
}

bool SendAll(int connection, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t count = send(connection, data, size, MSG_NOSIGNAL);
    if (count <= 0) {
      return false;
    }
    data += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

CProxy::CProxy(std::size_t limit, std::function<bool()> interruption)
    : limit_(limit), interruption_(std::move(interruption)), listener_(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  // The sockets interface takes every kind of address through this cast.
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, generic, size) != 0 || listen(listener_, 1) != 0 || getsockname(listener_, generic, &size) != 0) {
    close(listener_);
    throw std::runtime_error("no port for the proxy");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Serve(); });
}

CProxy::~CProxy() {
  // Ends accept() when no connection has come.
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

void CProxy::Serve() {
  const int client = accept(listener_, nullptr, nullptr);
  if (client < 0) {
    return;
  }
  if (const int server = ConnectToServer(); server >= 0) {
    Forward(client, server);
    close(server);
  }
  close(client);
}

void CProxy::Forward(int client, int server) {
  std::size_t handedOver = 0;
  std::array<pollfd, 2> ends = {pollfd{client, POLLIN, 0}, pollfd{server, POLLIN, 0}};
  std::array<char, 4096> buffer{};
  while (poll(ends.data(), ends.size(), -1) > 0) {
    for (const pollfd& end : ends) {
      if (end.revents == 0) {
        continue;
      }
      const ssize_t count = recv(end.fd, buffer.data(), buffer.size(), 0);
      const bool fromServer = end.fd == server;
      if (count <= 0 || !SendAll(fromServer ? client : server, buffer.data(), static_cast<std::size_t>(count))) {
        return;
      }
      handedOver += fromServer ? static_cast<std::size_t>(count) : 0;
      if (handedOver >= limit_ && !hasInterrupted_.exchange(true) && !interruption_()) {
        return;
      }
    }
  }
}

}  // namespace test
