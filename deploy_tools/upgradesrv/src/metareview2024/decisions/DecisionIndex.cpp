#include "metareview2024/decisions/DecisionIndex.h"

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/Path.h"

namespace metareview {
namespace {

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  CStringHelper::ToLower(lower);
  return lower;
}

}  // namespace

std::string KeyOf(std::string_view path, EChange change) {
  return LowerCase(path) + "\n" + std::string(NameOf(change));
}

/// Stays where it is made: the segments are parts of the text.
struct CDecisionIndex::SPattern {
  SPattern(std::size_t decision, const SDecision& values)
      : position(decision), change(values.change), text(LowerCase(values.path)), segments(SplitPath(text)) {}

  std::size_t position;
  EChange change;
  std::string text;
  PathSegments segments;
};

CDecisionIndex::CDecisionIndex(const std::vector<SDecision>& decisions) {
  for (std::size_t i = 0; i < decisions.size(); ++i) {
    const SDecision& decision = decisions[i];
    if (HasWildcard(decision.path)) {
      patterns_.push_back(std::make_unique<const SPattern>(i, decision));
    } else {
      byKey_.emplace(KeyOf(decision.path, decision.change), i);
    }
  }
}

CDecisionIndex::~CDecisionIndex() = default;

std::vector<std::size_t> CDecisionIndex::Find(const SFinding& finding) const {
  std::vector<std::size_t> positions;
  if (const auto found = byKey_.find(KeyOf(finding.path, finding.change)); found != byKey_.end()) {
    positions.push_back(found->second);
  }
  if (!patterns_.empty()) {
    const std::string path = LowerCase(finding.path);
    const PathSegments segments = SplitPath(path);
    for (const auto& pattern : patterns_) {
      if (pattern->change == finding.change && FitPattern(pattern->segments, segments)) {
        positions.push_back(pattern->position);
      }
    }
  }
  return positions;
}

}  // namespace metareview
