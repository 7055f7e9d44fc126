#pragma once

#include <string>

namespace upgradesrv {

/// While it exists, a crash of the process writes a line to standard error that names the signal, before the signal
/// takes its course.
class CCrashLines {
 public:
  /// `name`: whose crash it is. One at a time.
  explicit CCrashLines(const std::string& name);
  ~CCrashLines();
  CCrashLines(const CCrashLines&) = delete;
  CCrashLines& operator=(const CCrashLines&) = delete;
};

}  // namespace upgradesrv
