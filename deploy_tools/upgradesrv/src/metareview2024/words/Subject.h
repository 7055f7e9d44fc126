#pragma once

#include "metareview2024/Review.h"
#include "metareview2024/words/Sentence.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// Which metamodels were compared, which kinds, and what was looked up besides. Of a complete review.
Sentence SubjectSentence(const CWords& words, const SReview& review);

}  // namespace metareview
