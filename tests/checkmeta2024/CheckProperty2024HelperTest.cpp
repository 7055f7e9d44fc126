#include "checkmeta2024/CheckProperty2024Helper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/Findings.h"
#include "checkmeta2024/LogLines.h"
#include "support/MetaMaker.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace {

using test::ErrorLine;
using test::Property;
using test::SProperty;
using testing::ElementsAre;
using testing::IsEmpty;

using EntryList = std::list<std::shared_ptr<CJsonObject>>;

constexpr const char* kFile = "CheckProperty2024Helper.cpp";
constexpr const char* kFunction = "CCheckProperty2024Helper::CheckProperty";

/// The "updated_field" of each entry.
std::vector<std::string> Fields(const EntryList& entries) {
  std::vector<std::string> fields;
  for (const auto& entry : entries) {
    fields.push_back(entry->GetStringValue("updated_field"));
  }
  return fields;
}

struct SComparison {
  bool jsonPassed;
  std::vector<std::string> fields;
  bool logPassed;
  std::vector<std::string> messages;
};

/// Both operations on one pair, each with a helper of its own.
SComparison Compare(const SProperty& client, const SProperty& original) {
  const auto clientProperty = test::Make(client);
  const auto originalProperty = test::Make(original);
  SComparison result;
  const test::CLogCapture log;
  EntryList entries;
  result.jsonPassed = CCheckProperty2024Helper(*clientProperty, *originalProperty).CheckProperty(entries);
  EXPECT_THAT(log.Lines(), IsEmpty()) << "the operation with a list logs nothing";
  result.logPassed = CCheckProperty2024Helper(*clientProperty, *originalProperty).CheckProperty();
  result.fields = Fields(entries);
  for (const test::SLogLine& line : log.Lines()) {
    EXPECT_THAT(line, ErrorLine(kFile, kFunction, line.message));
  }
  result.messages = log.Messages();
  return result;
}

void ExpectNoDifference(const SProperty& client, const SProperty& original) {
  const SComparison found = Compare(client, original);
  EXPECT_TRUE(found.jsonPassed);
  EXPECT_THAT(found.fields, IsEmpty());
  EXPECT_TRUE(found.logPassed);
  EXPECT_THAT(found.messages, IsEmpty());
}

/// Two properties of a name with the same attributes everywhere but where `change` changes the client's.
template <typename Change>
SComparison CompareChanged(const Change& change) {
  SProperty client = Property("Code");
  change(client);
  return Compare(client, Property("Code"));
}

struct SAttribute {
  const char* field;
  void (*change)(SProperty&);
  const char* message;
};

void PrintTo(const SAttribute& attribute, std::ostream* output) {
  *output << attribute.field;
}

class CheckProperty2024HelperAttributeTest : public testing::TestWithParam<SAttribute> {};

TEST_P(CheckProperty2024HelperAttributeTest, ADifferenceGivesOneEntryAndOneLogLine) {
  const SComparison found = CompareChanged(GetParam().change);
  EXPECT_FALSE(found.jsonPassed);
  EXPECT_THAT(found.fields, ElementsAre(GetParam().field));
  EXPECT_FALSE(found.logPassed);
  EXPECT_THAT(found.messages, ElementsAre(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    AllSix, CheckProperty2024HelperAttributeTest,
    testing::Values(SAttribute{"type", [](SProperty& p) { p.type = "int64"; },
                               "property check CheckPropertyType error.property:Code<hr=0xA4520003>"},
                    SAttribute{"length", [](SProperty& p) { p.length = 33; },
                               "property check CheckPropertyLength error.property:Code<hr=0xA4520003>"},
                    SAttribute{"precision", [](SProperty& p) { p.precision = 1; },
                               "property check CheckPrecision error.property:Code<hr=0xA4520003>"},
                    SAttribute{"max", [](SProperty& p) { p.max = "9"; },
                               "property CheckMaxMinValue error.property:Code<hr=0xA4520003>"},
                    SAttribute{"min", [](SProperty& p) { p.min = "9"; },
                               "property CheckMaxMinValue error.property:Code<hr=0xA4520003>"},
                    SAttribute{"default_value", [](SProperty& p) { p.defaultValue = "9"; },
                               "property CheckDefaultValue error.property:Code<hr=0xA4520003>"}),
    [](const auto& row) { return std::string(row.param.field); });

TEST(CheckProperty2024HelperTest, PropertiesThatDifferOnlyInDisplayNameFieldOrLookupClassAgree) {
  SProperty client = Property("Code");
  client.displayName = "another";
  client.field = "F_OTHER";
  client.lookupClass = "Unit";
  ExpectNoDifference(client, Property("Code"));
}

TEST(CheckProperty2024HelperTest, TheInternalNameIsNotCompared) {
  SProperty client = Property("Code");
  client.internalName = "CODE";
  ExpectNoDifference(client, Property("Code"));
}

TEST(CheckProperty2024HelperTest, AnEntryHoldsTheFieldAndBothPropertiesInThisOrder) {
  const auto client = test::Make({"CODE", "Client's", "F_CLIENT", "int32", 4, "1", 2, "9", "0", "Unit"});
  const auto original = test::Make({"Code", "Original's", "F_ORIGINAL", "int64", 4, "1", 2, "9", "0", ""});
  EntryList entries;
  EXPECT_FALSE(CCheckProperty2024Helper(*client, *original).CheckProperty(entries));
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries.front()->ToText(), R"({
  "updated_field": "type",
  "client_property": {
    "internal_name": "CODE",
    "display_name": "Client's",
    "field": "F_CLIENT",
    "type": "int32",
    "length": 4,
    "default_value": "1",
    "precision": 2,
    "max": "9",
    "min": "0",
    "lookup_internal_name": "Unit"
  },
  "original_property": {
    "internal_name": "Code",
    "display_name": "Original's",
    "field": "F_ORIGINAL",
    "type": "int64",
    "length": 4,
    "default_value": "1",
    "precision": 2,
    "max": "9",
    "min": "0",
    "lookup_internal_name": ""
  }
})");
}

