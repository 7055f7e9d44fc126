#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>
#include <string>
#include <utility>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"

namespace {

using namespace std::string_literals;
using test::ErrorOf;
using test::Json;
using test::Missing;
using test::WrongType;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(JsonObjectGetterTest, GetAllKeyGivesTheNamesInDocumentOrder) {
  std::list<std::string> keys = {"what was here before"};
  Json(R"({"b": 1, "a": 2, "": 3, "B": 4})")->GetAllKey(keys);
  EXPECT_THAT(keys, ElementsAre("b", "a", "", "B"));
}

TEST(JsonObjectGetterTest, GetAllKeyOfAnEmptyObjectIsEmpty) {
  std::list<std::string> keys = {"what was here before"};
  CJsonObject().GetAllKey(keys);
  EXPECT_THAT(keys, IsEmpty());
}

TEST(JsonObjectGetterTest, HasMemberSeesEveryMemberAndNoOther) {
  const auto object = Json(test::kEveryType);
  for (const char* key : {"string", "empty", "null", "false", "object", "array"}) {
    EXPECT_TRUE(object->HasMember(key)) << key;
  }
  for (const char* key : {"absent", "String", "strin", "string ", ""}) {
    EXPECT_FALSE(object->HasMember(key)) << key;
  }
}

TEST(JsonObjectGetterTest, GetStringValueGivesTheString) {
  const auto object = Json(test::kEveryType);
  EXPECT_EQ(object->GetStringValue("string"), "text");
  EXPECT_EQ(object->GetStringValue("empty"), "");
}

TEST(JsonObjectGetterTest, GetStringValueGivesEveryByteOfTheString) {
  const auto object = Json(R"({"a": "x\u0000y", "b": "零件 \ud83d\ude00 \"\\\/\b\f\n\r\t"})");
  EXPECT_EQ(object->GetStringValue("a"), "x\0y"s);
  EXPECT_EQ(object->GetStringValue("b"), "零件 \U0001F600 \"\\/\b\f\n\r\t");
}

TEST(JsonObjectGetterTest, KeyWithANulByteIsFoundAsAWhole) {
  const auto object = Json(R"({"a\u0000b": "1", "a": "2"})");
  EXPECT_EQ(object->GetStringValue("a\0b"s), "1");
  EXPECT_EQ(object->GetStringValue("a"), "2");
  EXPECT_FALSE(object->HasMember("a\0c"s));
}

TEST(JsonObjectGetterTest, GetStringValueGivesNumbersAsDecimalText) {
  const std::pair<const char*, const char*> numbers[] = {
      {"0", "0"},
      {"7", "7"},
      {"-5", "-5"},
      {"2147483648", "2147483648"},
      {"4294967295", "4294967295"},
      {"4294967296", "4294967296"},
      {"-2147483649", "-2147483649"},
      {"9223372036854775807", "9223372036854775807"},
      {"-9223372036854775808", "-9223372036854775808"},
      {"18446744073709551615", "18446744073709551615"},
      {"1.5", "1.5"},
      {"-0.25", "-0.25"},
      {"0.1", "0.1"},
      {"123456.789", "123456.789"},
      {"3.141592653589793", "3.141592653589793"},
      {"1.7976931348623157e308", "1.7976931348623157e308"},
      {"1e-400", "0.0"},
      {"1.00000000000e-2147483639", "0.0"},
  };
  for (const auto& [number, text] : numbers) {
    const auto object = Json("{\"n\": "s + number + "}");
    EXPECT_EQ(object->GetStringValue("n"), text);
    EXPECT_THAT(object->GetPropertyStringValue("n"), Pair(true, text));
  }
}

TEST(JsonObjectGetterTest, GetStringValueThrowsForAMissingMember) {
  const auto object = Json(test::kEveryType);
  EXPECT_EQ(ErrorOf([&] { object->GetStringValue("absent"); }), Missing("absent"));
  EXPECT_EQ(ErrorOf([&] { object->GetStringValue(""); }), Missing(""));
  EXPECT_EQ(ErrorOf([&] { object->GetStringValue("String"); }), Missing("String"));
}

TEST(JsonObjectGetterTest, GetStringValueThrowsForEveryOtherType) {
  const auto object = Json(test::kEveryType);
  for (const char* key : {"null", "true", "false", "object", "array", "strings"}) {
    EXPECT_EQ(ErrorOf([&] { object->GetStringValue(key); }), WrongType(key, "String"));
  }
}

TEST(JsonObjectGetterTest, GetPropertyStringValueGivesTheString) {
  const auto object = Json(test::kEveryType);
  EXPECT_THAT(object->GetPropertyStringValue("string"), Pair(true, "text"));
  EXPECT_THAT(object->GetPropertyStringValue("empty"), Pair(true, ""));
  EXPECT_EQ(object->GetLastError(), 0U);
}

