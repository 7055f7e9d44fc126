#include "metareview2024/render/ShellWord.h"

#include "kvxsptstring/StringHelper.h"

namespace metareview {

namespace {

std::string Quoted(std::string_view text) {
  std::string word = "'";
  for (const char c : text) {
    if (c == '\'') {
      word += "'\\''";
    } else {
      word += c;
    }
  }
  return word + "'";
}

void AppendOctal(std::string& word, unsigned char byte) {
  word += '\\';
  for (const unsigned shift : {6U, 3U, 0U}) {
    word += static_cast<char>('0' + (byte >> shift & 7U));
  }
}

/// Quoted as $'…', byte for byte where a character cannot be shown.
std::string Escaped(std::string_view text) {
  std::string word = "$'";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte >= 0x7F) {
      AppendOctal(word, byte);
    } else {
      word += c == '\'' || c == '\\' ? std::string{'\\', c} : std::string{c};
    }
  }
  return word + "'";
}

}  // namespace

std::string ShellWord(std::string_view text) {
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-./,:@%+=";
  if (!text.empty() && text.find_first_not_of(kPlain) == std::string_view::npos) {
    return std::string(text);
  }
  const std::string plain(text);
  return CStringHelper::ToVisible(plain) == plain ? Quoted(text) : Escaped(text);
}

}  // namespace metareview
