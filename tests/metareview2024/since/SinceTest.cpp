#include <gmock/gmock.h>

#include "metareview2024/Metamodels.h"
#include "metareview2024/ReviewSteps.h"

namespace {

using metareview::ESince;
using metareview::SReview;
using test::FindingAt;
using test::Property;
using test::Review;
using test::SModel;
using test::SProperty;
using testing::ElementsAre;
using testing::IsEmpty;

SModel Length(std::uint32_t length, const std::string& name = "Code") {
  SProperty property = Property(name);
  property.length = length;
  return {{{"Part", {}, {property}, "Part"}}, {}, {}};
}

ESince SinceOfLength(SReview now, const SReview& earlier) {
  CompareWithEarlier(earlier, now);
  return FindingAt(now, "class/Part/property/Code/length").since.value();
}

TEST(SinceTest, AFindingIsNewWhereNoEarlierOneHasItsId) {
  EXPECT_EQ(SinceOfLength(Review(Length(48), Length(32)), Review(Length(32), Length(32))), ESince::kNew);
}

TEST(SinceTest, AFindingIsKnownWhereTheEarlierOneHasTheSameValues) {
  EXPECT_EQ(SinceOfLength(Review(Length(48), Length(32)), Review(Length(48), Length(32))), ESince::kKnown);
  EXPECT_EQ(SinceOfLength(Review(Length(48), Length(32), Length(40)), Review(Length(48), Length(32), Length(40))),
            ESince::kKnown);
}

TEST(SinceTest, AFindingIsChangedWhereTheEarlierOneHasAnotherValue) {
  EXPECT_EQ(SinceOfLength(Review(Length(48), Length(32)), Review(Length(40), Length(32))), ESince::kChanged);
  EXPECT_EQ(SinceOfLength(Review(Length(48), Length(32)), Review(Length(48), Length(30))), ESince::kChanged);
  EXPECT_EQ(SinceOfLength(Review(Length(48), Length(32), Length(40)), Review(Length(48), Length(32), Length(32))),
            ESince::kChanged);
}

TEST(SinceTest, WhatWasInsertedOrDeletedHasNoValuesAndIsKnown) {
  const SModel own = {{{"Own", {}, {}, "here"}}, {}, {}};
  const SModel shipped = {{{"New", {}, {}, "there"}}, {}, {}};
  const SReview earlier = Review({{{"OWN", {}, {}, "other", 5}}, {}, {}}, shipped);
  SReview now = Review(own, shipped);
  CompareWithEarlier(earlier, now);
  EXPECT_EQ(FindingAt(now, "class/Own").since, ESince::kKnown);
  EXPECT_EQ(FindingAt(now, "class/New").since, ESince::kKnown);
}

TEST(SinceTest, TheSamePathWithAnotherChangeIsNew) {
  const SModel part = {{{"Part", {}, {}}}, {}, {}};
  SReview now = Review(part, {});
  CompareWithEarlier(Review({}, part), now);
  EXPECT_EQ(FindingAt(now, "class/Part").since, ESince::kNew);
}

TEST(SinceTest, EarlierFindingsThatAreNoMoreAreGoneInTheirOrder) {
  const SReview earlier =
      Review({{{"B", {}, {}}, {"A", {}, {}}, {"Part", {}, {}}}, {}, {}}, {{{"Part", {}, {}, "x"}}, {}, {}});
  SReview now = Review({{{"Part", {}, {}}}, {}, {}}, {{{"Part", {}, {}, "x"}}, {}, {}});
  CompareWithEarlier(earlier, now);
  ASSERT_EQ(now.gone.size(), 2U);
  EXPECT_EQ(now.gone[0].path, "class/B");
  EXPECT_EQ(now.gone[1].path, "class/A");
  EXPECT_EQ(now.gone[1].change, metareview::EChange::kInserted);
  EXPECT_EQ(now.gone[1].id, metareview::FindingId("class/A", metareview::EChange::kInserted));
}

TEST(SinceTest, WhatIsGoneIsOfTheLastComparison) {
  const SReview earlier = Review({{{"A", {}, {}}}, {}, {}}, {});
  SReview now = Review({}, {});
  CompareWithEarlier(earlier, now);
  CompareWithEarlier(earlier, now);
  EXPECT_EQ(now.gone.size(), 1U);
}

TEST(SinceTest, FindingsOfKindsThatAreNotComparedNowAreNotGone) {
  const SReview earlier = Review({{{"A", {}, {}}}, {{"L", {}, {}}}, {}}, {});
  metareview::SMetamodels metamodels;
  metamodels.client = test::MakeMetamodel({});
  metamodels.original = test::MakeMetamodel({});
  SReview now = CompareMetamodels(metamodels, {metareview::EKind::kLink});
  CompareWithEarlier(earlier, now);
  ASSERT_EQ(now.gone.size(), 1U);
  EXPECT_EQ(now.gone[0].path, "link/L");
}

TEST(SinceTest, AgainstItselfAllIsKnownAndNothingGone) {
  const SReview earlier = Review(Length(48), Length(32, "Name"), Length(40));
  SReview now = earlier;
  CompareWithEarlier(earlier, now);
  for (const metareview::SFinding& finding : now.findings) {
    EXPECT_EQ(finding.since, ESince::kKnown) << finding.path;
  }
  EXPECT_THAT(now.gone, IsEmpty());
}

}  // namespace
