#pragma once

#include <string>

class CLog {
 public:
  CLog() = delete;

  static void Print(const char* file, int line, const char* function, const std::string& logName, int level,
                    const std::string& message);
};
