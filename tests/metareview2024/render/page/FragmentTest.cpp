#include "metareview2024/render/page/Fragment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "metareview2024/MadeReview.h"

namespace metareview::page {
namespace {

using test::Accepted;
using test::Made;
using testing::UnorderedElementsAre;

TEST(FragmentTest, KeysAreInTheOrderOfTheForm) {
  EXPECT_EQ(OpenFragment(EKind::kLink, ERisk::kBlock), "kind=link&risk=block&decision=open");
  EXPECT_EQ(OpenFragment(std::nullopt, ERisk::kSafe), "risk=safe&decision=open");
  EXPECT_EQ(AcceptedFragment(EKind::kClass), "kind=class&decision=accepted");
  EXPECT_EQ(AcceptedFragment(std::nullopt), "decision=accepted");
}

TEST(FragmentTest, AFindingIsAmongThoseOfItsKindAndRisk) {
  EXPECT_THAT(
      FragmentsOf(Made("link/L", EChange::kDeleted, "link-deleted")),
      UnorderedElementsAre("kind=link", "kind=link&risk=attention&decision=open", "risk=attention&decision=open"));
}

TEST(FragmentTest, AnAcceptedFindingIsNotAmongThoseOfItsRisk) {
  const SFinding finding = Accepted(Made("link/L", EChange::kDeleted, "link-deleted"), {"gone for good", {}, {}});
  EXPECT_THAT(FragmentsOf(finding),
              UnorderedElementsAre("kind=link", "kind=link&decision=accepted", "decision=accepted"));
}

TEST(FragmentTest, AFindingIsAmongConflictsNewOnesAndThoseNotInTheReport) {
  SFinding finding = Made("class/C", EChange::kDeleted, "class-deleted", EOrigin::kBoth);
  finding.since = ESince::kNew;
  finding.reported = false;
  EXPECT_THAT(FragmentsOf(finding),
              UnorderedElementsAre("kind=class", "kind=class&risk=attention&decision=open",
                                   "risk=attention&decision=open", "origin=both", "since=new", "report=no"));
}

}  // namespace
}  // namespace metareview::page
