#include "metareview2024/data/ApplyCounts.h"

#include <memory>
#include <unordered_set>

namespace metareview {
namespace {

/// Why something could not be counted for one finding, each reason once. A behavior may be in thousands of tables.
class CProblems {
 public:
  void Add(const std::string& problem) {
    if (problem.empty() || !seen_.insert(problem).second) {
      return;
    }
    if (seen_.size() <= kMostSaid) {
      text_.append(text_.empty() ? "" : "; ").append(problem);
    }
  }

  std::string Text() const {
    return seen_.size() <= kMostSaid ? text_ : text_ + "; and " + std::to_string(seen_.size() - kMostSaid) + " more";
  }

 private:
  static constexpr std::size_t kMostSaid = 3;

  std::unordered_set<std::string> seen_;
  std::string text_;
};

}  // namespace

std::vector<SCount> AddUp(const SLookups& lookups, const std::vector<SLookupCount>& counts) {
  std::vector<SCount> sums;
  for (std::size_t i = 0; i < lookups.lookups.size();) {
    SCount& sum = sums.emplace_back(SCount{lookups.lookups[i].finding, {}});
    CProblems problems;
    for (; i < lookups.lookups.size() && lookups.lookups[i].finding == sum.finding; ++i) {
      const SLookupCount& count = counts.at(i);
      problems.Add(count.problem);
      if (count.isCounted) {
        sum.data.rows += count.rows;
        sum.data.of += count.of;
        sum.data.tables.push_back(lookups.lookups[i].table);
      }
    }
    sum.data.problem = problems.Text();
  }
  for (const std::size_t finding : lookups.nowhere) {
    sums.push_back({finding, {}});
  }
  for (const SNoLookup& problem : lookups.problems) {
    sums.push_back({problem.finding, {0, 0, {}, problem.problem}});
  }
  return sums;
}

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
