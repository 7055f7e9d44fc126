#include "metareview2024/Totals.h"

namespace metareview {

std::array<STotals, kKinds.size()> CountTotals(const SReview& review) {
  std::array<STotals, kKinds.size()> totals;
  for (const SFinding& finding : review.findings) {
    STotals& kind = totals.at(static_cast<std::size_t>(finding.kind));
    if (finding.accepted != nullptr) {
      ++kind.accepted;
    } else {
      ++kind.risks.at(static_cast<std::size_t>(finding.risk));
    }
  }
  return totals;
}

bool IsToDecide(const SFinding& finding) {
  const bool isBad = finding.risk == ERisk::kLoss || finding.risk == ERisk::kBlock;
  return finding.accepted == nullptr && (isBad || finding.origin == EOrigin::kBoth);
}

SVerdict CountVerdict(const SReview& review) {
  SVerdict verdict;
  verdict.all = review.findings.size();
  for (const SFinding& finding : review.findings) {
    verdict.notReported += finding.reported ? 0 : 1;
    if (finding.accepted != nullptr) {
      ++verdict.accepted;
      continue;
    }
    const bool loses = finding.risk == ERisk::kLoss;
    const bool blocks = finding.risk == ERisk::kBlock;
    const bool conflicts = finding.origin == EOrigin::kBoth;
    verdict.loss += loses ? 1 : 0;
    verdict.block += blocks ? 1 : 0;
    verdict.conflicts += conflicts ? 1 : 0;
    if (IsToDecide(finding)) {
      ++verdict.decide;
      verdict.otherConflicts += loses || blocks ? 0 : 1;
      verdict.decideNotReported += finding.reported ? 0 : 1;
    } else if (finding.risk == ERisk::kAttention) {
      ++verdict.attention;
    } else {
      ++verdict.safe;
    }
  }
  return verdict;
}

bool Counts(const SFinding& finding, std::optional<ERisk> level, bool onlyNew) {
  const bool known = onlyNew && finding.since == ESince::kKnown;
  return level && finding.accepted == nullptr && finding.risk <= *level && !known;
}

}  // namespace metareview
