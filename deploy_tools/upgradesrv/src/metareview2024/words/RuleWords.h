#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "metareview2024/Finding.h"

namespace metareview {

/// A case of a rule that has a sentence of its own.
struct SVariant {
  /// What follows "RULE.happens" in the sentence's key.
  std::string_view suffix;
  /// Null for what stands last only, where nobody asks.
  bool (*applies)(const SFinding& finding);
};

/// Which messages of the catalogues say what a rule means. All rules have "RULE.name", "RULE.why" and "RULE.todo".
struct SRuleWords {
  std::string_view rule;
  /// The sentences on what happens: the first that applies is taken, or the last where none before it does.
  std::vector<const SVariant*> variants;
  /// Whether there are "RULE.counted" and "RULE.counted.none", for stored values.
  bool isCounted;
  /// The value that chooses the sentence's plural form; null for a sentence without.
  std::optional<Value> SFinding::*plural;
};

/// One row per rule.
const std::vector<SRuleWords>& AllRuleWords();

/// Null for a rule without words, which no rule is.
const SRuleWords* FindRuleWords(std::string_view rule);

/// The key of the sentence on what happens.
std::string HappensKey(const SRuleWords& words, const SFinding& finding);

}  // namespace metareview
