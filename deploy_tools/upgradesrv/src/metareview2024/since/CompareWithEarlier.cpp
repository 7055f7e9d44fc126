#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "metareview2024/ReviewSteps.h"

namespace metareview {
namespace {

bool HaveSameValues(const SFinding& a, const SFinding& b) {
  return a.base == b.base && a.original == b.original && a.client == b.client;
}

}  // namespace

void CompareWithEarlier(const SReview& earlier, SReview& review) {
  std::unordered_map<std::uint64_t, const SFinding*> earlierById;
  for (const SFinding& finding : earlier.findings) {
    earlierById.emplace(finding.id, &finding);
  }
  std::unordered_set<std::uint64_t> ids;
  for (SFinding& finding : review.findings) {
    ids.insert(finding.id);
    const auto found = earlierById.find(finding.id);
    if (found == earlierById.end()) {
      finding.since = ESince::kNew;
    } else {
      finding.since = HaveSameValues(*found->second, finding) ? ESince::kKnown : ESince::kChanged;
    }
  }
  review.gone.clear();
  for (const SFinding& finding : earlier.findings) {
    const bool compared =
        std::find(review.elements.begin(), review.elements.end(), finding.kind) != review.elements.end();
    if (compared && ids.count(finding.id) == 0) {
      review.gone.push_back({finding.id, finding.path, finding.change});
    }
  }
}

}  // namespace metareview
