#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace test {

/// A program that runs beside the test, killed at the end of its scope. Its output goes nowhere.
class CRunningProcess {
 public:
  /// arguments[0] is the program's path.
  explicit CRunningProcess(std::vector<std::string> arguments);
  ~CRunningProcess();
  CRunningProcess(const CRunningProcess&) = delete;
  CRunningProcess& operator=(const CRunningProcess&) = delete;

  /// Ends it without giving it a chance to do anything more (SIGKILL). False when it had ended by itself.
  bool Kill();
  /// Asks it to end (SIGTERM). Answers with the signal that has ended it, 0 when it has ended by itself.
  int Terminate();
  /// Halts it, wherever it is, until Resume().
  void Halt() const;
  void Resume() const;
  /// Its exit status, once it has ended by itself.
  int Wait();

 private:
  pid_t child_;
};

}  // namespace test
