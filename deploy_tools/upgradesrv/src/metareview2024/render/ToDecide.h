#pragma once

#include <string_view>
#include <vector>

#include "metareview2024/Review.h"

namespace metareview {

using Findings = std::vector<const SFinding*>;

/// Those of the review, in its order.
Findings AllFindings(const SReview& review);

/// Where the finding is: of an attribute, its path without the attribute but with the last "/"; of anything else, its
/// path.
std::string_view PlaceOf(const SFinding& finding);

/// Those of `findings`, in the order of the review, that have to be decided: together what is at one place, the worst
/// first within a place and among the places, else in the order of the review.
std::vector<Findings> GroupsToDecide(const Findings& findings);

}  // namespace metareview
