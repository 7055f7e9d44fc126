#include "kvxsptlog/detail/StandardErrorLog.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <string>

#include "kvxsptlog/LogDestination.h"

namespace kvx {
namespace {

struct SLevel {
  int number;
  const char* name;
};

constexpr std::array<SLevel, 6> kLevels = {
    {{50000, "FATAL"}, {40000, "ERROR"}, {30000, "WARN"}, {20000, "INFO"}, {10000, "DEBUG"}, {0, "TRACE"}}};

std::string LevelName(int number) {
  for (const SLevel& level : kLevels) {
    if (level.number == number) {
      return level.name;
    }
  }
  return std::to_string(number);
}

}  // namespace

void WriteToStandardError(const SLogEvent& event) {
  const std::string line = LevelName(event.level) + " " + event.file + ":" + std::to_string(event.line) + " " +
                           event.function + " - " + event.message + "\n";
  std::size_t written = 0;
  while (written < line.size()) {
    const ssize_t count = write(STDERR_FILENO, line.data() + written, line.size() - written);
    if (count > 0) {
      written += static_cast<std::size_t>(count);
    } else if (count == 0 || errno != EINTR) {
      // There is no one left to tell.
      return;
    }
  }
}

}  // namespace kvx
