#include "metareview2024/render/ToDecide.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"

namespace metareview {
namespace {

using test::Accepted;
using test::Made;
using test::MadeChange;
using test::MadeReview;
using testing::ElementsAre;

const std::string kCode = "class/Part/property/Code";

std::vector<std::vector<std::string>> PathsToDecide(const std::vector<SFinding>& findings) {
  const SReview review = MadeReview(findings);
  std::vector<std::vector<std::string>> paths;
  for (const Findings& group : GroupsToDecide(AllFindings(review))) {
    paths.emplace_back();
    for (const SFinding* finding : group) {
      paths.back().push_back(finding->path);
    }
  }
  return paths;
}

TEST(ToDecideTest, ThePlaceOfAnAttributeIsWhatItBelongsTo) {
  EXPECT_EQ(PlaceOf(MadeChange(kCode + "/length", "length-shrinks", 48U, 32U)), kCode + "/");
}

TEST(ToDecideTest, ThePlaceOfAWholeThingIsItsPath) {
  EXPECT_EQ(PlaceOf(Made(kCode, EChange::kInserted, "property-inserted")), kCode);
}

TEST(ToDecideTest, WhatIsSafeOrAcceptedNeedNoDecision) {
  const SFinding loss = MadeChange(kCode + "/length", "length-shrinks", 48U, 32U);
  EXPECT_THAT(PathsToDecide({Made("class/A", EChange::kInserted, "class-inserted"), Accepted(loss, {"done", {}, {}})}),
              ElementsAre());
}

TEST(ToDecideTest, AttributesOfOnePlaceAreTogetherTheWorstFirst) {
  EXPECT_THAT(PathsToDecide({MadeChange(kCode + "/max", "max-tightens", "9", "8"),
                             MadeChange(kCode + "/length", "length-shrinks", 48U, 32U)}),
              ElementsAre(ElementsAre(kCode + "/length", kCode + "/max")));
}

TEST(ToDecideTest, TheWorstPlaceIsFirstElseTheOrderOfTheReviewIsKept) {
  EXPECT_THAT(PathsToDecide({MadeChange("class/A/property/P/max", "max-tightens", "9", "8"),
                             MadeChange("class/B/property/P/length", "length-shrinks", 48U, 32U),
                             MadeChange("class/C/property/P/max", "max-tightens", "9", "8"),
                             MadeChange("class/D/property/P/length", "length-shrinks", 48U, 32U)}),
              ElementsAre(ElementsAre("class/B/property/P/length"), ElementsAre("class/D/property/P/length"),
                          ElementsAre("class/A/property/P/max"), ElementsAre("class/C/property/P/max")));
}

TEST(ToDecideTest, AConflictIsToBeDecidedHoweverSafe) {
  const std::string path = "class/A/display_name";
  EXPECT_THAT(PathsToDecide({MadeChange(path, "display-name", "a", "b", EOrigin::kBoth)}),
              ElementsAre(ElementsAre(path)));
}

}  // namespace
}  // namespace metareview