TEST(CheckProperty2024HelperTest, ALogLineNamesItsPlaceAndTheClientsSpellingOfTheName) {
  SProperty client = Property("CODE");
  client.type = "int32";
  const auto clientProperty = test::Make(client);
  const auto originalProperty = test::Make(Property("Code"));
  const test::CLogCapture log;
  EXPECT_FALSE(CCheckProperty2024Helper(*clientProperty, *originalProperty).CheckProperty());
  EXPECT_THAT(
      log.Lines(),
      ElementsAre(ErrorLine(kFile, kFunction, "property check CheckPropertyType error.property:CODE<hr=0xA4520003>")));
}

TEST(CheckProperty2024HelperTest, AllDifferencesAreReportedInTheFixedOrder) {
  const SComparison found = CompareChanged([](SProperty& p) {
    p.defaultValue = "1";
    p.min = "2";
    p.max = "3";
    p.precision = 4;
    p.length = 5;
    p.type = "int32";
  });
  EXPECT_FALSE(found.jsonPassed);
  EXPECT_THAT(found.fields, ElementsAre("type", "length", "precision", "max", "min", "default_value"));
  EXPECT_FALSE(found.logPassed);
  EXPECT_THAT(found.messages, ElementsAre("property check CheckPropertyType error.property:Code<hr=0xA4520003>",
                                          "property check CheckPropertyLength error.property:Code<hr=0xA4520003>",
                                          "property check CheckPrecision error.property:Code<hr=0xA4520003>",
                                          "property CheckMaxMinValue error.property:Code<hr=0xA4520003>",
                                          "property CheckDefaultValue error.property:Code<hr=0xA4520003>"));
}

TEST(CheckProperty2024HelperTest, TypeLengthAndDefaultValueGiveThreeEntriesWithTheSameProperties) {
  SProperty changed = Property("Code");
  changed.type = "text";
  changed.length = 0;
  changed.defaultValue = "x";
  const auto client = test::Make(changed);
  const auto original = test::Make(Property("Code"));
  EntryList entries;
  EXPECT_FALSE(CCheckProperty2024Helper(*client, *original).CheckProperty(entries));
  EXPECT_THAT(Fields(entries), ElementsAre("type", "length", "default_value"));
  for (const auto& entry : entries) {
    for (const char* side : {"client_property", "original_property"}) {
      EXPECT_EQ(entry->GetObjectValue(side)->ToText(), entries.front()->GetObjectValue(side)->ToText());
    }
  }
}

TEST(CheckProperty2024HelperTest, MaximumAndMinimumAreTwoEntriesButOneLogLine) {
  const SComparison found = CompareChanged([](SProperty& p) {
    p.max = "10";
    p.min = "1";
  });
  EXPECT_THAT(found.fields, ElementsAre("max", "min"));
  EXPECT_THAT(found.messages, ElementsAre("property CheckMaxMinValue error.property:Code<hr=0xA4520003>"));
}

TEST(CheckProperty2024HelperTest, TextsAreComparedByteByByte) {
  EXPECT_THAT(CompareChanged([](SProperty& p) { p.type = "String"; }).fields, ElementsAre("type"));
  EXPECT_THAT(CompareChanged([](SProperty& p) { p.defaultValue = " "; }).fields, ElementsAre("default_value"));
  EXPECT_THAT(CompareChanged([](SProperty& p) { p.max = "0"; }).fields, ElementsAre("max"));
  SProperty ten = Property("Mass");
  ten.max = "10";
  ten.min = "-1";
  ten.defaultValue = "a";
  SProperty tenPointZero = ten;
  tenPointZero.max = "10.0";
  tenPointZero.min = "-01";
  tenPointZero.defaultValue = "A";
  EXPECT_THAT(Compare(ten, tenPointZero).fields, ElementsAre("max", "min", "default_value"));
}

