#pragma once

#include <string>

class CStringHelper {
 public:
  CStringHelper() = delete;

  static void ToLower(std::string& text);
  static int StringCompare(const std::string& a, const std::string& b, bool flag);
};
