#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace test {

/// Arguments that are refused, and the error that says so.
struct SRefusedArguments {
  const char* name;
  std::vector<std::string> arguments;
  const char* message;
};

inline void PrintTo(const SRefusedArguments& refused, std::ostream* output) {
  *output << refused.name;
}

}  // namespace test
