#include "metareview2024/render/TextLayout.h"

#include <unilbrk.h>
#include <unistr.h>
#include <uniwidth.h>

#include <cstdint>

namespace metareview {

namespace {

constexpr const char* kEncoding = "UTF-8";

struct SCharacter {
  std::size_t size;
  std::size_t width;
};

const std::uint8_t* Bytes(std::string_view text) {
  return reinterpret_cast<const std::uint8_t*>(text.data());
}

/// The first character of a text that is not empty.
SCharacter First(std::string_view text) {
  if (text.front() >= ' ' && text.front() <= '~') {
    return {1, 1};
  }
  ucs4_t code = 0;
  const int size = u8_mbtouc(&code, Bytes(text), text.size());
  const int width = uc_width(code, kEncoding);
  return {static_cast<std::size_t>(size), width > 0 ? static_cast<std::size_t>(width) : 0};
}

std::string_view WithoutTrailingSpaces(std::string_view text) {
  // The place after none is 0.
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace

std::size_t DisplayWidth(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) {
    const SCharacter character = First(text);
    width += character.width;
    text.remove_prefix(character.size);
  }
  return width;
}

std::string PadRight(std::string text, std::size_t width) {
  const std::size_t own = DisplayWidth(text);
  text.append(own < width ? width - own : 0, ' ');
  return text;
}

std::string PadLeft(std::string text, std::size_t width) {
  const std::size_t own = DisplayWidth(text);
  text.insert(0, own < width ? width - own : 0, ' ');
  return text;
}

std::vector<std::string> WrapText(std::string_view text, std::size_t width) {
  // No character takes more columns than bytes.
  if (text.size() <= width) {
    return {std::string(WithoutTrailingSpaces(text))};
  }
  std::vector<char> breaks(text.size());
  u8_possible_linebreaks(Bytes(text), text.size(), kEncoding, breaks.data());
  std::vector<std::string> lines;
  std::size_t lineStart = 0;
  std::size_t breakAt = 0;      // the last place in the line where it may end
  std::size_t column = 0;       // of what comes next
  std::size_t breakColumn = 0;  // of what comes after that place
  bool isAfterWord = false;     // or after a wide character
  for (std::size_t i = 0; i < text.size();) {
    const SCharacter character = First(text.substr(i));
    // Paths and values, which could be broken at a slash or a hyphen, stay whole.
    if ((isAfterWord || character.width > 1) && breaks[i] == UC_BREAK_POSSIBLE) {
      breakAt = i;
      breakColumn = column;
    }
    if (column + character.width > width && text[i] != ' ' && breakAt > lineStart) {
      lines.emplace_back(WithoutTrailingSpaces(text.substr(lineStart, breakAt - lineStart)));
      lineStart = breakAt;
      column -= breakColumn;
    }
    isAfterWord = text[i] == ' ' || character.width > 1;
    column += character.width;
    i += character.size;
  }
  lines.emplace_back(WithoutTrailingSpaces(text.substr(lineStart)));
  return lines;
}

}  // namespace metareview
