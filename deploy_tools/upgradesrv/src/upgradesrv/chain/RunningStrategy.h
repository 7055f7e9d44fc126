#pragma once

#include <string>

namespace upgradesrv {

/// While it exists, code of a strategy's module runs. A module that then ends the process is named on standard error:
/// one that ends it as if all were well gives it the status of trouble.
class CRunningStrategy {
 public:
  /// `name` outlives this.
  explicit CRunningStrategy(const std::string& name);
  ~CRunningStrategy();
  CRunningStrategy(const CRunningStrategy&) = delete;
  CRunningStrategy& operator=(const CRunningStrategy&) = delete;
};

}  // namespace upgradesrv
