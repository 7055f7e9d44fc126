#include "kvxsptfile/IsUtf16.h"

namespace kvx {

bool IsUtf16(std::string_view text) {
  const std::string_view mark = text.substr(0, 2);
  if (mark == "\xFF\xFE" || mark == "\xFE\xFF") {
    return true;
  }
  const auto isNul = [&text](std::size_t i) { return text[i] == '\0'; };
  return text.size() >= 4 && isNul(0) == isNul(2) && isNul(1) == isNul(3) && isNul(0) != isNul(1);
}

}  // namespace kvx