TEST(CheckProperty2024HelperTest, PrecisionTwoAgainstThreeIsOnePrecisionEntry) {
  SProperty client = Property("Mass");
  client.precision = 2;
  SProperty original = client;
  original.precision = 3;
  EXPECT_THAT(Compare(client, original).fields, ElementsAre("precision"));
}

TEST(CheckProperty2024HelperTest, LengthZeroAgainstTheLargestIsOneLengthEntry) {
  SProperty client = Property("Code");
  client.length = 0;
  SProperty original = client;
  original.length = 4294967295;
  EXPECT_THAT(Compare(client, original).fields, ElementsAre("length"));
  EXPECT_THAT(Compare(original, client).fields, ElementsAre("length"));
}

TEST(CheckProperty2024HelperTest, NewEntriesGoAfterThoseThatTheListHolds) {
  SProperty changed = Property("Code");
  changed.length = 1;
  const auto client = test::Make(changed);
  const auto original = test::Make(Property("Code"));
  const auto earlier = std::make_shared<CJsonObject>();
  EntryList entries = {earlier};
  CCheckProperty2024Helper helper(*client, *original);
  EXPECT_FALSE(helper.CheckProperty(entries));
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries.front(), earlier);
  EXPECT_EQ(earlier->ToText(), "{}");
  EXPECT_EQ(entries.back()->GetStringValue("updated_field"), "length");
}

/// A property that a test changes while a helper refers to it, to see what the helper serializes anew.
class CheckProperty2024HelperCacheTest : public testing::Test {
 protected:
  static SProperty Named(const std::string& displayName, std::uint32_t length) {
    SProperty property = Property("Code");
    property.displayName = displayName;
    property.length = length;
    return property;
  }

  /// The display names of both sides in the entries that one more check gives.
  static std::vector<std::string> DisplayNames(CCheckProperty2024Helper& helper) {
    EntryList entries;
    EXPECT_FALSE(helper.CheckProperty(entries));
    std::vector<std::string> names;
    for (const auto& entry : entries) {
      names.push_back(entry->GetObjectValue("client_property")->GetStringValue("display_name"));
      names.push_back(entry->GetObjectValue("original_property")->GetStringValue("display_name"));
    }
    return names;
  }

  void ChangeBoth() {
    client_ = *laterClient_;
    original_ = *laterOriginal_;
  }

  const std::shared_ptr<CMetaProperty2024> firstClient_ = test::Make(Named("first client", 1));
  const std::shared_ptr<CMetaProperty2024> firstOriginal_ = test::Make(Named("first original", 2));
  const std::shared_ptr<CMetaProperty2024> laterClient_ = test::Make(Named("later client", 3));
  const std::shared_ptr<CMetaProperty2024> laterOriginal_ = test::Make(Named("later original", 4));
  CMetaProperty2024 client_ = *firstClient_;
  CMetaProperty2024 original_ = *firstOriginal_;
};

TEST_F(CheckProperty2024HelperCacheTest, AHelperSerializesEachPropertyOnce) {
  CCheckProperty2024Helper helper(client_, original_);
  EXPECT_THAT(DisplayNames(helper), ElementsAre("first client", "first original"));
  ChangeBoth();
  EXPECT_THAT(DisplayNames(helper), ElementsAre("first client", "first original"));
}

TEST_F(CheckProperty2024HelperCacheTest, NothingIsSerializedBeforeTheFirstDifferenceIsReported) {
  original_ = client_;
  CCheckProperty2024Helper helper(client_, original_);
  EntryList entries;
  EXPECT_TRUE(helper.CheckProperty(entries));
  EXPECT_THAT(entries, IsEmpty());
  ChangeBoth();
  EXPECT_THAT(DisplayNames(helper), ElementsAre("later client", "later original"));
}

TEST_F(CheckProperty2024HelperCacheTest, TheLoggingOperationSerializesNothing) {
  const test::CLogCapture log;
  CCheckProperty2024Helper helper(client_, original_);
  EXPECT_FALSE(helper.CheckProperty());
  ChangeBoth();
  EXPECT_THAT(DisplayNames(helper), ElementsAre("later client", "later original"));
}

TEST_F(CheckProperty2024HelperCacheTest, ACopySharesWhatHasBeenSerialized) {
  CCheckProperty2024Helper helper(client_, original_);
  DisplayNames(helper);
  CCheckProperty2024Helper copy(helper);
  ChangeBoth();
  EXPECT_THAT(DisplayNames(copy), ElementsAre("first client", "first original"));
}

TEST_F(CheckProperty2024HelperCacheTest, ACopyOfAFreshHelperSerializesForItself) {
  CCheckProperty2024Helper helper(client_, original_);
  CCheckProperty2024Helper copy(helper);
  DisplayNames(helper);
  ChangeBoth();
  EXPECT_THAT(DisplayNames(copy), ElementsAre("later client", "later original"));
}

}  // namespace
