#pragma once

#include <vector>

#include "metareview2024/Finding.h"

namespace metareview {

/// Marks what the check's own report shows when it is run with the kinds of the findings: it knows neither names,
/// identifiers and lookups nor the behaviors of links, and elements that only the client has are shown beside other
/// differences of their kind.
void MarkReported(std::vector<SFinding>& findings);

}  // namespace metareview
