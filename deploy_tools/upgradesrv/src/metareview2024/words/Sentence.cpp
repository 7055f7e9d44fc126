#include "metareview2024/words/Sentence.h"

#include <algorithm>

#include "kvxsptstring/StringHelper.h"

namespace metareview {

Sentence AsWords(std::string_view text) {
  return {{std::string(text), false}};
}

Sentence AsValue(std::string_view text) {
  return {{std::string(text), true}};
}

void Append(Sentence& sentence, const Sentence& more) {
  sentence.insert(sentence.end(), more.begin(), more.end());
}

Sentence FillIn(std::string_view text, const std::function<Sentence(std::string_view)>& find) {
  Sentence sentence;
  while (!text.empty()) {
    const std::size_t open = text.find('{');
    const std::size_t close = open == std::string_view::npos ? open : text.find('}', open);
    if (close == std::string_view::npos) {
      Append(sentence, AsWords(text));
      break;
    }
    if (open > 0) {
      Append(sentence, AsWords(text.substr(0, open)));
    }
    Append(sentence, find(text.substr(open + 1, close - open - 1)));
    text.remove_prefix(close + 1);
  }
  return sentence;
}

Sentence FillIn(std::string_view text, const Placeholders& values) {
  return FillIn(text, [&](std::string_view name) {
    const auto found =
        std::find_if(values.begin(), values.end(), [&](const auto& value) { return value.first == name; });
    return found == values.end() ? Sentence() : found->second;
  });
}

std::string Plain(const Sentence& sentence) {
  std::string text;
  for (const SPiece& piece : sentence) {
    text += piece.text;
  }
  return text;
}

std::string ToVisible(const Sentence& sentence) {
  std::string text;
  for (const SPiece& piece : sentence) {
    text += piece.isValue ? CStringHelper::ToVisible(piece.text) : piece.text;
  }
  return text;
}

}  // namespace metareview
