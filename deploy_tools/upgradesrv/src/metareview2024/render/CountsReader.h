#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/data/ApplyCounts.h"
#include "metareview2024/data/Lookups.h"

namespace metareview {

/// What the script of "-o sql" gives.
constexpr std::array<std::string_view, 4> kCountColumns = {"path", "rule", "rows", "of"};

struct SReadCounts {
  /// One for each finding of which something is to be counted.
  std::vector<SCount> counts;
  /// How many rows are about findings of compared kinds that are no more.
  std::size_t gone = 0;
};

/// Reads what the script has counted and somebody has saved as CSV. `name` is what messages call the text. Findings
/// that are not in it have a problem that says so. Throws CKVXException (kvx::kMalformedDocument, "NAME:LINE: what is
/// wrong") for whatever is not such a result: other columns, a path or a rule that is none, a number that is none, a
/// row that is there twice, a last line without an end, and the counts of a script for other lookups or of one that
/// nobody knows.
SReadCounts ReadCounts(std::string_view text, const std::string& name, const SReview& review, const SLookups& lookups);

}  // namespace metareview
