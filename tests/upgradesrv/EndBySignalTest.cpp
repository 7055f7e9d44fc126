// What SIGHUP, SIGINT and SIGTERM do to the tool while it waits for others.

#include "upgradesrv/EndBySignal.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <ostream>
#include <string>

#include "UpgradeDirectory.h"

namespace {

/// A server that accepts connections and says nothing.
class CSilentServer {
 public:
  CSilentServer() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(listen(socket_, 8), 0);
    EXPECT_EQ(getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size), 0);
    port_ = ntohs(address.sin_port);
  }
  ~CSilentServer() { close(socket_); }
  CSilentServer(const CSilentServer&) = delete;
  CSilentServer& operator=(const CSilentServer&) = delete;

  std::string Location() const { return "postgresql://host=127.0.0.1 port=" + std::to_string(port_) + " dbname=plm"; }

 private:
  int socket_;
  int port_ = 0;
};

struct SSignal {
  const char* name;
  int number;
};

void PrintTo(const SSignal& signal, std::ostream* out) {
  *out << signal.name;
}

class EndBySignalTest : public testing::TestWithParam<SSignal> {
 protected:
  /// Sends the signal to the tool after half a second.
  static test::SProcessResult EndAfterHalfASecond(const std::string& arguments, const std::string& argument) {
    return test::RunInShell(
        std::string("exec /usr/bin/timeout --preserve-status -s ") + GetParam().name + " 0.5 \"$0\" " + arguments,
        argument);
  }

  static void ExpectEnded(const test::SProcessResult& result) {
    EXPECT_EQ(result.status, 128 + GetParam().number);
    EXPECT_EQ(result.output, "");
  }

  test::CUpgradeDirectory upgrade_;
};

TEST_P(EndBySignalTest, EndsARunWhileAServerIsSilent) {
  const CSilentServer server;
  ExpectEnded(EndAfterHalfASecond("run --client '" + server.Location() + "' \"$1\"", upgrade_.Path()));
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_P(EndBySignalTest, EndsTheWaitForAPipe) {
  const std::string fifo = upgrade_.File("client.json");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  ExpectEnded(EndAfterHalfASecond("metamodel show \"$1\"", fifo));
}

INSTANTIATE_TEST_SUITE_P(Signals, EndBySignalTest,
                         testing::Values(SSignal{"HUP", SIGHUP}, SSignal{"INT", SIGINT}, SSignal{"TERM", SIGTERM}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(EndByIgnoredSignalTest, DoesNotHappen) {
  const test::CUpgradeDirectory upgrade;
  // A shell has its background jobs ignore SIGINT. The pipe is open for writing once the tool has opened it.
  const test::SProcessResult result = test::RunInShell(
      "mkfifo \"$1/pipe.json\" || exit 9; \"$0\" metamodel show \"$1/pipe.json\" & tool=$!; exec 3>\"$1/pipe.json\"; "
      "kill -INT $tool; cat \"$1/installation.json\" >&3; exec 3>&-; wait $tool",
      upgrade.Path());
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, testing::HasSubstr("classes:    1 with"));
}

}  // namespace
