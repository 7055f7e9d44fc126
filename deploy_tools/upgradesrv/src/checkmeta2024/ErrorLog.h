#pragma once

#include <cstdint>
#include <string>

namespace checkmeta {

/// `message` followed by "<hr=0x", the code in upper-case hexadecimal without leading zeros, and ">".
std::string CodedMessage(const std::string& message, std::uint32_t code);

/// Where a log line says that it comes from: a source file, a line in it and a qualified function name.
struct SLogPlace {
  const char* file;
  int line;
  const char* function;
};

/// Logs a coded message as an error of the module.
void LogError(const SLogPlace& place, const std::string& message, std::uint32_t code);

}  // namespace checkmeta