TEST(JsonObjectGetterTest, GetPropertyStringValueRecordsAMissingMember) {
  for (const char* key : {"absent", "null"}) {
    const auto object = Json(test::kEveryType);
    EXPECT_THAT(object->GetPropertyStringValue(key), Pair(false, "")) << key;
    EXPECT_EQ(object->GetLastError(), 0xA4C0003EU) << key;
  }
}

TEST(JsonObjectGetterTest, GetPropertyStringValueRecordsEveryOtherType) {
  for (const char* key : {"true", "false", "object", "array", "strings"}) {
    const auto object = Json(test::kEveryType);
    EXPECT_THAT(object->GetPropertyStringValue(key), Pair(false, "")) << key;
    EXPECT_EQ(object->GetLastError(), 0xA4C00004U) << key;
  }
}

TEST(JsonObjectGetterTest, GetStringArrayValueGivesTheItemsInOrder) {
  const auto object = Json(test::kEveryType);
  EXPECT_THAT(object->GetStringArrayValue("strings"), ElementsAre("b", "a", "b"));
  EXPECT_THAT(object->GetStringArrayValue("array"), IsEmpty());
  EXPECT_THAT(Json(R"({"a": ["x\u0000y", ""]})")->GetStringArrayValue("a"), ElementsAre("x\0y"s, ""));
}

TEST(JsonObjectGetterTest, GetStringArrayValueThrowsForAMissingMember) {
  EXPECT_EQ(ErrorOf([] { CJsonObject().GetStringArrayValue("execute_elements"); }), Missing("execute_elements"));
}

// Items of another type, numbers among them, make the array one of another type.
constexpr const char* kNotStringArrays[] = {
    "string",  "empty",   "true",           "number",           "object",
    "numbers", "objects", "nested strings", "strings and null", "strings and number"};

TEST(JsonObjectGetterTest, GetStringArrayValueThrowsForEveryOtherType) {
  const auto object = Json(test::kEveryType);
  EXPECT_EQ(ErrorOf([&] { object->GetStringArrayValue("null"); }), WrongType("null", "Array String"));
  for (const char* key : kNotStringArrays) {
    EXPECT_EQ(ErrorOf([&] { object->GetStringArrayValue(key); }), WrongType(key, "Array String"));
  }
}

TEST(JsonObjectGetterTest, GetPropertyStringArrayValueGivesTheItemsInOrder) {
  const auto object = Json(test::kEveryType);
  EXPECT_THAT(object->GetPropertyStringArrayValue("strings"), Pair(true, ElementsAre("b", "a", "b")));
  EXPECT_THAT(object->GetPropertyStringArrayValue("array"), Pair(true, IsEmpty()));
  EXPECT_EQ(object->GetLastError(), 0U);
}

TEST(JsonObjectGetterTest, GetPropertyStringArrayValueRecordsAMissingMember) {
  for (const char* key : {"absent", "null"}) {
    const auto object = Json(test::kEveryType);
    EXPECT_THAT(object->GetPropertyStringArrayValue(key), Pair(false, IsEmpty())) << key;
    EXPECT_EQ(object->GetLastError(), 0xA4C0003EU) << key;
  }
}

TEST(JsonObjectGetterTest, GetPropertyStringArrayValueRecordsEveryOtherType) {
  for (const char* key : kNotStringArrays) {
    const auto object = Json(test::kEveryType);
    EXPECT_THAT(object->GetPropertyStringArrayValue(key), Pair(false, IsEmpty())) << key;
    EXPECT_EQ(object->GetLastError(), 0xA4C00004U) << key;
  }
}

TEST(JsonObjectGetterTest, FirstOfSeveralMembersOfANameWins) {
  const auto object = Json(R"({"a": "first", "b": ["first"], "a": "second", "b": ["second"]})");
  EXPECT_EQ(object->GetStringValue("a"), "first");
  EXPECT_THAT(object->GetStringArrayValue("b"), ElementsAre("first"));
}

TEST(JsonObjectGetterTest, LastErrorIsTheLastFailures) {
  const auto object = Json(test::kEveryType);
  EXPECT_EQ(object->GetLastError(), 0U);
  object->GetPropertyStringValue("absent");
  EXPECT_EQ(object->GetLastError(), 0xA4C0003EU);
  object->GetPropertyStringValue("array");
  EXPECT_EQ(object->GetLastError(), 0xA4C00004U);
  object->GetPropertyStringValue("string");
  EXPECT_EQ(object->GetLastError(), 0xA4C00004U) << "a call that succeeds records nothing";
}

}  // namespace
