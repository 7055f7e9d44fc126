#pragma once

#include <optional>
#include <string>
#include <vector>

namespace test {

/// A piece of text to be read as JSON. Names begin with y_ (JSON, must be read), n_ (not JSON, must be refused) or i_
/// (the grammar allows it and leaves the outcome to the reader; the row decides).
struct SJsonLetters {
  const char* name;
  std::string text;
  /// What reading it gives: a string's content, a number as CJsonObject gives it. Nothing for what must be refused.
  std::optional<std::string> value = std::nullopt;
};

/// Strings, with their quotes.
const std::vector<SJsonLetters>& JsonStrings();

/// Numbers.
const std::vector<SJsonLetters>& JsonNumbers();

/// What is between two tokens. Of the value only its presence counts.
const std::vector<SJsonLetters>& JsonSpaces();

/// Whole documents. Of the value only its presence counts.
const std::vector<SJsonLetters>& JsonTexts();

/// `pattern` with `text` in place of its gap number `gap`, and nothing in place of the other ones. A gap is a "~".
std::string FillGap(const std::string& pattern, std::size_t gap, const std::string& text);
std::size_t CountGaps(const std::string& pattern);

/// `text`, `times` times.
std::string Repeat(const std::string& text, std::size_t times);

}  // namespace test
