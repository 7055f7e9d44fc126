// A decisions file of any text is refused on one line that names it and the place, or read whole: what is written again
// says the same, and applying it keeps what decisions promise.
#include <string>
#include <vector>

#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "metareview2024/DecisionsFile.h"
#include "metareview2024/Path.h"
#include "metareview2024/ReviewSteps.h"
#include "support/MetaMaker.h"

namespace {

using fuzz::Require;
using metareview::SDecisions;
using metareview::SFinding;
using metareview::SReview;

const char* const kToday = "2026-11-22";

/// A review with findings of every kind, change and risk.
const SReview& Review() {
  static const SReview review = [] {
    test::SProperty shorter = test::Property("Code");
    shorter.length = 16;
    const auto client = test::MakeMetamodel({{{"Part", {"Own"}, {test::Property("Code")}, "Teil"}, {"Own", {}, {}}},
                                             {{"Near", {}, {}}},
                                             {{"Locked", {"Lock"}, {}}}});
    const auto original = test::MakeMetamodel(
        {{{"Part", {}, {shorter}, "Part"}, {"Old", {}, {}, "", 9}}, {{"near", {"A"}, {}}}, {{"Locked", {}, {}}}});
    const std::vector<metareview::EKind> kinds(metareview::kKinds.begin(), metareview::kKinds.end());
    return metareview::CompareMetamodels({client, original, nullptr}, kinds);
  }();
  return review;
}

void RequireApplied(const SDecisions& decisions) {
  SReview review = Review();
  SetRuleRisks(decisions, review);
  ApplyDecisions(decisions, kToday, review);
  for (const SFinding& finding : review.findings) {
    if (finding.accepted != nullptr) {
      Require(!finding.accepted->reason.empty(), "what is accepted has a reason");
      Require(finding.accepted->until.value_or(kToday) >= kToday, "what is accepted has not expired");
    }
  }
  Require(review.outdated.size() + review.stale.size() <= decisions.accepted.size(),
          "no entry is both outdated and stale");
  const SDecisions pruned = Prune(decisions, review);
  Require(pruned.accepted.size() + review.stale.size() == decisions.accepted.size(), "only what is stale is left out");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::Text(data, size);
  SDecisions decisions;
  const test::SError error = test::ErrorOf([&] { decisions = metareview::ParseDecisions(text, "decisions.json"); });
  fuzz::RequireOneLine(fuzz::Succeeded(error) ? "" : error.message);
  if (!fuzz::Succeeded(error)) {
    Require(error.message.find("decisions.json:") == 0, "the file is named", error.message);
    return 0;
  }
  const std::string written = FormatDecisions(decisions);
  const SDecisions again = metareview::ParseDecisions(written, "written");
  Require(again.accepted.size() == decisions.accepted.size() && again.rules.size() == decisions.rules.size(),
          "nothing is lost", written);
  Require(FormatDecisions(again) == written, "what is written again is the same", written);
  RequireApplied(decisions);
  return 0;
}
