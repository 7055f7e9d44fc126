#include "kvxsptstring/StringHelper.h"

void CStringHelper::ToLower(std::string& text) {
  for (char& c : text) {
    const bool isUpper = static_cast<unsigned char>(c - 'A') < 26U;
    c = static_cast<char>(c + (isUpper ? 'a' - 'A' : 0));
  }
}

int CStringHelper::StringCompare(const std::string& a, const std::string& b, bool ignoreCase) {
  if (!ignoreCase) {
    return a.compare(b);
  }
  std::string lowerA = a;
  std::string lowerB = b;
  ToLower(lowerA);
  ToLower(lowerB);
  return lowerA.compare(lowerB);
}

std::string CStringHelper::ToVisible(const std::string& text) {
  std::string visible;
  visible.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      visible += "\\n";
    } else if (c == '\t') {
      visible += "\\t";
    } else if (byte < 0x20 || byte == 0x7F) {
      constexpr const char* kDigits = "0123456789ABCDEF";
      visible += {'\\', 'x', kDigits[byte / 16U], kDigits[byte % 16U]};
    } else {
      visible += c;
    }
  }
  return visible;
}
