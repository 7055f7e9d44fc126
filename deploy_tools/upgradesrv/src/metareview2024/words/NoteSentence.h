#pragma once

#include <string>
#include <string_view>

#include "metareview2024/Review.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// What is peculiar about the metamodels, in a sentence.
std::string NoteSentence(const CWords& words, ENote note);

/// That there are no words in a language, in English; controls in its code are made visible.
std::string LanguageNote(std::string_view code);

}  // namespace metareview
