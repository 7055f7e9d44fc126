#include "upgradesrv/Passwords.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

#include "kvxsptstring/StringHelper.h"

namespace upgradesrv {
namespace {

constexpr const char* kHidden = "***";

/// A text without the punctuation of the sentence around it.
std::string_view WithoutPunctuation(std::string_view text) {
  const bool hasSome = !text.empty() && std::string_view(":,;").find(text.back()) != std::string_view::npos;
  return text.substr(0, text.size() - (hasSome ? 1 : 0));
}

/// Where a value in quotes ends that begins at `begin`.
std::size_t EndOfQuoted(const std::string& text, std::size_t begin) {
  std::size_t end = begin + 1;
  while (end < text.size() && text[end] != '\'') {
    end += text[end] == '\\' ? 2 : 1;
  }
  return std::min(end + 1, text.size());
}

/// Where a value of connection words ends that begins at `begin`; `word` is where its keyword begins.
std::size_t EndOfValue(const std::string& text, std::size_t word, std::size_t begin) {
  if (begin < text.size() && text[begin] == '\'') {
    return EndOfQuoted(text, begin);
  }
  const bool isInUri = word > 0 && (text[word - 1] == '?' || text[word - 1] == '&');
  const std::string_view rest = std::string_view(text).substr(begin);
  return begin + WithoutPunctuation(rest.substr(0, rest.find_first_of(isInUri ? " &\"" : " \""))).size();
}

/// Where the next "word=" after a space begins; the end of the text when there is none.
std::size_t NextWord(const std::string& text, std::size_t begin) {
  for (std::size_t space = text.find(' ', begin); space != std::string::npos; space = text.find(' ', space + 1)) {
    std::size_t end = space + 1;
    while (end < text.size() && (std::islower(static_cast<unsigned char>(text[end])) != 0 || text[end] == '_')) {
      ++end;
    }
    if (end > space + 1 && end < text.size() && text[end] == '=') {
      return space;
    }
  }
  return text.size();
}

/// Calls `value(begin of the word, begin of the value)` for each "password = VALUE" and goes on where that ends, which
/// is its answer.
template <typename Value>
void ForEachPassword(const std::string& text, const Value& value) {
  std::string lower = text;
  CStringHelper::ToLower(lower);
  constexpr std::string_view kWord = "password";
  constexpr std::string_view kPrefix = "ssl";
  for (std::size_t word = lower.find(kWord); word != std::string::npos; word = lower.find(kWord, word)) {
    const bool hasPrefix = word >= kPrefix.size() && lower.compare(word - kPrefix.size(), kPrefix.size(), kPrefix) == 0;
    const std::size_t begin = hasPrefix ? word - kPrefix.size() : word;
    word += kWord.size();
    const std::size_t equals = lower.find_first_not_of(' ', word);
    if (equals != std::string::npos && text[equals] == '=') {
      word = value(begin, std::min(lower.find_first_not_of(' ', equals + 1), text.size()));
    }
  }
}

/// `end(begin of the word, begin of the value)` is where a value ends.
template <typename End>
std::string WithoutValues(const std::string& text, const End& end) {
  std::string shown;
  std::size_t copied = 0;
  ForEachPassword(text, [&](std::size_t word, std::size_t begin) {
    shown.append(text, copied, begin - copied).append(kHidden);
    copied = end(word, begin);
    return copied;
  });
  return shown.append(text, copied);
}

/// The password that begins at `begin`, after the ":" of an address; empty when there is none. `lastAt` is where the
/// last
/// "@" is.
std::string_view LoginPassword(std::string_view address, std::size_t begin, std::size_t lastAt) {
  const std::string_view rest = address.substr(begin);
  if (lastAt != std::string_view::npos && lastAt >= begin) {
    return rest.substr(0, lastAt - begin);
  }
  const std::string_view port = WithoutPunctuation(rest.substr(0, rest.find_first_of("/?")));
  return port.find_first_not_of("0123456789,") == std::string_view::npos ? std::string_view() : port;
}

/// Appends a part of a text without spaces and quotation marks, the passwords of its addresses hidden.
void AppendWithoutLogins(std::string_view part, std::string& shown) {
  std::size_t copied = 0;
  const std::size_t lastAt = part.rfind('@');
  for (std::size_t at = part.find(":/"); at != std::string_view::npos; at = part.find(":/", at + 1)) {
    const std::size_t login = part.find_first_not_of('/', at + 1);
    // With a "=" before it, the colon belongs to the value of a word.
    const std::size_t colon = part.find_first_of(":@/=", login);
    if (login < copied || colon == std::string_view::npos || part[colon] != ':') {
      continue;
    }
    const std::string_view password = LoginPassword(part, colon + 1, lastAt);
    if (!password.empty()) {
      shown.append(part, copied, colon + 1 - copied).append(kHidden);
      copied = colon + 1 + password.size();
    }
  }
  shown.append(part, copied);
}

/// The text with the passwords of its addresses hidden.
std::string WithoutLogins(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::string_view part = text.substr(0, text.find_first_of(" \"'"));
    AppendWithoutLogins(part, shown);
    text.remove_prefix(part.size());
    shown += text.substr(0, 1);
    text.remove_prefix(std::min<std::size_t>(text.size(), 1));
  }
  return shown;
}

}  // namespace

std::string WithoutPasswords(const std::string& text) {
  return WithoutLogins(
      WithoutValues(text, [&text](std::size_t word, std::size_t begin) { return EndOfValue(text, word, begin); }));
}

std::string ArgumentWithoutPassword(const std::string& argument) {
  return WithoutLogins(WithoutValues(argument, [&argument](std::size_t word, std::size_t begin) {
    const bool isQuoted = begin < argument.size() && argument[begin] == '\'';
    return isQuoted || argument.find('?') < word ? EndOfValue(argument, word, begin) : NextWord(argument, begin);
  }));
}

bool HoldsPassword(const std::string& text) {
  bool holds = false;
  ForEachPassword(text, [&](std::size_t /*word*/, std::size_t begin) {
    holds = true;
    return begin;
  });
  return holds;
}

}  // namespace upgradesrv
