#pragma once

#include <string>

#include "kvxsptlog/kvxsptlog_export.h"

/// One event of the log. Its texts have no control characters.
struct SLogEvent {
  std::string file;
  int line = 0;
  std::string function;
  std::string logName;
  int level = 0;
  std::string message;
};

/// Where the events of the log go. Told one event at a time, by any thread.
class KVXSPTLOG_EXPORT CLogDestination {
 public:
  CLogDestination();
  virtual ~CLogDestination();
  CLogDestination(const CLogDestination&) = delete;
  CLogDestination& operator=(const CLogDestination&) = delete;

  virtual void Write(const SLogEvent& event) = 0;
};
