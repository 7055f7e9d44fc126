#pragma once

#include <optional>
#include <string>
#include <vector>

#include "metareview2024/Finding.h"
#include "metareview2024/Rule.h"
#include "metareview2024/Terms.h"

namespace metareview {

/// An entry that accepts findings.
struct SDecision {
  /// A path, in which "*" may stand for one whole segment.
  std::string path;
  EChange change = EChange::kChanged;
  /// The values that are accepted; only for a changed attribute without a "*".
  std::optional<Value> original;
  std::optional<Value> client;
  SAcceptance acceptance;
};

inline bool operator==(const SDecision& a, const SDecision& b) {
  return a.path == b.path && a.change == b.change && a.original == b.original && a.client == b.client &&
         a.acceptance == b.acceptance;
}

/// Whether an entry with a "*" accepts findings of that risk.
inline bool PatternMayAccept(ERisk risk) {
  return risk != ERisk::kLoss && risk != ERisk::kBlock;
}

/// An entry that sets the risk of a rule.
struct SRuleDecision {
  const SRule* rule = nullptr;
  ERisk risk = ERisk::kSafe;
  std::optional<std::string> reason;
};

/// What a decisions file says, in its order.
struct SDecisions {
  std::vector<SRuleDecision> rules;
  std::vector<SDecision> accepted;
};

}  // namespace metareview
