#pragma once

#include "metareview2024/Review.h"
#include "metareview2024/render/TextOutput.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// The findings of the text report: what has to be decided first, worst first, and then all, in their order.
void WriteFindings(const SReview& review, const CWords& words, CTextOutput& output);

}  // namespace metareview
