#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"

namespace {

using namespace std::string_literals;
using test::Compact;
using test::ErrorOf;
using test::Json;
using test::SError;
using testing::ElementsAre;

constexpr const char* kThreeMembers = R"({"a": "1", "b": {"old": true}, "c": "3"})";

TEST(JsonObjectSetterTest, NewMembersAreAddedAtTheEnd) {
  CJsonObject object;
  object.SetStringValue("z", "text");
  object.SetUInt32Value("y", 4294967295U);
  object.SetStringArrayValue("x", {"b", "a", "b"});
  object.SetObjectArrayValue("w", {Json(R"({"n": 1})"), Json(R"({"n": 2})")});
  object.SetObjectValue("v", Json(R"({"n": 3})"));
  EXPECT_EQ(Compact(object), R"({"z":"text","y":4294967295,"x":["b","a","b"],"w":[{"n":1},{"n":2}],"v":{"n":3}})");
}

TEST(JsonObjectSetterTest, SetStringValueOnAnExistingKeyKeepsItsPosition) {
  const auto object = Json(kThreeMembers);
  object->SetStringValue("b", "new");
  EXPECT_EQ(Compact(*object), R"({"a":"1","b":"new","c":"3"})");
}

TEST(JsonObjectSetterTest, SetUInt32ValueOnAnExistingKeyKeepsItsPosition) {
  const auto object = Json(kThreeMembers);
  object->SetUInt32Value("b", 0);
  EXPECT_EQ(Compact(*object), R"({"a":"1","b":0,"c":"3"})");
}

TEST(JsonObjectSetterTest, SetStringArrayValueOnAnExistingKeyKeepsItsPosition) {
  const auto object = Json(kThreeMembers);
  object->SetStringArrayValue("b", {});
  EXPECT_EQ(Compact(*object), R"({"a":"1","b":[],"c":"3"})");
}

TEST(JsonObjectSetterTest, SetObjectArrayValueOnAnExistingKeyKeepsItsPosition) {
  const auto object = Json(kThreeMembers);
  object->SetObjectArrayValue("b", {Json(R"({"n": 1})")});
  EXPECT_EQ(Compact(*object), R"({"a":"1","b":[{"n":1}],"c":"3"})");
}

TEST(JsonObjectSetterTest, SetObjectValueOnAnExistingKeyMovesItToTheEnd) {
  const auto object = Json(kThreeMembers);
  object->SetObjectValue("b", Json(R"({"n": 1})"));
  EXPECT_EQ(Compact(*object), R"({"a":"1","c":"3","b":{"n":1}})");
}

TEST(JsonObjectSetterTest, SetObjectValueKeepsTheOrderOfTheOtherMembers) {
  const auto object = Json(R"({"a": 1, "b": 2, "c": 3, "d": 4})");
  object->SetObjectValue("a", Json("{}"));
  EXPECT_EQ(Compact(*object), R"({"b":2,"c":3,"d":4,"a":{}})");
}

TEST(JsonObjectSetterTest, SetObjectValueRemovesEveryMemberOfTheName) {
  const auto object = Json(R"({"a": 1, "b": 2, "a": 3, "a": 4})");
  object->SetObjectValue("a", Json(R"({"n": 1})"));
  EXPECT_EQ(Compact(*object), R"({"b":2,"a":{"n":1}})");
}

TEST(JsonObjectSetterTest, ValueThatWasSetIsTheOneReadWhenTheNameStandsTwice) {
  const auto object = Json(R"({"a": "1", "a": "2"})");
  object->SetStringValue("a", "new");
  EXPECT_EQ(object->GetStringValue("a"), "new");
}

TEST(JsonObjectSetterTest, EmptyPointersBecomeNull) {
  CJsonObject object;
  object.SetObjectValue("object", nullptr);
  object.SetObjectArrayValue("objects", {nullptr, Json("{}"), nullptr});
  EXPECT_EQ(Compact(object), R"({"object":null,"objects":[null,{},null]})");
}

TEST(JsonObjectSetterTest, EmptyKeyIsAKey) {
  CJsonObject object;
  object.SetStringValue("", "1");
  object.SetStringValue("", "2");
  EXPECT_EQ(Compact(object), R"({"":"2"})");
}

TEST(JsonObjectSetterTest, KeysDifferInCaseAndInWhatFollowsANulByte) {
  CJsonObject object;
  object.SetStringValue("a", "1");
  object.SetStringValue("A", "2");
  object.SetStringValue("a\0b"s, "3");
  EXPECT_EQ(object.GetStringValue("a"), "1");
  EXPECT_EQ(object.GetStringValue("A"), "2");
  EXPECT_EQ(object.GetStringValue("a\0b"s), "3");
}

TEST(JsonObjectSetterTest, StringsKeepEveryByte) {
  CJsonObject object;
  const std::string text = "x\0y \u96F6\u4EF6 \U0001F600 \"\\/\n\t\x7F"s;
  object.SetStringValue("s", text);
  object.SetStringArrayValue("a", {text, ""});
  EXPECT_EQ(object.GetStringValue("s"), text);
  EXPECT_THAT(object.GetStringArrayValue("a"), ElementsAre(text, ""));
}

TEST(JsonObjectSetterTest, StringsAreCopied) {
  CJsonObject object;
  {
    std::string key = "a key that is too long to be kept without memory of its own";
    std::string value = "a value that is too long to be kept without memory of its own";
    object.SetStringValue(key, value);
    object.SetStringArrayValue("array", {value});
    key.assign(key.size(), '-');
    value.assign(value.size(), '-');
  }
  EXPECT_EQ(object.GetStringValue("a key that is too long to be kept without memory of its own"),
            "a value that is too long to be kept without memory of its own");
  EXPECT_THAT(object.GetStringArrayValue("array"),
              ElementsAre("a value that is too long to be kept without memory of its own"));
}

TEST(JsonObjectSetterTest, SetObjectValueCopiesTheNodeAndNotItsDocument) {
  const auto source = Json(R"({"outer": 1, "node": {"n": "1"}})");
  CJsonObject target;
  target.SetObjectValue("copy", source->GetObjectValue("node"));
  EXPECT_EQ(Compact(target), R"({"copy":{"n":"1"}})");
}

TEST(JsonObjectSetterTest, CopyBetweenDocumentsIsDeep) {
  CJsonObject target;
  {
    const auto source = Json(R"({"list": [{"text": "long enough to need memory of its own"}]})");
    target.SetObjectValue("object", source);
    target.SetObjectArrayValue("objects", {source});
    source->SetStringValue("list", "changed after it was copied");
  }
  const auto list = R"({"list":[{"text":"longenoughtoneedmemoryofitsown"}]})"s;
  EXPECT_EQ(Compact(target), R"({"object":)" + list + R"(,"objects":[)" + list + "]}");
}

// Long texts that copied objects have in common are stored once.
TEST(JsonObjectSetterTest, ChangeOfATextThatCopiesShareLeavesTheOthers) {
  const auto source = Json(R"({"a member of a long name": "a text that needs memory", "n": "1"})");
  CJsonObject target;
  target.SetObjectArrayValue("list", {source, source, source});
  const auto copies = target.GetPropertyObjectArrayValue("list").second;
  (*std::next(copies.begin()))->SetStringValue("a member of a long name", "another text that needs memory");
  const auto same = R"({"amemberofalongname":"atextthatneedsmemory","n":"1"})"s;
  EXPECT_EQ(Compact(target),
            R"({"list":[)" + same + R"(,{"amemberofalongname":"anothertextthatneedsmemory","n":"1"},)" + same + "]}");
}

TEST(JsonObjectSetterTest, CopiesOfTextsThatBeginAlikeDiffer) {
  const auto first = Json(R"({"t": "fifteen letters", "u": "fifteen letters\u0000and more"})");
  const auto second = Json(R"({"t": "fifteen letters\u0000and less", "u": "fifteen letters"})");
  const auto third = Json(R"({"u": "", "t": ["fifteen letters\u0000and less"]})");
  CJsonObject target;
  target.SetObjectArrayValue("list", {first, second, third});
  EXPECT_EQ(Compact(target), R"({"list":[{"t":"fifteenletters","u":"fifteenletters\u0000andmore"},)"
                             R"({"t":"fifteenletters\u0000andless","u":"fifteenletters"},)"
                             R"({"u":"","t":["fifteenletters\u0000andless"]}]})");
}

TEST(JsonObjectSetterTest, ChangeOfTheCopyLeavesTheSource) {
  const auto source = Json(R"({"n": "1"})");
  CJsonObject target;
  target.SetObjectValue("copy", source);
  target.GetObjectValue("copy")->SetStringValue("n", "2");
  EXPECT_EQ(Compact(*source), R"({"n":"1"})");
  EXPECT_EQ(Compact(target), R"({"copy":{"n":"2"}})");
}

TEST(JsonObjectSetterTest, ObjectCanHoldACopyOfItself) {
  const auto object = Json(R"({"n": "1"})");
  object->SetObjectValue("self", object);
  EXPECT_EQ(Compact(*object), R"({"n":"1","self":{"n":"1"}})");
  object->SetObjectArrayValue("n", {object, object});
  EXPECT_EQ(Compact(*object), R"({"n":[{"n":"1","self":{"n":"1"}},{"n":"1","self":{"n":"1"}}],"self":{"n":"1"}})");
}

TEST(JsonObjectSetterTest, MemberCanBeReplacedByACopyOfItself) {
  const auto object = Json(R"({"a": {"n": "1"}, "b": 2})");
  object->SetObjectValue("a", object->GetObjectValue("a"));
  EXPECT_EQ(Compact(*object), R"({"b":2,"a":{"n":"1"}})");
  object->SetObjectArrayValue("a", {object->GetObjectValue("a")});
  EXPECT_EQ(Compact(*object), R"({"b":2,"a":[{"n":"1"}]})");
}

TEST(JsonObjectSetterTest, MemberCanBeReplacedByACopyOfAPartOfItself) {
  const auto object = Json(R"({"a": {"inner": {"n": "1"}}})");
  object->SetObjectValue("a", object->GetObjectValue("a")->GetObjectValue("inner"));
  EXPECT_EQ(Compact(*object), R"({"a":{"n":"1"}})");
}

TEST(JsonObjectSetterTest, ManyMembersKeepTheirOrder) {
  CJsonObject object;
  std::list<std::string> expected;
  for (std::uint32_t i = 0; i < 1000; ++i) {
    expected.push_back("member" + std::to_string(i * 7919 % 1000));
    object.SetUInt32Value(expected.back(), i);
  }
  std::list<std::string> keys;
  object.GetAllKey(keys);
  EXPECT_EQ(keys, expected);
}

TEST(JsonObjectSetterTest, EverySetterThrowsOnANodeThatIsNotAnObject) {
  const auto array = Json("[1]");
  const std::vector<std::function<void()>> setters = {
      [&] { array->SetStringValue("a", "1"); },        [&] { array->SetUInt32Value("a", 1); },
      [&] { array->SetStringArrayValue("a", {"1"}); }, [&] { array->SetObjectArrayValue("a", {Json("{}")}); },
      [&] { array->SetObjectValue("a", Json("{}")); },
  };
  for (const auto& setter : setters) {
    EXPECT_EQ(ErrorOf(setter), (SError{kvx::kJsonWrongType, "json node is not Object!"}));
  }
  EXPECT_EQ(Compact(*array), "[1]");
}

}  // namespace
