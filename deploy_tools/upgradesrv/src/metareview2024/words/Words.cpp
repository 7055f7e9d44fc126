#include "metareview2024/words/Words.h"

#include <algorithm>

namespace metareview {

namespace {

const std::vector<CWords>& AllWords() {
  static const std::vector<CWords> words(Languages().begin(), Languages().end());
  return words;
}

}  // namespace

const CWords* CWords::Find(std::string_view code) {
  const std::vector<CWords>& all = AllWords();
  const auto found = std::find_if(all.begin(), all.end(), [&](const CWords& words) { return words.Code() == code; });
  return found == all.end() ? nullptr : &*found;
}

const CWords& CWords::English() {
  return AllWords().front();
}

std::string_view CWords::Text(std::string_view key) const {
  const std::string_view text = catalogue_.Find(key);
  return text.empty() ? key : text;
}

std::string_view CWords::Text(std::string_view key, std::uint64_t number) const {
  std::string_view text = Text(key);
  for (std::size_t form = language_.pluralForm(number); form > 0; --form) {
    // A form that is missing leaves the last one.
    text.remove_prefix(text.find('\0') == std::string_view::npos ? 0 : text.find('\0') + 1);
  }
  return text.substr(0, text.find('\0'));
}

std::vector<std::pair<std::string_view, std::string_view>> CWords::WithPrefix(std::string_view prefix) const {
  std::vector<std::pair<std::string_view, std::string_view>> messages;
  for (std::size_t i = 0; i < catalogue_.Size(); ++i) {
    const std::string_view key = catalogue_.Key(i);
    if (key.substr(0, prefix.size()) == prefix) {
      const std::string_view text = catalogue_.Text(i);
      messages.emplace_back(key.substr(0, key.find('\0')), text.substr(0, text.find('\0')));
    }
  }
  return messages;
}

std::string CWords::Number(std::uint64_t number) const {
  std::string digits = std::to_string(number);
  if (digits.size() < language_.groupedDigits) {
    return digits;
  }
  constexpr std::size_t kGroup = 3;
  for (std::size_t place = digits.size(); place > kGroup;) {
    place -= kGroup;
    digits.insert(place, language_.thousandsSeparator);
  }
  return digits;
}

}  // namespace metareview
