#include "kvxsptstring/Utf8.h"

namespace kvx {
namespace {

unsigned char Byte(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

}  // namespace

std::uint32_t Utf8CodePoint(std::string_view text, std::size_t position, std::size_t size) {
  const std::uint32_t first = Byte(text, position);
  std::uint32_t code = size == 1 ? first : first & (0x7FU >> size);
  for (std::size_t i = 1; i < size; ++i) {
    code = code << 6U | (Byte(text, position + i) & 0x3FU);
  }
  return code;
}

std::size_t Utf8CharacterSize(std::string_view text, std::size_t position) {
  const unsigned char first = Byte(text, position);
  if (first < 0x80) {
    return 1;
  }
  const std::size_t size = first >= 0xC2 && first < 0xE0 ? 2 : first >= 0xE0 && first < 0xF0 ? 3 : 4;
  if (first < 0xC2 || first > 0xF4 || size > text.size() - position) {
    return 0;
  }
  for (std::size_t i = 1; i < size; ++i) {
    if ((Byte(text, position + i) & 0xC0U) != 0x80U) {
      return 0;
    }
  }
  const std::uint32_t code = Utf8CodePoint(text, position, size);
  const bool isShortest = size == 2 || (size == 3 && code >= 0x800) || (size == 4 && code >= 0x10000);
  const bool isSurrogate = code >= 0xD800 && code < 0xE000;
  return isShortest && !isSurrogate && code <= 0x10FFFF ? size : 0;
}

bool IsUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t size = Utf8CharacterSize(text, i);
    if (size == 0) {
      return false;
    }
    i += size;
  }
  return true;
}

}  // namespace kvx
