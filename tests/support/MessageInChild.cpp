#include "support/MessageInChild.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

#include "support/Error.h"

namespace test {

std::string MessageInChild(const std::function<bool()>& prepare, const std::function<void()>& action) {
  std::array<int, 2> ends{};
  EXPECT_EQ(pipe(ends.data()), 0);
  const pid_t child = fork();
  if (child == 0) {
    alarm(30);
    const std::string message = prepare() ? ErrorOf(action).message : "not prepared";
    const ssize_t written = write(ends[1], message.data(), message.size());
    _exit(written == static_cast<ssize_t>(message.size()) ? 0 : 1);
  }
  close(ends[1]);
  std::array<char, 4096> message{};
  const ssize_t size = read(ends[0], message.data(), message.size());
  close(ends[0]);
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  return {message.data(), static_cast<std::size_t>(size > 0 ? size : 0)};
}

}  // namespace test
