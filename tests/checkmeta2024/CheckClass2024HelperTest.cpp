#include "checkmeta2024/CheckClass2024Helper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/Findings.h"
#include "checkmeta2024/LogLines.h"
#include "checkmeta2024/PairResult.h"
#include "support/MetaMaker.h"

namespace {

using test::ErrorLine;
using test::Property;
using test::SClass;
using test::SPairResult;
using test::SProperty;
using testing::ElementsAre;

constexpr const char* kFile = "CheckClass2024Helper.cpp";
constexpr const char* kCheck = "CCheckClass2024Helper::CheckClass";
constexpr const char* kCheckProperties = "CCheckClass2024Helper::CheckPropertiesOfClass";

SClass Part(const std::vector<std::string>& behaviors, const std::vector<SProperty>& properties = {}) {
  return {"Part", behaviors, properties};
}

SProperty Changed(const std::string& name) {
  SProperty property = Property(name);
  property.length = 64;
  return property;
}

SPairResult Compare(const SClass& client, const SClass& original) {
  return test::ComparePair<CCheckClass2024Helper>(*test::MakeClass(client), *test::MakeClass(original),
                                                  &CCheckClass2024Helper::CheckClass,
                                                  &CCheckClass2024Helper::CheckClass);
}

TEST(CheckClass2024HelperTest, ClassesWithTheSameBehaviorsAndPropertiesAgree) {
  const SClass part = Part({"Versioned", "Approvable"}, {Property("Code"), Property("Mass")});
  ExpectNoDifference(Compare(part, part));
}

TEST(CheckClass2024HelperTest, TheClassesOwnAttributesAreNotCompared) {
  ExpectNoDifference(Compare({"PART", {"Versioned"}, {Property("Code")}, "Client's", 1, "T_CLIENT"},
                             {"Part", {"Versioned"}, {Property("Code")}, "Original's", 2, "T_ORIGINAL"}));
}

TEST(CheckClass2024HelperTest, EmptyBehaviorListsAgree) {
  ExpectNoDifference(Compare(Part({}), Part({})));
}

TEST(CheckClass2024HelperTest, BehaviorNamesThatDifferOnlyInCaseAreTheSame) {
  ExpectNoDifference(Compare(Part({"Approve", "RELEASE"}), Part({"approve", "Release"})));
}

TEST(CheckClass2024HelperTest, TheOrderAndRepetitionOfBehaviorNamesDoNotMatter) {
  ExpectNoDifference(Compare(Part({"Release", "Approve"}), Part({"Approve", "Release", "approve"})));
}

TEST(CheckClass2024HelperTest, ABehaviorThatTheClientLacksIsDeletedInLowerCase) {
  const SPairResult result = Compare(Part({"Approve"}), Part({"Release", "Approve"}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_EQ(result.entry->ToText(), R"json({
  "internal_name": "Part",
  "display_name": "Part (display)",
  "class_id": 7,
  "table_name": "T_Part",
  "deleted_behaviors": [
    "release"
  ]
})json");
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(result.lines, ElementsAre(ErrorLine(
                                kFile, kCheck, "class check CheckBehaviorsOfClass error.class:Part<hr=0xA4520005>")));
}

TEST(CheckClass2024HelperTest, ABehaviorThatTheOriginalLacksIsInsertedInLowerCase) {
  const SPairResult result = Compare(Part({"Approve", "ReLease"}), Part({"Approve"}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_EQ(result.entry->ToText(), R"json({
  "internal_name": "Part",
  "display_name": "Part (display)",
  "class_id": 7,
  "table_name": "T_Part",
  "inserted_behaviors": [
    "release"
  ]
})json");
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(result.lines, ElementsAre(ErrorLine(
                                kFile, kCheck, "class check CheckBehaviorsOfClass error.class:Part<hr=0xA4520005>")));
}

TEST(CheckClass2024HelperTest, DeletedBehaviorsFollowTheOriginalsOrderAndInsertedOnesTheClients) {
  const SPairResult result = Compare(Part({"Z", "Same", "Y", "X"}), Part({"C", "A", "same", "B"}));
  EXPECT_EQ(result.entry->ToText(), R"json({
  "internal_name": "Part",
  "display_name": "Part (display)",
  "class_id": 7,
  "table_name": "T_Part",
  "deleted_behaviors": [
    "c",
    "a",
    "b"
  ],
  "inserted_behaviors": [
    "z",
    "y",
    "x"
  ]
})json");
}

TEST(CheckClass2024HelperTest, AMissingNameThatStandsTwiceInAnySpellingIsReportedTwice) {
  const SPairResult result = Compare(Part({"New", "NEW"}), Part({"Release", "release"}));
  EXPECT_THAT(result.entry->GetStringArrayValue("deleted_behaviors"), ElementsAre("release", "release"));
  EXPECT_THAT(result.entry->GetStringArrayValue("inserted_behaviors"), ElementsAre("new", "new"));
}

TEST(CheckClass2024HelperTest, WhenOnlyAPropertyDiffersTheElementFollowsThePropertyFindings) {
  const SPairResult result = Compare(Part({"Approve"}, {Property("Code"), Changed("Mass")}),
                                     Part({"Approve"}, {Property("Old"), Property("Mass")}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_THAT(test::Keys(*result.entry), ElementsAre("deleted_properties", "inserted_properties", "updated_properties",
                                                     "internal_name", "display_name", "class_id", "table_name"));
  EXPECT_THAT(test::Names(*result.entry, "deleted_properties"), ElementsAre("Old"));
  EXPECT_THAT(test::Names(*result.entry, "inserted_properties"), ElementsAre("Code"));
  EXPECT_THAT(test::Changes(*result.entry), ElementsAre("Mass.length: 32 > 64"));
}

TEST(CheckClass2024HelperTest, WhenBehaviorsDifferTooTheElementStandsOnceAndFirst) {
  const SPairResult result = Compare(Part({"New"}, {Property("Code")}), Part({"Old"}, {}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_THAT(test::Keys(*result.entry), ElementsAre("internal_name", "display_name", "class_id", "table_name",
                                                     "deleted_behaviors", "inserted_behaviors", "inserted_properties"));
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(
      result.lines,
      ElementsAre(
          ErrorLine(kFile, kCheck, "class check CheckBehaviorsOfClass error.class:Part<hr=0xA4520005>"),
          ErrorLine(kFile, kCheckProperties, "class check HasInsertedProperties error.class:Part<hr=0xA4520005>"),
          ErrorLine(kFile, kCheck, "class check CheckPropertiesOfClass error.class:Part<hr=0xA4520005>")));
}

TEST(CheckClass2024HelperTest, TheElementIsTheClients) {
  const SPairResult result =
      Compare({"PART", {"New"}, {}, "Client's", 1, "T_CLIENT"}, {"Part", {}, {}, "Original's", 2, "T_ORIGINAL"});
  EXPECT_EQ(result.entry->ToText(), R"({
  "internal_name": "PART",
  "display_name": "Client's",
  "class_id": 1,
  "table_name": "T_CLIENT",
  "inserted_behaviors": [
    "new"
  ]
})");
  EXPECT_THAT(result.lines, ElementsAre(ErrorLine(
                                kFile, kCheck, "class check CheckBehaviorsOfClass error.class:PART<hr=0xA4520005>")));
}

TEST(CheckClass2024HelperTest, ADeletedPropertyLogsThePropertyCheckThenTheClassCheck) {
  const SPairResult result = Compare(Part({}), Part({}, {Property("Code")}));
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(
      result.lines,
      ElementsAre(
          ErrorLine(kFile, kCheckProperties, "class check HasDeletedProperties error.class:Part<hr=0xA4520005>"),
          ErrorLine(kFile, kCheck, "class check CheckPropertiesOfClass error.class:Part<hr=0xA4520005>")));
}

TEST(CheckClass2024HelperTest, DeletedInsertedAndUpdatedPropertiesLogOneLineEachInThisOrder) {
  const SPairResult result =
      Compare(Part({}, {Property("New"), Changed("Mass")}), Part({}, {Property("Mass"), Property("Old")}));
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(
      result.lines,
      ElementsAre(
          ErrorLine(kFile, kCheckProperties, "class check HasDeletedProperties error.class:Part<hr=0xA4520005>"),
          ErrorLine(kFile, kCheckProperties, "class check HasInsertedProperties error.class:Part<hr=0xA4520005>"),
          ErrorLine("CheckProperty2024Helper.cpp", "CCheckProperty2024Helper::CheckProperty",
                    "property check CheckPropertyLength error.property:Mass<hr=0xA4520003>"),
          ErrorLine(kFile, kCheckProperties, "class check HasUpdatedProperties error.class:Part<hr=0xA4520005>"),
          ErrorLine(kFile, kCheck, "class check CheckPropertiesOfClass error.class:Part<hr=0xA4520005>")));
}

TEST(CheckClass2024HelperTest, ASecondEntryOfTheSameHelperGetsNoElement) {
  const auto client = test::MakeClass(Part({}));
  const auto original = test::MakeClass(Part({"Release"}));
  CCheckClass2024Helper helper(*client, *original);
  auto first = std::make_shared<CJsonObject>();
  auto second = std::make_shared<CJsonObject>();
  EXPECT_FALSE(helper.CheckClass(first));
  EXPECT_FALSE(helper.CheckClass(second));
  EXPECT_THAT(test::Keys(*first),
              ElementsAre("internal_name", "display_name", "class_id", "table_name", "deleted_behaviors"));
  EXPECT_THAT(test::Keys(*second), ElementsAre("deleted_behaviors"));
}

}  // namespace
