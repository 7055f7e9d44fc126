#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "metareview2024/Review.h"
#include "metareview2024/Terms.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// Findings of one kind. An accepted finding counts as accepted only.
struct STotals {
  /// By ERisk.
  std::array<std::size_t, kRisks.size()> risks{};
  std::size_t accepted = 0;

  std::size_t Of(ERisk risk) const { return risks.at(static_cast<std::size_t>(risk)); }
};

/// By EKind, in the order of kKinds.
METAREVIEW2024_EXPORT std::array<STotals, kKinds.size()> CountTotals(const SReview& review);

/// What the verdict is made of.
struct SVerdict {
  // Of the findings that are not accepted.
  std::size_t loss = 0;
  std::size_t block = 0;
  /// Of origin both, whatever their risk.
  std::size_t conflicts = 0;
  /// Conflicts that are neither loss nor block.
  std::size_t otherConflicts = 0;
  /// Loss, block and conflicts, each finding once.
  std::size_t decide = 0;
  /// What is to be decided and the check's own report does not show.
  std::size_t decideNotReported = 0;
  std::size_t attention = 0;
  std::size_t safe = 0;

  // Of all findings.
  std::size_t accepted = 0;
  std::size_t notReported = 0;
  std::size_t all = 0;
};

/// Whether a finding has to be decided first: not accepted, and loss, block or a conflict.
METAREVIEW2024_EXPORT bool IsToDecide(const SFinding& finding);

/// `attention` and `safe` leave out what is to be decided.
METAREVIEW2024_EXPORT SVerdict CountVerdict(const SReview& review);

/// Whether a finding counts for the exit status: not accepted, at least as bad as `level` (none counts where that is
/// empty), and with `onlyNew` not known from an earlier review.
METAREVIEW2024_EXPORT bool Counts(const SFinding& finding, std::optional<ERisk> level, bool onlyNew);

}  // namespace metareview
