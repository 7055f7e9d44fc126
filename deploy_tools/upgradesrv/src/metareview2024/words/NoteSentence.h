#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "metareview2024/Review.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// What is peculiar about the metamodels, in a sentence.
std::string NoteSentence(const CWords& words, ENote note);

/// How many entries were written to a decisions file, or dropped from it because they are stale.
std::string WrittenNote(const CWords& words, std::size_t count, std::string_view file);
std::string PrunedNote(const CWords& words, std::size_t count, std::string_view file);

/// That there are no words in a language, in English, and which one may be meant; controls in its code are made
/// visible.
std::string LanguageNote(std::string_view code);

}  // namespace metareview
