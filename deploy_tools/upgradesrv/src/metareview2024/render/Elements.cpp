#include "metareview2024/render/Elements.h"

namespace metareview {

std::string_view ElementPath(const SFinding& finding) {
  const std::string_view path = finding.path;
  return path.substr(0, path.find('/', path.find('/') + 1));
}

std::vector<Findings> GroupsByElement(const Findings& findings) {
  std::vector<Findings> groups;
  for (const SFinding* finding : findings) {
    if (groups.empty() || ElementPath(*groups.back().front()) != ElementPath(*finding)) {
      groups.emplace_back();
    }
    groups.back().push_back(finding);
  }
  return groups;
}

}  // namespace metareview
