#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

#include "metareview2024/render/page/Page.h"

namespace metareview::page {

/// Writes rows of findings: that in a place to decide, and that in the finding's element.
class CFindingRow {
 public:
  explicit CFindingRow(const CPage& page);

  std::string InPlace(const SFinding& finding) const;
  /// Where a link of the page leads to filtered findings, the first of them gets its name, for whoever has no script.
  std::string InElement(const SFinding& finding);

 private:
  View Common(const SFinding& finding) const;
  void FillValues(const SFinding& finding, View& view) const;
  View Notes(const SFinding& finding) const;
  std::string_view DecisionOf(const SFinding& finding) const;
  View NewNames(const SFinding& finding);

  const CPage& page_;
  CTemplate row_;
  /// By the id of a finding: that of the first one at its place, for the places that are shown one by one.
  std::unordered_map<std::uint64_t, std::uint64_t> places_;
  std::set<std::string> names_;
};

/// The columns of the tables of findings.
View Columns(const CPage& page);

/// The display name, where it says more than the internal name.
std::optional<std::string> OtherDisplayName(const SFinding& finding, const std::string& name);

}  // namespace metareview::page
