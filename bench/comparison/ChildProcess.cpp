#include "comparison/ChildProcess.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <fstream>
#include <system_error>

namespace bench {
namespace {

constexpr int kCannotStart = 127;

std::string LogFile(const std::filesystem::path& log, const char* suffix) {
  return log.string() + suffix;
}

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

bool Redirect(const std::string& path, int descriptor) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  return file >= 0 && dup2(file, descriptor) >= 0;
}

}  // namespace

SUsage RunToEnd(const std::vector<std::string>& command, const std::filesystem::path& log) {
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));  // NOLINT: execvp does not write to them
  }
  arguments.push_back(nullptr);
  const std::string output = LogFile(log, ".out");
  const std::string errors = LogFile(log, ".err");

  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    if (Redirect(output, STDOUT_FILENO) && Redirect(errors, STDERR_FILENO)) {
      execvp(arguments[0], arguments.data());
    }
    _exit(kCannotStart);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child) {
    throw std::system_error(errno, std::generic_category(), command[0]);
  }
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;

  SUsage result;
  result.wallSeconds = wall.count();
  result.cpuSeconds = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
  result.peakMebibytes = static_cast<double>(usage.ru_maxrss) / 1024;
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
}

std::string FirstErrorLine(const std::filesystem::path& log) {
  std::ifstream file(LogFile(log, ".err"));
  std::string line;
  std::getline(file, line);
  return line;
}

}  // namespace bench
