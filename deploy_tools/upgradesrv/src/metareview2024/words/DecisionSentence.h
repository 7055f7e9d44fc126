#pragma once

#include "metareview2024/Review.h"
#include "metareview2024/words/Sentence.h"
#include "metareview2024/words/Words.h"

/// Why a decision accepts nothing, and what has gone since an earlier review, in a sentence each.
namespace metareview {

Sentence OutdatedSentence(const CWords& words, const SOutdated& outdated);
Sentence ExpiredSentence(const CWords& words, const SDecision& expired);
Sentence StaleSentence(const CWords& words, const SDecision& stale);
Sentence GoneSentence(const CWords& words, const SGone& gone);

}  // namespace metareview
