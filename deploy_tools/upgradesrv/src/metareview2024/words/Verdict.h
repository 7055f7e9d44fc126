#pragma once

#include "metareview2024/Review.h"
#include "metareview2024/words/Sentence.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// Whether the upgrade may go ahead, in one or two sentences.
Sentence VerdictSentence(const CWords& words, const SReview& review);

}  // namespace metareview
