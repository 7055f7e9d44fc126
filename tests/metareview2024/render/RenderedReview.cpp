#include "metareview2024/render/RenderedReview.h"

#include "metareview2024/MadeReview.h"

namespace test {

using namespace metareview;

std::string Rendered(const std::string& format, const SReview& review, const SRenderOptions& options) {
  std::string text;
  FindFormat(format)->write(review, options, [&](std::string_view part) { text += part; });
  return text;
}

SReview FullReview() {
  SFinding shortened =
      Counted(MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U), 137, 20341, "T_PART");
  shortened.displayName = "Part number";
  shortened.type = "string";
  shortened.since = ESince::kChanged;

  SFinding rounded = Counted(MadeChange("class/Part/property/Weight/precision", "precision-shrinks", 6U, 3U), 0, 884);
  rounded.risk = ERisk::kSafe;
  rounded.riskWithoutData = ERisk::kLoss;
  rounded.since = ESince::kKnown;

  SFinding moved = MadeChange("class/Part/property/Sum/field", "field-moved", "F_SHA", "F_SUM");
  moved.reported = false;
  moved.data = std::make_shared<const SData>(SData{0, 0, {}, "no column F_SHA in T_PART"});
  moved.since = ESince::kNew;

  SFinding own = Accepted(Made("class/Own", EChange::kInserted, "class-inserted"), {"ours", "jo", "2027-06-30"});
  own.displayName = "";
  own.since = ESince::kKnown;

  SFinding added = Made("link/Uses", EChange::kDeleted, "link-identity-taken", EOrigin::kVendor);
  added.taken = std::make_shared<const STaken>(STaken{"class/Own", 1001, "T_USES", {}});
  added.since = ESince::kNew;

  SReview review = MadeReview({shortened, rounded, moved, own, added});
  review.against = "yesterday.json";
  review.data = "data.db";
  SDecision decision;
  decision.path = "class/Part/property/Code/length";
  decision.original = 32U;
  decision.client = 40U;
  decision.acceptance = {"longest has 31", {}, {}};
  review.outdated.push_back({decision, 32U, 48U});
  decision.acceptance = {"until later", "jo", "2026-10-31"};
  review.expired.push_back(decision);
  decision = SDecision();
  decision.path = "class/*/behavior/Gone";
  decision.change = EChange::kInserted;
  decision.acceptance = {"add-on", {}, {}};
  review.stale.push_back(decision);
  review.gone.push_back({FindingId("behavior/Rated", EChange::kDeleted), "behavior/Rated", EChange::kDeleted});
  return review;
}

}  // namespace test
