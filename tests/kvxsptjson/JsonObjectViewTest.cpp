#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <list>
#include <memory>
#include <string>

#include "kvxsptjson/JsonDocument.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"

namespace {

using test::Compact;
using test::ErrorOf;
using test::Json;
using test::Missing;
using testing::IsEmpty;
using testing::Pair;

TEST(JsonObjectViewTest, NewObjectIsAnEmptyObjectInADocumentOfItsOwn) {
  const CJsonObject first;
  const CJsonObject second;
  EXPECT_TRUE(first.IsObject());
  EXPECT_EQ(first.ToText(), "{}");
  EXPECT_NE(first.Share(), second.Share());
  EXPECT_EQ(first.GetLastError(), 0U);
}

TEST(JsonObjectViewTest, ViewCanBeMadeOfTheSharedDocumentAndAValueInIt) {
  const auto object = Json(R"({"a": [{"n": "1"}, {"n": "2"}]})");
  const std::shared_ptr<kvx::JsonDocument> document = object->Share();
  CJsonObject view(document, &(*document)["a"][1]);
  EXPECT_EQ(view.GetStringValue("n"), "2");
  EXPECT_EQ(view.Share(), document);

  view.SetStringValue("n", "new");
  EXPECT_EQ(Compact(*object), R"({"a":[{"n":"1"},{"n":"new"}]})");
}

TEST(JsonObjectViewTest, ViewKeepsItsDocumentAlive) {
  auto object = Json(R"({"a": {"n": "long enough to need memory of its own"}, "b": [{"n": "1"}]})");
  const auto view = object->GetObjectValue("a");
  const auto items = object->GetPropertyObjectArrayValue("b").second;
  object.reset();
  EXPECT_EQ(view->GetStringValue("n"), "long enough to need memory of its own");
  EXPECT_EQ(items.front()->GetStringValue("n"), "1");
}

TEST(JsonObjectViewTest, ChangeThroughAViewIsSeenInTheDocument) {
  const auto object = Json(R"({"a": {}})");
  object->GetObjectValue("a")->SetStringValue("n", "1");
  EXPECT_EQ(Compact(*object), R"({"a":{"n":"1"}})");
}

TEST(JsonObjectViewTest, CopyOfAViewSeesTheSameNode) {
  CJsonObject object;
  CJsonObject copy(object);
  copy.SetStringValue("n", "1");
  EXPECT_EQ(object.GetStringValue("n"), "1");
}

TEST(JsonObjectViewTest, LastErrorBelongsToTheViewAndNotToTheDocument) {
  const auto object = Json(R"({"a": {}})");
  const auto view = object->GetObjectValue("a");
  view->GetPropertyStringValue("absent");
  EXPECT_EQ(view->GetLastError(), 0xA4C0003EU);
  EXPECT_EQ(object->GetLastError(), 0U);
}

TEST(JsonObjectViewTest, NodeThatIsNotAnObjectHasNoMembers) {
  for (const char* text : {"[{\"a\": 1}]", "\"text\"", "7", "true", "null"}) {
    const auto node = Json(text);
    EXPECT_FALSE(node->IsObject()) << text;
    EXPECT_FALSE(node->HasMember("a")) << text;
    std::list<std::string> keys = {"what was here before"};
    node->GetAllKey(keys);
    EXPECT_THAT(keys, IsEmpty()) << text;
    EXPECT_EQ(ErrorOf([&] { node->GetStringValue("a"); }), Missing("a")) << text;
    EXPECT_THAT(node->GetPropertyStringValue("a"), Pair(false, "")) << text;
    EXPECT_EQ(node->GetLastError(), 0xA4C0003EU) << text;
  }
}

TEST(JsonObjectViewTest, CreateFromTextTurnsToANewDocument) {
  const auto object = Json(R"({"a": {"n": "old"}})");
  const auto oldDocument = object->Share();
  const auto view = object->GetObjectValue("a");
  object->CreateFromText(R"({"b": 1})", "text");
  EXPECT_EQ(Compact(*object), R"({"b":1})");
  EXPECT_NE(object->Share(), oldDocument);
  EXPECT_EQ(view->GetStringValue("n"), "old");
  EXPECT_EQ(view->Share(), oldDocument);
}

TEST(JsonObjectViewTest, CreateFromTextTurnsAViewOnAMemberToTheNewRoot) {
  const auto object = Json(R"({"a": {"n": "old"}})");
  const auto view = object->GetObjectValue("a");
  view->CreateFromText(R"({"b": 1})", "text");
  EXPECT_EQ(Compact(*view), R"({"b":1})");
  EXPECT_EQ(Compact(*object), R"({"a":{"n":"old"}})");
}

TEST(JsonObjectViewTest, FailedCreateFromTextLeavesTheViewAsItWas) {
  const auto object = Json(R"({"a": 1})");
  const auto document = object->Share();
  EXPECT_EQ(ErrorOf([&] { object->CreateFromText("{", "name"); }).code, kvx::kMalformedDocument);
  EXPECT_EQ(Compact(*object), R"({"a":1})");
  EXPECT_EQ(object->Share(), document);
}

TEST(JsonObjectViewTest, ToTextIndentsByTwoSpacesAndShowsTheNodeAlone) {
  const auto object = Json(R"({"outer": {"s": "x", "n": 1, "a": [], "o": {}, "l": [1, "2"]}})");
  EXPECT_EQ(object->GetObjectValue("outer")->ToText(),
            "{\n"
            "  \"s\": \"x\",\n"
            "  \"n\": 1,\n"
            "  \"a\": [],\n"
            "  \"o\": {},\n"
            "  \"l\": [\n"
            "    1,\n"
            "    \"2\"\n"
            "  ]\n"
            "}");
}

}  // namespace
