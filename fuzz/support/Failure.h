#pragma once

#include <string>

#include "fuzz/support/Require.h"
#include "support/Error.h"

namespace fuzz {

inline bool Succeeded(const test::SError& error) {
  return error.code == 0;
}

/// Messages for the user are one line, whatever the input holds.
inline void RequireOneLine(const std::string& message) {
  for (const char c : message) {
    const auto byte = static_cast<unsigned char>(c);
    Require(byte >= 0x20 && byte != 0x7F, "a message is one line without control characters", message);
  }
}

}  // namespace fuzz
