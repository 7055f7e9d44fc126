#pragma once

#include <string_view>
#include <vector>

#include "metareview2024/render/ToDecide.h"

namespace metareview {

/// The path of the class, link or behavior that the finding is in.
std::string_view ElementPath(const SFinding& finding);

/// The findings of each element together, in the order of the review.
std::vector<Findings> GroupsByElement(const Findings& findings);

}  // namespace metareview
