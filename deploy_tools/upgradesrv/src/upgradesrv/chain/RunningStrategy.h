#pragma once

#include <string>

#include "upgradesrv/chain/CrashLines.h"

namespace upgradesrv {

/// While it exists, code of a strategy's module runs. A module that then ends the process is named on standard error.
/// One that ends it as if all were well gives it the status of trouble; one that crashes lets the signal that it
/// crashes with take its course.
class CRunningStrategy {
 public:
  /// `name` outlives this. For the thread that runs the command, one at a time.
  explicit CRunningStrategy(const std::string& name);
  ~CRunningStrategy();
  CRunningStrategy(const CRunningStrategy&) = delete;
  CRunningStrategy& operator=(const CRunningStrategy&) = delete;

  /// "PROBLEM (NAME)" while a strategy runs, the problem alone otherwise.
  static std::string Named(const std::string& problem);

 private:
  CCrashLines crashLines_;
};

}  // namespace upgradesrv
