#pragma once

#include <cstddef>
#include <string>

#include "kvxsptlog/kvxsptlog_export.h"

/// The host's log. Each log name is a logger of log4cplus; levels are log4cplus's numbers (40000 is ERROR).
class KVXSPTLOG_EXPORT CLog {
 public:
  CLog() = delete;

  /// Configures the log from a log4cplus properties file. A file that does not exist gives the default: one line per
  /// event on standard error, control characters of the event made visible as \n, \t or \xHH.
  /// Replaces any earlier configuration. Without a call the first event configures the default.
  /// Throws CKVXException (kvx::kFileError) naming the file when that configures no destination at all: events would be
  /// lost.
  static void Configure(const std::string& propertiesFile);

  /// Writes one event to the logger `logName`; `file`, `line` and `function` become its source location.
  /// A null file or function counts as empty.
  static void Print(const char* file, int line, const char* function, const std::string& logName, int level,
                    const std::string& message);

  /// How many events of level 40000 or more this process has printed, whether or not the configuration shows them.
  static std::size_t GetErrorCount() noexcept;
};
