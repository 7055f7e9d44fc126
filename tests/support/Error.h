#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>

#include "kvxsptexception/KVXException.h"

namespace test {

/// What a CKVXException says.
struct SError {
  std::uint32_t code = 0;
  std::string message;
};

inline bool operator==(const SError& a, const SError& b) {
  return a.code == b.code && a.message == b.message;
}

inline void PrintTo(const SError& error, std::ostream* output) {
  *output << "0x" << std::hex << std::uppercase << error.code << std::dec << " \"" << error.message << '"';
}

/// The CKVXException that `action` throws; code 0 and "nothing was thrown" when it ends normally.
template <typename Action>
SError ErrorOf(Action&& action) {
  try {
    std::forward<Action>(action)();
  } catch (const CKVXException& error) {
    return {error.GetCode(), error.what()};
  }
  return {0, "nothing was thrown"};
}

}  // namespace test
