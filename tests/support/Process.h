#pragma once

#include <string>
#include <vector>

namespace test {

struct SProcessResult {
  /// The exit status, or 128 and the number of the signal that ended the process.
  int status = 0;
  std::string output;
  std::string errors;
};

/// Runs a program to its end, without standard input; arguments[0] is its path. `workingDirectory` empty: the test's
/// own.
SProcessResult Run(const std::vector<std::string>& arguments, const std::string& workingDirectory = "");

}  // namespace test
