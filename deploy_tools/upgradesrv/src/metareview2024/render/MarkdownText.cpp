#include "metareview2024/render/MarkdownText.h"

#include <algorithm>

#include "metareview2024/render/ShownText.h"

namespace metareview {

namespace {

std::size_t LongestRun(std::string_view text, char c) {
  std::size_t longest = 0;
  std::size_t run = 0;
  for (const char other : text) {
    run = other == c ? run + 1 : 0;
    longest = std::max(longest, run);
  }
  return longest;
}

}  // namespace

std::string MarkdownCode(std::string_view value, bool isInTable) {
  std::string text = ShownText(value);
  if (isInTable) {
    for (std::size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2)) {
      text.insert(at, 1, '\\');
    }
  }
  const std::string fence(LongestRun(text, '`') + 1, '`');
  // A space at both ends is taken off again, one at the beginning alone is kept.
  const bool needsSpaces =
      text.empty() || text.front() == '`' || text.back() == '`' || (text.front() == ' ' && text.back() == ' ');
  const std::string space = needsSpaces ? " " : "";
  return fence + space + text + space + fence;
}

std::string MarkdownText(const Sentence& sentence, bool isInTable) {
  std::string text;
  for (const SPiece& piece : sentence) {
    text += piece.isValue ? MarkdownCode(piece.text, isInTable) : piece.text;
  }
  return text;
}

}  // namespace metareview
