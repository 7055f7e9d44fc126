#include "checkmeta2024/Meta2024ToJsonConverter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/Findings.h"
#include "checkmeta2024/PropertyTypes.h"
#include "support/MetaMaker.h"

namespace {

using test::Json;
using test::Keys;
using testing::ElementsAre;

const test::SClass kPart = {"Part", {"Versioned"}, {test::Property("Code")}, "A part", 1001, "T_PART"};

std::string ClassText(const test::SClass& values, std::shared_ptr<CJsonObject> target = nullptr) {
  CMeta2024ToJsonConverter::ConversionClass2024ToJson(*test::MakeClass(values), target);
  return target->ToText();
}

std::string PropertyText(const test::SProperty& values) {
  std::shared_ptr<CJsonObject> target;
  CMeta2024ToJsonConverter::ConversionProperty2024ToJson(*test::Make(values), target);
  return target->ToText();
}

TEST(Meta2024ToJsonConverterTest, AClassIsWrittenAsItsFourMembersInOrder) {
  EXPECT_EQ(ClassText(kPart), R"({
  "internal_name": "Part",
  "display_name": "A part",
  "class_id": 1001,
  "table_name": "T_PART"
})");
}

TEST(Meta2024ToJsonConverterTest, ALinkIsWrittenAsAClassIs) {
  std::shared_ptr<CJsonObject> target;
  CMeta2024ToJsonConverter::ConversionLink2024ToJson(
      *test::MakeLink({"Uses", {"Versioned"}, {test::Property("Code")}, "Part uses part", 4294967295, "T_USES"}),
      target);
  EXPECT_EQ(target->ToText(), R"({
  "internal_name": "Uses",
  "display_name": "Part uses part",
  "class_id": 4294967295,
  "table_name": "T_USES"
})");
}

TEST(Meta2024ToJsonConverterTest, ABehaviorIsWrittenAsItsTwoNames) {
  std::shared_ptr<CJsonObject> target;
  CMeta2024ToJsonConverter::ConversionBehavior2024ToJson(
      *test::MakeBehavior({"Versioned", {"Revise"}, {test::Property("Version")}, "With versions"}), target);
  EXPECT_EQ(target->ToText(), R"({
  "internal_name": "Versioned",
  "display_name": "With versions"
})");
}

TEST(Meta2024ToJsonConverterTest, AMethodIsWrittenAsItsTwoNames) {
  std::shared_ptr<CJsonObject> target;
  CMeta2024ToJsonConverter::ConversionMethod2024ToJson(CMetaMethod2024("Revise", "Make a new version"), target);
  EXPECT_EQ(target->ToText(), R"({
  "internal_name": "Revise",
  "display_name": "Make a new version"
})");
}

TEST(Meta2024ToJsonConverterTest, APropertyIsWrittenAsItsTenMembersInOrder) {
  EXPECT_EQ(PropertyText({"Mass", "Net mass", "F_MASS", "float64", 8, "1.5", 3, "1e6", "-0", "Unit"}), R"({
  "internal_name": "Mass",
  "display_name": "Net mass",
  "field": "F_MASS",
  "type": "float64",
  "length": 8,
  "default_value": "1.5",
  "precision": 3,
  "max": "1e6",
  "min": "-0",
  "lookup_internal_name": "Unit"
})");
}

TEST(Meta2024ToJsonConverterTest, ABooleanPropertyHasAllTenMembersAndUnsetTextsAreEmptyStrings) {
  EXPECT_EQ(PropertyText({"Active", "", "", "boolean", 0, "", 0, "", "", ""}), R"({
  "internal_name": "Active",
  "display_name": "",
  "field": "",
  "type": "boolean",
  "length": 0,
  "default_value": "",
  "precision": 0,
  "max": "",
  "min": "",
  "lookup_internal_name": ""
})");
}

TEST(Meta2024ToJsonConverterTest, TheLargestLengthAndPrecisionAreNumbers) {
  test::SProperty property = test::Property("Code");
  property.length = 4294967295;
  property.precision = 65535;
  const std::string text = PropertyText(property);
  EXPECT_THAT(text, testing::HasSubstr("\n  \"length\": 4294967295,\n"));
  EXPECT_THAT(text, testing::HasSubstr("\n  \"precision\": 65535,\n"));
}

TEST(Meta2024ToJsonConverterTest, PropertiesOfEveryTypeHaveTheSameMembers) {
  for (const std::string_view type : checkmeta::kPropertyTypes) {
    test::SProperty property = test::Property("Code");
    property.type = type;
    const auto json = Json(PropertyText(property));
    EXPECT_THAT(Keys(*json), ElementsAre("internal_name", "display_name", "field", "type", "length", "default_value",
                                         "precision", "max", "min", "lookup_internal_name"));
    EXPECT_EQ(json->GetStringValue("type"), type);
  }
}

TEST(Meta2024ToJsonConverterTest, ThereAreTwentySevenPropertyTypes) {
  EXPECT_THAT(checkmeta::kPropertyTypes,
              ElementsAre("binary", "boolean", "cascading_property", "classification_property", "date", "datetime",
                          "e-mail", "float32", "float64", "ip_address", "int16", "int32", "int64", "int8",
                          "meta_internal_name", "json_object", "json_array", "lookup", "money", "primary_key",
                          "password", "picture", "reference_object_array", "string", "text", "time", "url"));
}

TEST(Meta2024ToJsonConverterTest, TextsAreWrittenAsTheyStand) {
  const auto json = Json(ClassText({" Part\t", {}, {}, "\"零件\"\n", 1, "t_Part "}));
  EXPECT_EQ(json->GetStringValue("internal_name"), " Part\t");
  EXPECT_EQ(json->GetStringValue("display_name"), "\"零件\"\n");
  EXPECT_EQ(json->GetStringValue("table_name"), "t_Part ");
}

TEST(Meta2024ToJsonConverterTest, ATargetThatHoldsFindingsKeepsThemBeforeTheClassMembers) {
  EXPECT_EQ(ClassText(kPart, Json(R"({"deleted_properties": [{"internal_name": "Code"}]})")), R"({
  "deleted_properties": [
    {
      "internal_name": "Code"
    }
  ],
  "internal_name": "Part",
  "display_name": "A part",
  "class_id": 1001,
  "table_name": "T_PART"
})");
}

TEST(Meta2024ToJsonConverterTest, AGivenTargetStaysTheSameObject) {
  const auto given = std::make_shared<CJsonObject>();
  auto target = given;
  CMeta2024ToJsonConverter::ConversionMethod2024ToJson(CMetaMethod2024("Revise", ""), target);
  EXPECT_EQ(target, given);
  EXPECT_EQ(given->GetStringValue("internal_name"), "Revise");
}

TEST(Meta2024ToJsonConverterTest, AnEmptyTargetPointerGetsANewObjectWithExactlyTheMembersOfTheKind) {
  std::shared_ptr<CJsonObject> link;
  CMeta2024ToJsonConverter::ConversionLink2024ToJson(*test::MakeLink(kPart), link);
  ASSERT_NE(link, nullptr);
  EXPECT_THAT(Keys(*link), ElementsAre("internal_name", "display_name", "class_id", "table_name"));
  std::shared_ptr<CJsonObject> behavior;
  CMeta2024ToJsonConverter::ConversionBehavior2024ToJson(*test::MakeBehavior({"Versioned", {}, {}}), behavior);
  ASSERT_NE(behavior, nullptr);
  EXPECT_THAT(Keys(*behavior), ElementsAre("internal_name", "display_name"));
}

}  // namespace
