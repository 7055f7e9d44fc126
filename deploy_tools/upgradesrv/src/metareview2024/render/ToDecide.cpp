#include "metareview2024/render/ToDecide.h"

#include <algorithm>

#include "metareview2024/Totals.h"

namespace metareview {

namespace {

bool IsWorse(const SFinding* a, const SFinding* b) {
  return a->risk < b->risk;
}

}  // namespace

Findings AllFindings(const SReview& review) {
  Findings findings;
  findings.reserve(review.findings.size());
  for (const SFinding& finding : review.findings) {
    findings.push_back(&finding);
  }
  return findings;
}

std::string_view PlaceOf(const SFinding& finding) {
  const std::string_view path = finding.path;
  return finding.attribute == EAttribute::kNone ? path : path.substr(0, path.rfind('/') + 1);
}

std::vector<Findings> GroupsToDecide(const Findings& findings) {
  std::vector<Findings> groups;
  for (const SFinding* finding : findings) {
    if (!IsToDecide(*finding)) {
      continue;
    }
    if (!groups.empty() && PlaceOf(*groups.back().front()) == PlaceOf(*finding)) {
      groups.back().push_back(finding);
    } else {
      groups.push_back({finding});
    }
  }
  for (Findings& group : groups) {
    std::stable_sort(group.begin(), group.end(), IsWorse);
  }
  std::stable_sort(groups.begin(), groups.end(),
                   [](const Findings& a, const Findings& b) { return IsWorse(a.front(), b.front()); });
  return groups;
}

}  // namespace metareview
