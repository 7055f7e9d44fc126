#include "checkmeta2024/CheckBehavior2024Helper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/Findings.h"
#include "checkmeta2024/LogLines.h"
#include "checkmeta2024/PairResult.h"
#include "support/MetaMaker.h"

namespace {

using test::ErrorLine;
using test::Property;
using test::SBehavior;
using test::SPairResult;
using test::SProperty;
using testing::ElementsAre;

constexpr const char* kFile = "CheckBehavior2024Helper.cpp";
constexpr const char* kCheck = "CCheckBehavior2024Helper::CheckBehavior";
constexpr const char* kCheckProperties = "CCheckBehavior2024Helper::CheckPropertiesOfBehavior";

SBehavior Versioned(const std::vector<std::string>& methods, const std::vector<SProperty>& properties = {}) {
  return {"Versioned", methods, properties};
}

SProperty Changed(const std::string& name) {
  SProperty property = Property(name);
  property.precision = 2;
  return property;
}

SPairResult Compare(const CMetaBehavior2024& client, const CMetaBehavior2024& original) {
  return test::ComparePair<CCheckBehavior2024Helper>(client, original, &CCheckBehavior2024Helper::CheckBehavior,
                                                     &CCheckBehavior2024Helper::CheckBehavior);
}

SPairResult Compare(const SBehavior& client, const SBehavior& original) {
  return Compare(*test::MakeBehavior(client), *test::MakeBehavior(original));
}

TEST(CheckBehavior2024HelperTest, BehaviorsWithTheSameMethodNamesAndPropertiesAgree) {
  const SBehavior versioned = Versioned({"Revise", "Restore"}, {Property("Version")});
  ExpectNoDifference(Compare(versioned, versioned));
  ExpectNoDifference(Compare(versioned, Versioned({"Restore", "Revise"}, {Property("Version")})));
}

TEST(CheckBehavior2024HelperTest, BehaviorsWithoutMethodsAndPropertiesAgree) {
  ExpectNoDifference(Compare(Versioned({}), Versioned({})));
}

TEST(CheckBehavior2024HelperTest, TheBehaviorsOwnNamesAreNotCompared) {
  ExpectNoDifference(Compare({"VERSIONED", {"Revise"}, {}, "Client's"}, {"Versioned", {"Revise"}, {}, "Original's"}));
}

TEST(CheckBehavior2024HelperTest, AMethodWhoseAttributesDifferIsNotReported) {
  const auto withMethod = [](const std::string& displayName) {
    SMetaBehaviorValues2024 values;
    values.internalName = "Versioned";
    values.methods = {std::make_shared<CMetaMethod2024>("Revise", displayName)};
    return std::make_shared<CMetaBehavior2024>(std::move(values));
  };
  ExpectNoDifference(Compare(*withMethod("Client's"), *withMethod("Original's")));
}

TEST(CheckBehavior2024HelperTest, MethodNamesThatDifferOnlyInCaseAreTheSame) {
  ExpectNoDifference(Compare(Versioned({"REVISE"}), Versioned({"Revise"})));
}

TEST(CheckBehavior2024HelperTest, AMethodThatTheClientLacksIsDeleted) {
  const SPairResult result = Compare(Versioned({"Revise"}), Versioned({"Revise", "Restore"}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_EQ(result.entry->ToText(), R"json({
  "internal_name": "Versioned",
  "display_name": "Versioned (display)",
  "deleted_methods": [
    {
      "internal_name": "Restore",
      "display_name": "Restore()"
    }
  ]
})json");
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(result.lines, ElementsAre(ErrorLine(kFile, kCheck,
                                                  "behavior check CheckMethodsOfBehavior error.behavior:Versioned"
                                                  "<hr=0xA4520004>")));
}

TEST(CheckBehavior2024HelperTest, AMethodThatTheOriginalLacksIsInserted) {
  const SPairResult result = Compare(Versioned({"Revise", "Restore"}), Versioned({"Revise"}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_EQ(result.entry->ToText(), R"json({
  "internal_name": "Versioned",
  "display_name": "Versioned (display)",
  "inserted_methods": [
    {
      "internal_name": "Restore",
      "display_name": "Restore()"
    }
  ]
})json");
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(result.lines, ElementsAre(ErrorLine(kFile, kCheck,
                                                  "behavior check CheckMethodsOfBehavior error.behavior:Versioned"
                                                  "<hr=0xA4520004>")));
}

TEST(CheckBehavior2024HelperTest, DeletedMethodsFollowTheOriginalsOrderAndInsertedOnesTheClients) {
  const SPairResult result = Compare(Versioned({"Z", "Same", "X", "Y"}), Versioned({"C", "A", "Same", "B"}));
  EXPECT_THAT(test::Keys(*result.entry),
              ElementsAre("internal_name", "display_name", "deleted_methods", "inserted_methods"));
  EXPECT_THAT(test::Names(*result.entry, "deleted_methods"), ElementsAre("C", "A", "B"));
  EXPECT_THAT(test::Names(*result.entry, "inserted_methods"), ElementsAre("Z", "X", "Y"));
}

TEST(CheckBehavior2024HelperTest, AMissingMethodThatStandsTwiceIsReportedTwice) {
  const SPairResult result = Compare(Versioned({"New", "New"}), Versioned({"Revise", "Revise"}));
  EXPECT_THAT(test::Names(*result.entry, "deleted_methods"), ElementsAre("Revise", "Revise"));
  EXPECT_THAT(test::Names(*result.entry, "inserted_methods"), ElementsAre("New", "New"));
}

TEST(CheckBehavior2024HelperTest, WhenMethodsAndPropertiesDifferTheElementStandsOnceAndFirst) {
  const SPairResult result = Compare(Versioned({"New"}, {Property("Code"), Changed("Version")}),
                                     Versioned({"Old"}, {Property("Version"), Property("Mass")}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_THAT(test::Keys(*result.entry),
              ElementsAre("internal_name", "display_name", "deleted_methods", "inserted_methods", "deleted_properties",
                          "inserted_properties", "updated_properties"));
}

TEST(CheckBehavior2024HelperTest, WhenOnlyPropertiesDifferTheElementFollowsThem) {
  const SPairResult result =
      Compare(Versioned({"Revise"}, {Changed("Version")}), Versioned({"Revise"}, {Property("Version")}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_THAT(test::Keys(*result.entry), ElementsAre("updated_properties", "internal_name", "display_name"));
  EXPECT_THAT(test::Changes(*result.entry), ElementsAre("Version.precision: 0 > 2"));
}

TEST(CheckBehavior2024HelperTest, TheElementAndTheLoggedNameAreTheClients) {
  const SPairResult result = Compare({"VERSIONED", {}, {}, "Client's"}, {"Versioned", {"Revise"}, {}, "Original's"});
  EXPECT_EQ(result.entry->GetStringValue("internal_name"), "VERSIONED");
  EXPECT_EQ(result.entry->GetStringValue("display_name"), "Client's");
  EXPECT_THAT(result.lines, ElementsAre(ErrorLine(kFile, kCheck,
                                                  "behavior check CheckMethodsOfBehavior error.behavior:VERSIONED"
                                                  "<hr=0xA4520004>")));
}

TEST(CheckBehavior2024HelperTest, AnUpdatedPropertyLogsThePropertyCheckThenTheBehaviorCheck) {
  const SPairResult result = Compare(Versioned({}, {Changed("Version")}), Versioned({}, {Property("Version")}));
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(
      result.lines,
      ElementsAre(
          ErrorLine("CheckProperty2024Helper.cpp", "CCheckProperty2024Helper::CheckProperty",
                    "property check CheckPrecision error.property:Version<hr=0xA4520003>"),
          ErrorLine(kFile, kCheckProperties, "class check HasUpdatedProperties error.class:Versioned<hr=0xA4520004>"),
          ErrorLine(kFile, kCheck,
                    "behavior check CheckPropertiesOfBehavior error.behavior:Versioned<hr=0xA4520004>")));
}

TEST(CheckBehavior2024HelperTest, EveryFailedCheckLogsItsLineInTheOrderOfTheChecks) {
  const SPairResult result = Compare(Versioned({"New"}, {Property("Code")}), Versioned({}, {Property("Version")}));
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(
      result.lines,
      ElementsAre(
          ErrorLine(kFile, kCheck, "behavior check CheckMethodsOfBehavior error.behavior:Versioned<hr=0xA4520004>"),
          ErrorLine(kFile, kCheckProperties, "class check HasDeletedProperties error.class:Versioned<hr=0xA4520004>"),
          ErrorLine(kFile, kCheckProperties, "class check HasInsertedProperties error.class:Versioned<hr=0xA4520004>"),
          ErrorLine(kFile, kCheck,
                    "behavior check CheckPropertiesOfBehavior error.behavior:Versioned<hr=0xA4520004>")));
}

}  // namespace
