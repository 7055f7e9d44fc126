#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "metareview2024/Decision.h"
#include "metareview2024/PathSegments.h"
#include "metareview2024/Terms.h"

namespace metareview {

/// What there is only one of: a change at a path, ASCII case ignored.
std::string KeyOf(std::string_view path, EChange change);

/// Finds the decisions about a finding.
class CDecisionIndex {
 public:
  explicit CDecisionIndex(const std::vector<SDecision>& decisions);
  ~CDecisionIndex();

  /// The positions of those whose path and change fit: first the one that names the path itself, then those with a "*",
  /// in their order.
  std::vector<std::size_t> Find(const SFinding& finding) const;

 private:
  struct SPattern;

  std::unordered_map<std::string, std::size_t> byKey_;
  std::vector<std::unique_ptr<const SPattern>> patterns_;
};

}  // namespace metareview
