#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "metareview2024/Path.h"
#include "metareview2024/ReviewSteps.h"
#include "metareview2024/decisions/DecisionIndex.h"

namespace metareview {
namespace {

/// A decision while it is applied.
class CEntry {
 public:
  CEntry(const SDecision& decision, const std::string& today)
      : decision_(&decision),
        acceptance_(std::make_shared<SAcceptance>(decision.acceptance)),
        hasWildcard_(HasWildcard(decision.path)),
        isExpired_(decision.acceptance.until && *decision.acceptance.until < today) {}

  bool IsExpired() const { return isExpired_; }
  bool HasMatched() const { return hasMatched_; }
  const SFinding* OutdatedBy() const { return outdatedBy_; }

  /// Accepts the finding, which the path and change fit, if it may.
  void ApplyTo(SFinding& finding) {
    hasMatched_ = true;
    if (!hasWildcard_ && (decision_->client != finding.client || decision_->original != finding.original)) {
      outdatedBy_ = &finding;
    } else if (!isExpired_ && finding.accepted == nullptr && MayAccept(finding)) {
      finding.accepted = acceptance_;
    }
  }

 private:
  bool MayAccept(const SFinding& finding) const { return !hasWildcard_ || PatternMayAccept(finding.risk); }

  const SDecision* decision_;
  std::shared_ptr<const SAcceptance> acceptance_;
  bool hasWildcard_;
  bool isExpired_;
  bool hasMatched_ = false;
  const SFinding* outdatedBy_ = nullptr;
};

/// Whether all kinds that the decision may be about were compared.
bool IsCompared(const SDecision& decision, const SReview& review) {
  const std::vector<EKind> kinds = KindsOfPattern(decision.path);
  return std::all_of(kinds.begin(), kinds.end(), [&review](EKind kind) {
    return std::find(review.elements.begin(), review.elements.end(), kind) != review.elements.end();
  });
}

}  // namespace

void SetRuleRisks(const SDecisions& decisions, SReview& review) {
  for (SFinding& finding : review.findings) {
    const auto found = std::find_if(decisions.rules.begin(), decisions.rules.end(),
                                    [&finding](const SRuleDecision& rule) { return rule.rule == finding.rule; });
    if (found != decisions.rules.end()) {
      finding.risk = found->risk;
    }
  }
}

void ApplyDecisions(const SDecisions& decisions, const std::string& today, SReview& review) {
  std::vector<CEntry> entries;
  for (const SDecision& decision : decisions.accepted) {
    entries.emplace_back(decision, today);
  }
  const CDecisionIndex index(decisions.accepted);
  for (SFinding& finding : review.findings) {
    finding.accepted = nullptr;
    for (const std::size_t position : index.Find(finding)) {
      entries[position].ApplyTo(finding);
    }
  }
  review.outdated.clear();
  review.expired.clear();
  review.stale.clear();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const SDecision& decision = decisions.accepted[i];
    const CEntry& entry = entries[i];
    if (const SFinding* finding = entry.OutdatedBy(); finding != nullptr) {
      review.outdated.push_back({decision, *finding->original, *finding->client});
    }
    if (entry.IsExpired()) {
      review.expired.push_back(decision);
    }
    if (!entry.HasMatched() && IsCompared(decision, review)) {
      review.stale.push_back(decision);
    }
  }
}

}  // namespace metareview
