#pragma once

#include <string_view>

namespace metareview {

/// Whether there is nothing but white space.
inline bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace metareview
