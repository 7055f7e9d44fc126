#include <algorithm>

#include "metareview2024/ReviewSteps.h"
#include "metareview2024/compare/Comparison.h"
#include "metareview2024/compare/Reported.h"
#include "metareview2024/origin/BaseNotes.h"
#include "metareview2024/rules/RuleTable.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace metareview {
namespace {

SFinding Judge(const SDifference& difference) {
  SFinding finding;
  finding.path = FormatPath(difference.path);
  finding.id = FindingId(finding.path, difference.change);
  finding.change = difference.change;
  finding.kind = difference.path.kind;
  finding.thing = difference.path.thing;
  finding.attribute = difference.path.attribute;
  finding.rule = &RuleFor(difference);
  finding.risk = finding.rule->risk;
  finding.origin = difference.origin;
  finding.displayName = difference.displayName;
  if (const CMetaProperty2024* property =
          difference.clientProperty != nullptr ? difference.clientProperty : difference.originalProperty;
      property != nullptr) {
    finding.type = property->GetType();
  }
  finding.base = difference.base;
  finding.original = difference.original;
  finding.client = difference.client;
  finding.taken = difference.taken;
  return finding;
}

}  // namespace

SReview CompareMetamodels(const SMetamodels& metamodels, const std::vector<EKind>& kinds) {
  SReview review;
  std::copy_if(kKinds.begin(), kKinds.end(), std::back_inserter(review.elements),
               [&kinds](EKind kind) { return std::find(kinds.begin(), kinds.end(), kind) != kinds.end(); });
  for (const EKind kind : review.elements) {
    CompareKind(
        kind, *metamodels.client, *metamodels.original, metamodels.base.get(),
        [&review](const SDifference& difference) { review.findings.push_back(Judge(difference)); },
        [&review](const SPath& element) { review.equal.push_back(FormatPath(element)); });
  }
  MarkReported(review.findings);
  if (metamodels.base != nullptr) {
    review.notes = NotesOnBase(*metamodels.client, *metamodels.original, *metamodels.base, review.elements);
  }
  return review;
}

}  // namespace metareview
