#include "checkmeta2024/CheckLink2024Helper.h"

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

constexpr const char* kFile = "CheckLink2024Helper.cpp";
constexpr const char* kCheck = "CCheckLink2024Helper::CheckLink";

SClass Uses(const std::vector<SProperty>& properties) {
  return {"Uses", {}, properties};
}

SPairResult Compare(const SClass& client, const SClass& original) {
  return test::ComparePair<CCheckLink2024Helper>(*test::MakeLink(client), *test::MakeLink(original),
                                                 &CCheckLink2024Helper::CheckLink, &CCheckLink2024Helper::CheckLink);
}

TEST(CheckLink2024HelperTest, LinksWithTheSamePropertiesAgree) {
  ExpectNoDifference(
      Compare(Uses({Property("Quantity"), Property("Unit")}), Uses({Property("Unit"), Property("QUANTITY")})));
}

TEST(CheckLink2024HelperTest, NothingButPropertiesIsCompared) {
  ExpectNoDifference(Compare({"USES", {"Versioned"}, {Property("Unit")}, "Client's", 1, "T_CLIENT"},
                             {"Uses", {"Approvable"}, {Property("Unit")}, "Original's", 2, "T_ORIGINAL"}));
}

TEST(CheckLink2024HelperTest, AnInsertedPropertyStandsBeforeTheLinksElement) {
  const SPairResult result = Compare(Uses({Property("Unit"), Property("Quantity")}), Uses({Property("Unit")}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_EQ(result.entry->ToText(), R"json({
  "inserted_properties": [
    {
      "internal_name": "Quantity",
      "display_name": "Quantity (display)",
      "field": "F_Quantity",
      "type": "string",
      "length": 32,
      "default_value": "",
      "precision": 0,
      "max": "",
      "min": "",
      "lookup_internal_name": ""
    }
  ],
  "internal_name": "Uses",
  "display_name": "Uses (display)",
  "class_id": 7,
  "table_name": "T_Uses"
})json");
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(result.lines,
              ElementsAre(ErrorLine(kFile, kCheck, "link check HasInsertedProperties error.link:Uses<hr=0xA4520006>")));
}

TEST(CheckLink2024HelperTest, ADeletedPropertyAloneIsADifference) {
  const SPairResult result = Compare(Uses({}), Uses({Property("Unit")}));
  EXPECT_FALSE(result.entryPassed);
  EXPECT_THAT(test::Keys(*result.entry),
              ElementsAre("deleted_properties", "internal_name", "display_name", "class_id", "table_name"));
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(result.lines,
              ElementsAre(ErrorLine(kFile, kCheck, "link check HasDeletedProperties error.link:Uses<hr=0xA4520006>")));
}

TEST(CheckLink2024HelperTest, DeletedInsertedAndUpdatedPropertiesLogOneLineEachInThisOrder) {
  SProperty changed = Property("Unit");
  changed.defaultValue = "kg";
  const SPairResult result = Compare(Uses({changed, Property("New")}), Uses({Property("Old"), Property("Unit")}));
  EXPECT_THAT(test::Keys(*result.entry), ElementsAre("deleted_properties", "inserted_properties", "updated_properties",
                                                     "internal_name", "display_name", "class_id", "table_name"));
  EXPECT_THAT(test::Changes(*result.entry), ElementsAre("Unit.default_value:  > kg"));
  EXPECT_FALSE(result.logPassed);
  EXPECT_THAT(result.lines,
              ElementsAre(ErrorLine(kFile, kCheck, "link check HasDeletedProperties error.link:Uses<hr=0xA4520006>"),
                          ErrorLine(kFile, kCheck, "link check HasInsertedProperties error.link:Uses<hr=0xA4520006>"),
                          ErrorLine("CheckProperty2024Helper.cpp", "CCheckProperty2024Helper::CheckProperty",
                                    "property CheckDefaultValue error.property:Unit<hr=0xA4520003>"),
                          ErrorLine(kFile, kCheck, "link check HasUpdatedProperties error.link:Uses<hr=0xA4520006>")));
}

TEST(CheckLink2024HelperTest, TheElementAndTheLoggedNameAreTheClients) {
  const SPairResult result = Compare({"USES", {}, {}, "Client's", 1, "T_CLIENT"},
                                     {"Uses", {}, {Property("Unit")}, "Original's", 2, "T_ORIGINAL"});
  EXPECT_EQ(result.entry->GetStringValue("internal_name"), "USES");
  EXPECT_EQ(result.entry->GetStringValue("display_name"), "Client's");
  EXPECT_EQ(result.entry->GetStringValue("class_id"), "1");
  EXPECT_EQ(result.entry->GetStringValue("table_name"), "T_CLIENT");
  EXPECT_THAT(result.lines,
              ElementsAre(ErrorLine(kFile, kCheck, "link check HasDeletedProperties error.link:USES<hr=0xA4520006>")));
}

}  // namespace
