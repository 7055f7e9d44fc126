#include <gmock/gmock.h>

#include "metareview2024/Metamodels.h"
#include "metareview2024/ReviewSteps.h"

// What a finding says beside its path, change and rule.
namespace {

using metareview::EKind;
using metareview::SFinding;
using metareview::Value;
using test::FindingAt;
using test::Property;
using test::Review;
using test::SModel;
using test::SProperty;
using testing::ElementsAre;

SProperty Shown(const std::string& name, const std::string& displayName, const std::string& type = "string") {
  SProperty property = Property(name);
  property.displayName = displayName;
  property.type = type;
  return property;
}

TEST(FindingMembersTest, TheDisplayNameIsOfTheThingThatThePathLeadsThroughLastOnTheClientsSide) {
  const SModel client = {{{"Part", {}, {Shown("Code", "Nummer")}, "Teil", 1, "T_1"}}, {}, {}};
  const SModel original = {
      {{"Part", {}, {Shown("Code", "Number"), Shown("Name", "Name it")}, "Piece", 2, "T_1"}}, {}, {}};
  const auto review = Review(client, original);
  EXPECT_EQ(FindingAt(review, "class/Part/class_id").displayName, "Teil");
  EXPECT_EQ(FindingAt(review, "class/Part/property/Code/display_name").displayName, "Nummer");
  EXPECT_EQ(FindingAt(review, "class/Part/property/Name").displayName, "Name it");
}

TEST(FindingMembersTest, AnEmptyDisplayNameIsEmpty) {
  const SModel client = {{{"Part", {}, {Shown("Code", "")}, "", 1, "T_1"}}, {}, {}};
  const SModel original = {{{"Part", {}, {Shown("Code", "Number")}, "Piece", 1, "T_1"}}, {}, {}};
  const auto review = Review(client, original);
  EXPECT_EQ(FindingAt(review, "class/Part/display_name").displayName, "");
  EXPECT_EQ(FindingAt(review, "class/Part/property/Code/display_name").displayName, "");
}

TEST(FindingMembersTest, AListedBehaviorHasNoDisplayName) {
  const SModel behaviors = {{{"Part", {"Locked"}, {}}}, {}, {{"Locked", {}, {}, "Shown"}}};
  const SModel none = {{{"Part", {}, {}}}, {}, {{"Locked", {}, {}, "Shown"}}};
  EXPECT_EQ(FindingAt(Review(behaviors, none), "class/Part/behavior/Locked").displayName, std::nullopt);
}

TEST(FindingMembersTest, TheTypeIsOfThePropertyOnTheClientsSide) {
  const SModel client = {{{"Part", {}, {Shown("Code", "", "lookup"), Shown("Own", "", "")}, "here"}}, {}, {}};
  const SModel original = {{{"Part", {}, {Shown("Code", "", "date"), Shown("New", "", "money")}, "there"}}, {}, {}};
  const auto review = Review(client, original);
  EXPECT_EQ(FindingAt(review, "class/Part/property/Code/type").type, "lookup");
  EXPECT_EQ(FindingAt(review, "class/Part/property/Own").type, "");
  EXPECT_EQ(FindingAt(review, "class/Part/property/New").type, "money");
  EXPECT_EQ(FindingAt(review, "class/Part/display_name").type, std::nullopt);
}

TEST(FindingMembersTest, ValuesAreNumbersForNumericAttributesAndTextsForOthers) {
  SProperty here = Property("Code");
  SProperty there = here;
  here.precision = 65535;
  there.length = 4294967295;
  there.max = "10";
  const auto review = Review({{{"Part", {}, {here}, "", 0}}, {}, {}}, {{{"Part", {}, {there}, "", 5}}, {}, {}});
  const auto values = [&review](const std::string& path) {
    const SFinding finding = FindingAt(review, path);
    return std::pair(finding.client, finding.original);
  };
  EXPECT_EQ(values("class/Part/class_id"), std::pair(std::optional<Value>(0U), std::optional<Value>(5U)));
  EXPECT_EQ(values("class/Part/property/Code/length"),
            std::pair(std::optional<Value>(32U), std::optional<Value>(4294967295U)));
  EXPECT_EQ(values("class/Part/property/Code/precision"),
            std::pair(std::optional<Value>(65535U), std::optional<Value>(0U)));
  EXPECT_EQ(values("class/Part/property/Code/max"),
            std::pair(std::optional<Value>(std::string()), std::optional<Value>(std::string("10"))));
}

TEST(FindingMembersTest, WhatWasInsertedOrDeletedHasNoValues) {
  const auto review =
      Review({{{"Own", {}, {}}}, {}, {}}, {{{"New", {}, {}}}, {}, {}}, {{{"New", {}, {}, "other"}}, {}, {}});
  for (const SFinding& finding : review.findings) {
    EXPECT_FALSE(finding.base || finding.original || finding.client) << finding.path;
  }
}

TEST(FindingMembersTest, EachHasTheIdentifierOfItsPathAndChange) {
  const auto review = Review({{{"Own", {}, {}}}, {}, {}}, {{{"New", {}, {}}}, {}, {}});
  EXPECT_EQ(review.findings.at(0).id, metareview::FindingId("class/Own", metareview::EChange::kInserted));
  EXPECT_EQ(review.findings.at(1).id, metareview::FindingId("class/New", metareview::EChange::kDeleted));
}

TEST(CompareMetamodelsTest, OnlyTheKindsAskedForAreComparedInTheirOrder) {
  metareview::SMetamodels metamodels;
  metamodels.client = test::MakeMetamodel({{{"C", {}, {}}}, {{"L", {}, {}}}, {{"B", {}, {}}}});
  metamodels.original = test::MakeMetamodel({});
  const auto review = CompareMetamodels(metamodels, {EKind::kBehavior, EKind::kClass, EKind::kBehavior});
  EXPECT_THAT(review.elements, ElementsAre(EKind::kClass, EKind::kBehavior));
  EXPECT_THAT(test::Judgements(review),
              ElementsAre("class/C inserted class-inserted", "behavior/B inserted behavior-inserted"));
}

TEST(CompareMetamodelsTest, AnIdentityIsTakenWhicheverKindsAreCompared) {
  metareview::SMetamodels metamodels;
  metamodels.client = test::MakeMetamodel({{}, {{"Own", {}, {}, "", 7, "T_OWN"}}, {}});
  metamodels.original = test::MakeMetamodel({{{"New", {}, {}, "", 7, "T_NEW"}}, {}, {}});
  const auto review = CompareMetamodels(metamodels, {EKind::kClass});
  EXPECT_THAT(test::Judgements(review), ElementsAre("class/New deleted class-identity-taken"));
}

TEST(TakenTest, AClassHoldsBeforeALink) {
  const SModel client = {{{"Held", {}, {}, "", 8, "T_X"}}, {{"Own", {}, {}, "", 7, "T_X"}}, {}};
  const SModel original = {{{"New", {}, {}, "", 9, "T_X"}}, {}, {}};
  EXPECT_EQ(FindingAt(Review(client, original), "class/New").taken->by, "class/Held");
}

TEST(TakenTest, AnIdentifierOfZeroIsNone) {
  const SModel client = {{{"Own", {}, {}, "", 0, "T_X"}}, {}, {}};
  const SModel original = {{{"New", {}, {}, "", 0, "T_X"}}, {}, {}};
  const auto taken = FindingAt(Review(client, original), "class/New").taken;
  EXPECT_EQ(taken->tableName, "T_X");
  EXPECT_EQ(taken->classId, std::nullopt);
}

TEST(TakenTest, AnIdentifierOfOneIsHeld) {
  const SModel client = {{{"Own", {}, {}, "", 1, "T_OWN"}}, {}, {}};
  const SModel original = {{{"New", {}, {}, "", 1, "T_NEW"}}, {}, {}};
  const auto taken = FindingAt(Review(client, original), "class/New").taken;
  EXPECT_EQ(taken->classId, 1U);
  EXPECT_EQ(taken->tableName, std::nullopt);
}

TEST(CompareMetamodelsTest, AReviewIsCompleteAndKnowsNoPlaces) {
  const auto review = Review({}, {});
  EXPECT_TRUE(review.complete);
  EXPECT_EQ(review.problem, "");
  EXPECT_EQ(review.client + review.original + review.directory, "");
  EXPECT_FALSE(review.base || review.against || review.data);
}

}  // namespace
