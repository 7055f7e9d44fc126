#include "kvxsptstring/StringHelper.h"

#include <cstddef>
#include <cstdint>

#include "kvxsptstring/Utf8.h"

namespace {

/// Controls that no terminal shows, but that make it show a text in another order than it is written, or on more lines.
bool IsInvisibleControl(std::uint32_t code) {
  constexpr std::uint32_t kArabicLetterMark = 0x061C;
  const bool isMark = code == 0x200E || code == 0x200F || code == kArabicLetterMark;
  const bool isEmbedding = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
  const bool isLineEnd = code == 0x2028 || code == 0x2029;
  return isMark || isEmbedding || isLineEnd;
}

void AppendHexadecimal(std::string& target, const char* prefix, std::uint32_t number, int digits) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  target += prefix;
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
    target += kDigits[number >> static_cast<unsigned>(shift) & 0xFU];
  }
}

}  // namespace

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
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t size = kvx::Utf8CharacterSize(text, i);
    if (size == 0) {
      AppendHexadecimal(visible, "\\x", static_cast<unsigned char>(text[i]), 2);
      ++i;
      continue;
    }
    const std::uint32_t code = kvx::Utf8CodePoint(text, i, size);
    if (code == '\n') {
      visible += "\\n";
    } else if (code == '\t') {
      visible += "\\t";
    } else if (code < 0x20 || code == 0x7F) {
      AppendHexadecimal(visible, "\\x", code, 2);
    } else if ((code >= 0x80 && code < 0xA0) || IsInvisibleControl(code)) {
      // U+009B begins an escape sequence.
      AppendHexadecimal(visible, "\\u", code, 4);
    } else {
      visible.append(text, i, size);
    }
    i += size;
  }
  return visible;
}
