#pragma once

#include "metareview2024/Review.h"
#include "metareview2024/render/TextOutput.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// The table of the text report: how many findings of each kind have which risk, or have been accepted.
void WriteTotals(const SReview& review, const CWords& words, CTextOutput& output);

}  // namespace metareview
