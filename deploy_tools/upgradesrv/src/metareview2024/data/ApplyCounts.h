#pragma once

#include <cstddef>
#include <vector>

#include "metareview2024/Finding.h"
#include "metareview2024/Review.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// What was counted for a finding.
struct SCount {
  /// Its place in SReview::findings.
  std::size_t finding = 0;
  SData data;
};

/// Gives findings what was counted for them. One of which nothing is touched and everything was looked at gets a lower
/// risk: attention where its rule restricts what may be entered, safe otherwise; never a higher one. To be called
/// after SetRuleRisks() and before ApplyDecisions().
METAREVIEW2024_EXPORT void ApplyCounts(const std::vector<SCount>& counts, SReview& review);

}  // namespace metareview
