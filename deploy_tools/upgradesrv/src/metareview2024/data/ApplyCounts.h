#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "metareview2024/Finding.h"
#include "metareview2024/Review.h"
#include "metareview2024/data/Lookups.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// What was counted for a finding.
struct SCount {
  /// Its place in SReview::findings.
  std::size_t finding = 0;
  SData data;
};

/// What came of one lookup.
struct SLookupCount {
  std::uint64_t rows = 0;
  std::uint64_t of = 0;
  /// Whether rows and of say something; with a problem they may be too low.
  bool isCounted = false;
  std::string problem;
};

/// Said where a column that should hold numbers holds other values, too.
constexpr const char* kNotNumbers = "the column holds values that are not numbers";

/// The sums for each finding that has a lookup, or would have. `counts` are those of `lookups.lookups`, in that order.
METAREVIEW2024_EXPORT std::vector<SCount> AddUp(const SLookups& lookups, const std::vector<SLookupCount>& counts);

/// Gives findings what was counted for them. One of which nothing is touched and everything was looked at gets a lower
/// risk: attention where its rule restricts what may be entered, safe otherwise; never a higher one. To be called
/// after SetRuleRisks() and before ApplyDecisions().
METAREVIEW2024_EXPORT void ApplyCounts(const std::vector<SCount>& counts, SReview& review);

}  // namespace metareview
