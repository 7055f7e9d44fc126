#include "metareview2024/render/ShownText.h"

#include <cstddef>

#include "kvxsptstring/StringHelper.h"

namespace metareview {

namespace {

// In bytes.
constexpr std::size_t kMaxSize = 600;
constexpr std::size_t kBeginning = 400;
constexpr std::size_t kEnd = 100;

bool IsInsideCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

}  // namespace

std::string ShownText(std::string_view text) {
  if (text.size() <= kMaxSize) {
    return CStringHelper::ToVisible(std::string(text));
  }
  std::size_t beginning = kBeginning;
  while (beginning > 0 && IsInsideCharacter(text[beginning])) {
    --beginning;
  }
  std::size_t end = text.size() - kEnd;
  while (end < text.size() && IsInsideCharacter(text[end])) {
    ++end;
  }
  return CStringHelper::ToVisible(std::string(text.substr(0, beginning))) + " … " +
         CStringHelper::ToVisible(std::string(text.substr(end)));
}

}  // namespace metareview
