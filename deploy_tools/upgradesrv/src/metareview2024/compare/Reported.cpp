#include "metareview2024/compare/Reported.h"

#include <array>

namespace metareview {
namespace {

bool IsElement(const SFinding& finding) {
  return finding.thing == ThingOf(finding.kind);
}

bool IsInsertedElement(const SFinding& finding) {
  return IsElement(finding) && finding.change == EChange::kInserted;
}

/// Whether the report shows the difference, and with it the kind.
bool IsReported(const SFinding& finding) {
  switch (finding.attribute) {
    case EAttribute::kNone:
      return !IsInsertedElement(finding) && !(finding.kind == EKind::kLink && finding.thing == EThing::kListedBehavior);
    case EAttribute::kType:
    case EAttribute::kLength:
    case EAttribute::kDefaultValue:
    case EAttribute::kPrecision:
    case EAttribute::kMax:
    case EAttribute::kMin:
      return true;
    default:
      return false;
  }
}

}  // namespace

void MarkReported(std::vector<SFinding>& findings) {
  std::array<bool, kKinds.size()> shown{};
  for (SFinding& finding : findings) {
    finding.reported = IsReported(finding);
    shown.at(static_cast<std::size_t>(finding.kind)) |= finding.reported;
  }
  for (SFinding& finding : findings) {
    if (IsInsertedElement(finding)) {
      finding.reported = shown.at(static_cast<std::size_t>(finding.kind));
    }
  }
}

}  // namespace metareview
