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
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string visible;
  visible.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
    if (byte == '\n') {
      visible += "\\n";
    } else if (byte == '\t') {
      visible += "\\t";
    } else if (byte < 0x20 || byte == 0x7F) {
      visible += {'\\', 'x', kDigits[byte / 16U], kDigits[byte % 16U]};
    } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {
      // U+0080 to U+009F in UTF-8; U+009B begins an escape sequence.
      visible += {'\\', 'u', '0', '0', kDigits[next / 16U], kDigits[next % 16U]};
      ++i;
    } else {
      visible += text[i];
    }
  }
  return visible;
}
