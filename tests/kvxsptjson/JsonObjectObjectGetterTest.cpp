#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"

namespace {

using test::ErrorOf;
using test::Json;
using test::Missing;
using test::WrongType;
using testing::IsEmpty;
using testing::Pair;

TEST(JsonObjectObjectGetterTest, GetObjectValueGivesAViewOnTheSameDocument) {
  const auto object = Json(R"({"a": {"x": "1", "b": {"y": "2"}}})");
  const auto inner = object->GetObjectValue("a");
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(inner->Share(), object->Share());
  EXPECT_EQ(inner->GetStringValue("x"), "1");
  EXPECT_EQ(inner->GetObjectValue("b")->GetStringValue("y"), "2");
}

TEST(JsonObjectObjectGetterTest, GetObjectValueOnNullGivesAnEmptyPointer) {
  const auto object = Json(R"({"a": null})");
  EXPECT_EQ(object->GetObjectValue("a"), nullptr);
  EXPECT_EQ(object->GetLastError(), 0U);
}

TEST(JsonObjectObjectGetterTest, GetObjectValueThrowsForAMissingMember) {
  EXPECT_EQ(ErrorOf([] { CJsonObject().GetObjectValue("class"); }), Missing("class"));
}

TEST(JsonObjectObjectGetterTest, GetObjectValueThrowsForEveryOtherType) {
  const auto object = Json(test::kEveryType);
  for (const char* key : {"string", "empty", "true", "false", "number", "array", "objects"}) {
    EXPECT_EQ(ErrorOf([&] { object->GetObjectValue(key); }), WrongType(key, "Object"));
  }
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectValueGivesAViewOnTheSameDocument) {
  const auto object = Json(test::kEveryType);
  const auto inner = object->GetPropertyObjectValue("object");
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(inner->Share(), object->Share());
  EXPECT_EQ(inner->GetStringValue("x"), "y");
  EXPECT_EQ(object->GetLastError(), 0U);
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectValueOnNullGivesAnEmptyPointerAndRecordsAMissingMember) {
  const auto object = Json(R"({"a": null})");
  EXPECT_EQ(object->GetPropertyObjectValue("a"), nullptr);
  EXPECT_EQ(object->GetLastError(), 0xA4C0003EU);
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectValueRecordsAMissingMember) {
  const CJsonObject object;
  EXPECT_EQ(object.GetPropertyObjectValue("class"), nullptr);
  EXPECT_EQ(object.GetLastError(), 0xA4C0003EU);
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectValueRecordsEveryOtherType) {
  for (const char* key : {"string", "empty", "true", "false", "number", "array", "objects"}) {
    const auto object = Json(test::kEveryType);
    EXPECT_EQ(object->GetPropertyObjectValue(key), nullptr) << key;
    EXPECT_EQ(object->GetLastError(), 0xA4C00004U) << key;
  }
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectArrayValueGivesOneViewPerItemInOrder) {
  const auto object = Json(test::kEveryType);
  const auto [found, items] = object->GetPropertyObjectArrayValue("objects");
  EXPECT_TRUE(found);
  ASSERT_EQ(items.size(), 2U);
  EXPECT_EQ(items.front()->GetStringValue("n"), "1");
  EXPECT_EQ(items.back()->GetStringValue("n"), "2");
  for (const auto& item : items) {
    EXPECT_EQ(item->Share(), object->Share());
  }
  EXPECT_EQ(object->GetLastError(), 0U);
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectArrayValueOfAnEmptyArrayIsFoundAndEmpty) {
  const auto object = Json(test::kEveryType);
  EXPECT_THAT(object->GetPropertyObjectArrayValue("array"), Pair(true, IsEmpty()));
  EXPECT_EQ(object->GetLastError(), 0U);
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectArrayValueRecordsAMissingOrNullMember) {
  for (const char* key : {"absent", "null"}) {
    const auto object = Json(test::kEveryType);
    EXPECT_THAT(object->GetPropertyObjectArrayValue(key), Pair(false, IsEmpty())) << key;
    EXPECT_EQ(object->GetLastError(), 0xA4C0003EU) << key;
  }
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectArrayValueRecordsEveryOtherType) {
  for (const char* key : {"string", "empty", "true", "false", "number", "object"}) {
    const auto object = Json(test::kEveryType);
    EXPECT_THAT(object->GetPropertyObjectArrayValue(key), Pair(false, IsEmpty())) << key;
    EXPECT_EQ(object->GetLastError(), 0xA4C00004U) << key;
  }
}

TEST(JsonObjectObjectGetterTest, GetPropertyObjectArrayValueThrowsAtTheFirstItemThatIsNotAnObject) {
  const auto object = Json(test::kEveryType);
  for (const char* key : {"objects and string", "objects and null", "strings", "numbers", "nested strings"}) {
    EXPECT_EQ(ErrorOf([&] { object->GetPropertyObjectArrayValue(key); }), WrongType(key, "Array Object"));
  }
}

TEST(JsonObjectObjectGetterTest, FirstOfSeveralMembersOfANameWins) {
  const auto object = Json(R"({"a": {"n": "first"}, "a": {"n": "second"}})");
  EXPECT_EQ(object->GetObjectValue("a")->GetStringValue("n"), "first");
}

}  // namespace
