#include "metareview2024/render/page/Selection.h"

#include <algorithm>
#include <tuple>

#include "metareview2024/Totals.h"

namespace metareview::page {

namespace {

auto Rank(const SFinding* finding) {
  return std::tuple(!IsToDecide(*finding), finding->accepted != nullptr, finding->risk);
}

}  // namespace

Findings SelectFindings(const SReview& review, std::size_t limit) {
  Findings findings = AllFindings(review);
  if (findings.size() > limit) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const SFinding* a, const SFinding* b) { return Rank(a) < Rank(b); });
    findings.resize(limit);
    // They point into one list, in its order.
    std::sort(findings.begin(), findings.end());
  }
  return findings;
}

}  // namespace metareview::page
