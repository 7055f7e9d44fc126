#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "metareview2024/words/Catalogue.h"

namespace metareview {

/// A row per language: what a message catalogue does not say, or says in a form that a program cannot use.
struct SLanguage {
  std::string_view code;
  /// Compiled.
  std::string_view catalogue;
  /// As the catalogue's header has it, and the same as a function: which of a message's plural forms is for a number.
  std::string_view pluralForms;
  std::size_t (*pluralForm)(std::uint64_t number);
  std::string_view thousandsSeparator;
  /// Numbers with fewer digits are written without separators.
  std::size_t groupedDigits;
};

/// The languages that there are words in, English first.
const std::vector<SLanguage>& Languages();

/// What a review says in one language. Keys are those of the catalogues in catalogues/; a key that they do not have is
/// its own text.
class CWords {
 public:
  /// The words of a language; nothing for a code that is none of Languages().
  static const CWords* Find(std::string_view code);
  static const CWords& English();

  explicit CWords(const SLanguage& language) : language_(language), catalogue_(language.catalogue) {}

  std::string_view Code() const { return language_.code; }

  /// The text of a message, with placeholders like "{name}" in it.
  std::string_view Text(std::string_view key) const;
  /// All messages whose keys begin so, sorted by key; of plural forms the first.
  std::vector<std::pair<std::string_view, std::string_view>> WithPrefix(std::string_view prefix) const;
  /// The plural form of a message for a number.
  std::string_view Text(std::string_view key, std::uint64_t number) const;

  /// A count as people write it: 20,341.
  std::string Number(std::uint64_t number) const;

 private:
  const SLanguage& language_;
  CCatalogue catalogue_;
};

}  // namespace metareview
