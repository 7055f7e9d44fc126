#include "metareview2024/data/ApplyCounts.h"

#include <memory>

#include "metareview2024/data/Lookups.h"

namespace metareview {

void ApplyCounts(const std::vector<SCount>& counts, SReview& review) {
  for (const SCount& count : counts) {
    SFinding& finding = review.findings.at(count.finding);
    finding.data = std::make_shared<const SData>(count.data);
    if (count.data.rows != 0 || !count.data.problem.empty()) {
      continue;
    }
    const ERisk risk = RestrictsEntering(finding.rule->name) ? ERisk::kAttention : ERisk::kSafe;
    if (risk > finding.risk) {
      finding.riskWithoutData = finding.risk;
      finding.risk = risk;
    }
  }
}

}  // namespace metareview
