#pragma once

#include <memory>
#include <string>
#include <vector>

#include "metareview2024/Decision.h"
#include "metareview2024/Review.h"
#include "metareview2024/Terms.h"
#include "metareview2024/metareview2024_export.h"

class CMetaDictionary2024;

/// A review, step by step, in this order: CompareMetamodels(), SetRuleRisks(), whatever looks at stored data,
/// ApplyDecisions(), CompareWithEarlier(). All steps but the first may be left out.
namespace metareview {

struct SMetamodels {
  /// As the installation has it, and as the upgrade ships it; never null.
  std::shared_ptr<const CMetaDictionary2024> client;
  std::shared_ptr<const CMetaDictionary2024> original;
  /// As it was shipped with the version that the installation runs; may be null.
  std::shared_ptr<const CMetaDictionary2024> base;
};

/// A review with all findings, their rules and origins, and the notes on the base. `kinds` are those to compare, in any
/// order. What only the caller knows (locations, directory) is left empty.
METAREVIEW2024_EXPORT SReview CompareMetamodels(const SMetamodels& metamodels, const std::vector<EKind>& kinds);

/// Gives each finding the risk that the decisions set for its rule.
METAREVIEW2024_EXPORT void SetRuleRisks(const SDecisions& decisions, SReview& review);

/// Marks what is accepted; fills `outdated`, `expired` and `stale`. `today` is YYYY-MM-DD, in UTC.
METAREVIEW2024_EXPORT void ApplyDecisions(const SDecisions& decisions, const std::string& today, SReview& review);

/// Fills `since` of each finding, and `gone`.
METAREVIEW2024_EXPORT void CompareWithEarlier(const SReview& earlier, SReview& review);

}  // namespace metareview
