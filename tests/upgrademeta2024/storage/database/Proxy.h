#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <string>
#include <thread>

namespace test {

/// Is between a client and the PostgreSQL server that PGHOST and PGPORT name. Once it has handed `limit` bytes to
/// the client, in the midst of whatever it is reading, it calls `interruption`, which answers whether the connection
/// goes on. Serves one connection.
class CProxy {
 public:
  CProxy(std::size_t limit, std::function<bool()> interruption);
  ~CProxy();
  CProxy(const CProxy&) = delete;
  CProxy& operator=(const CProxy&) = delete;

  /// The connection words that lead here.
  std::string Words() const { return "host=127.0.0.1 port=" + std::to_string(port_); }
  /// Whether the interruption has taken place.
  bool HasInterrupted() const { return hasInterrupted_; }

 private:
  void Serve();
  void Forward(int client, int server);

  std::size_t limit_;
  std::function<bool()> interruption_;
  std::atomic<bool> hasInterrupted_ = false;
  int listener_;
  int port_ = 0;
  std::thread thread_;
};

}  // namespace test
