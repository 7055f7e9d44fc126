#pragma once

#include <cstddef>

#include "metareview2024/Review.h"
#include "metareview2024/render/ToDecide.h"

namespace metareview::page {

/// At most `limit` findings, in the order of the review: first what has to be decided, then what is not accepted, in
/// both the worst first.
Findings SelectFindings(const SReview& review, std::size_t limit);

}  // namespace metareview::page
