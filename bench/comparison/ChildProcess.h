#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// What a process took from its start to its end.
struct SUsage {
  double wallSeconds = 0;
  /// Of user and system together.
  double cpuSeconds = 0;
  double peakMebibytes = 0;
  /// The exit status, or 128 and the number of the signal that ended the process.
  int status = 0;
};

/// Runs a program to its end; `command[0]` is its path, or its name to be searched for. Standard output and standard
/// error go to the files `log`.out and `log`.err. Throws std::system_error when no process can be made.
SUsage RunToEnd(const std::vector<std::string>& command, const std::filesystem::path& log);

/// What the last run with that `log` wrote to standard error, cut to its first line.
std::string FirstErrorLine(const std::filesystem::path& log);

}  // namespace bench
