#include "metareview2024/data/ApplyCounts.h"

#include <memory>

namespace metareview {
namespace {

void AddProblem(const std::string& problem, std::string& problems) {
  if (!problem.empty() && problems.find(problem) == std::string::npos) {
    problems.append(problems.empty() ? "" : "; ").append(problem);
  }
}

void Add(const std::string& table, const SLookupCount& count, SData& data) {
  AddProblem(count.problem, data.problem);
  if (count.isCounted) {
    data.rows += count.rows;
    data.of += count.of;
    data.tables.push_back(table);
  }
}

}  // namespace

std::vector<SCount> AddUp(const SLookups& lookups, const std::vector<SLookupCount>& counts) {
  std::vector<SCount> sums;
  for (std::size_t i = 0; i < lookups.lookups.size(); ++i) {
    const SLookup& lookup = lookups.lookups[i];
    if (sums.empty() || sums.back().finding != lookup.finding) {
      sums.push_back({lookup.finding, {}});
    }
    Add(lookup.table, counts.at(i), sums.back().data);
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
