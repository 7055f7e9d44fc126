#include "metareview2024/render/page/Selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"

namespace metareview::page {
namespace {

using test::Accepted;
using test::Made;
using test::MadeReview;
using testing::ElementsAre;

const SFinding kSafe = Made("class/Safe", EChange::kInserted, "class-inserted");
const SFinding kAttention = Made("class/Attention", EChange::kDeleted, "class-deleted");
const SFinding kConflict = Made("class/Conflict", EChange::kInserted, "class-inserted", EOrigin::kBoth);
const SFinding kLoss = Made("class/Loss", EChange::kInserted, "class-withdrawn", EOrigin::kVendor);
const SFinding kDecided =
    Accepted(Made("class/Decided", EChange::kInserted, "class-withdrawn", EOrigin::kVendor), {"moved", {}, {}});
const std::vector<SFinding> kAll = {kSafe, kDecided, kAttention, kConflict, kLoss};

std::vector<std::string> Selected(std::size_t limit) {
  const SReview review = MadeReview(kAll);
  std::vector<std::string> paths;
  for (const SFinding* finding : SelectFindings(review, limit)) {
    paths.push_back(finding->path);
  }
  return paths;
}

TEST(SelectionTest, AllAreTakenWhereTheyAreNotTooMany) {
  EXPECT_THAT(Selected(5),
              ElementsAre("class/Safe", "class/Decided", "class/Attention", "class/Conflict", "class/Loss"));
}

TEST(SelectionTest, TheWorstAreTakenFirst) {
  EXPECT_THAT(Selected(1), ElementsAre("class/Loss"));
}

TEST(SelectionTest, WhatHasToBeDecidedComesBeforeWhatIsMerelyWorse) {
  EXPECT_THAT(Selected(2), ElementsAre("class/Conflict", "class/Loss"));
}

TEST(SelectionTest, AcceptedFindingsAreTakenLast) {
  EXPECT_THAT(Selected(4), ElementsAre("class/Safe", "class/Attention", "class/Conflict", "class/Loss"));
}

TEST(SelectionTest, OfThoseThatAreEquallyBadTheFirstAreTaken) {
  const SReview review = MadeReview({Made("class/A", EChange::kInserted, "class-inserted"),
                                     Made("class/B", EChange::kInserted, "class-inserted"),
                                     Made("class/C", EChange::kInserted, "class-inserted")});
  const Findings selected = SelectFindings(review, 2);
  ASSERT_EQ(selected.size(), 2U);
  EXPECT_EQ(selected[0]->path, "class/A");
  EXPECT_EQ(selected[1]->path, "class/B");
}

TEST(SelectionTest, TheOrderOfTheReviewIsKept) {
  EXPECT_THAT(Selected(3), ElementsAre("class/Attention", "class/Conflict", "class/Loss"));
}

}  // namespace
}  // namespace metareview::page
