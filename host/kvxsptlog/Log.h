#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "kvxsptlog/kvxsptlog_export.h"

class CLogDestination;

/// The host's log. Levels are log4cplus's numbers (40000 is ERROR).
///
/// Control characters of an event are made visible as CStringHelper::ToVisible does before any destination gets it, so
/// that no layout lets a name begin a line of its own.
class KVXSPTLOG_EXPORT CLog {
 public:
  CLog() = delete;

  /// Configures the log from a log4cplus properties file, in which each log name is a logger. File appenders append to
  /// their files unless the file sets their "Append" itself. A file that does not exist gives the default: one line per
  /// event, "LEVEL file:line function - message", on standard error.
  /// Replaces any earlier configuration. Without a call the default holds.
  /// log4cplus is loaded by the first file that exists, and starts four threads then. Throws CKVXException
  /// (kvx::kFileError) naming the file when it cannot be read, when the threads cannot be had, and when it configures
  /// no destination at all: events would be lost.
  static void Configure(const std::string& propertiesFile);
  /// Sends events to `destination`, in place of what any earlier configuration says; null for the default.
  static void SetDestination(std::unique_ptr<CLogDestination> destination);

  /// Writes one event to the log `logName`; `file`, `line` and `function` are its source location.
  /// A null file or function counts as empty.
  static void Print(const char* file, int line, const char* function, const std::string& logName, int level,
                    const std::string& message);

  /// How many events of level 40000 or more this process has printed, whether or not the configuration shows them.
  static std::size_t GetErrorCount() noexcept;
};
