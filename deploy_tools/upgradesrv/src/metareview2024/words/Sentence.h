#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace metareview {

/// A part of a sentence. Values come from metamodels and people, so each output guards them in its own way; words come
/// from a catalogue.
struct SPiece {
  std::string text;
  bool isValue;
};

using Sentence = std::vector<SPiece>;

Sentence AsWords(std::string_view text);
Sentence AsValue(std::string_view text);

void Append(Sentence& sentence, const Sentence& more);

/// Replaces each placeholder "{name}" of a text by what `find` has for that name.
Sentence FillIn(std::string_view text, const std::function<Sentence(std::string_view)>& find);

/// What placeholders stand for, by name; one that is not listed stands for nothing.
using Placeholders = std::vector<std::pair<std::string_view, Sentence>>;
Sentence FillIn(std::string_view text, const Placeholders& values);

/// The sentence with its values as they are.
std::string Plain(const Sentence& sentence);

/// The sentence for a terminal or a file that may be shown on one: values guarded by CStringHelper::ToVisible.
std::string ToVisible(const Sentence& sentence);

}  // namespace metareview
