#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <functional>
#include <iterator>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "kvxsptjson/JsonDocument.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"
#include "kvxsptjson/LargeObject.h"

// An object that is large enough is not copied when it is set into another: both have the same values until one
// changes.

namespace {

using test::Compact;
using test::Json;
using test::Large;
using test::LargeObject;
using Object = std::shared_ptr<CJsonObject>;

/// What such an object contains, with other values of "n".
std::string LargeText(const std::string& n = "1", const std::string& inner = "1", const std::string& first = "1") {
  return R"({"large":")" + Large() + R"(","n":")" + n + R"(","inner":{"n":")" + inner + R"("},"list":[{"n":")" + first +
         R"("},{"n":"2"}]})";
}

/// Where the document has the text.
const char* PlaceOfLarge(const CJsonObject& object, const char* member = nullptr) {
  const auto document = object.Share();
  const kvx::JsonValue& root = *document;
  return (member == nullptr ? root : root[member])["large"].GetString();
}

TEST(JsonObjectSharingTest, LargeObjectIsNotCopied) {
  const Object source = LargeObject();
  const char* const place = PlaceOfLarge(*source);
  CJsonObject target;
  target.SetObjectValue("copy", source);
  EXPECT_EQ(PlaceOfLarge(target, "copy"), place);
}

TEST(JsonObjectSharingTest, ObjectOfLargeObjectsIsNotCopied) {
  const Object source = LargeObject();
  const char* const place = PlaceOfLarge(*source);
  const auto kind = std::make_shared<CJsonObject>();
  kind->SetObjectValue("entry", source);
  CJsonObject target;
  target.SetObjectValue("kind", kind);
  EXPECT_EQ((*target.Share())["kind"]["entry"]["large"].GetString(), place);
}

TEST(JsonObjectSharingTest, SmallObjectIsCopied) {
  const Object source = Json(R"({"large": "too small to be shared"})");
  const char* const place = PlaceOfLarge(*source);
  CJsonObject target;
  target.SetObjectValue("copy", source);
  EXPECT_EQ(PlaceOfLarge(*source), place);
  EXPECT_NE(PlaceOfLarge(target, "copy"), place);
}

TEST(JsonObjectSharingTest, BothReadAlikeAfterTheSet) {
  const Object source = LargeObject();
  CJsonObject target;
  target.SetObjectValue("copy", source);
  EXPECT_EQ(Compact(target), R"({"copy":)" + LargeText() + "}");
  EXPECT_EQ(Compact(*source), LargeText());
  EXPECT_EQ(source->GetStringValue("n"), "1");
  EXPECT_EQ(target.GetObjectValue("copy")->GetStringValue("n"), "1");
}

/// Every way to change an object by itself or through a view, and what its JSON is then.
struct SChange {
  const char* what;
  std::function<void(CJsonObject&)> change;
  std::string after;
};

std::vector<SChange> Changes() {
  const auto with = [](const std::string& member) {
    const std::string text = LargeText();
    return text.substr(0, text.size() - 1) + "," + member + "}";
  };
  return {
      {"SetStringValue", [](CJsonObject& object) { object.SetStringValue("n", "2"); }, LargeText("2")},
      {"SetUInt32Value", [](CJsonObject& object) { object.SetUInt32Value("new", 2); }, with(R"("new":2)")},
      {"SetStringArrayValue", [](CJsonObject& object) { object.SetStringArrayValue("new", {"2"}); },
       with(R"("new":["2"])")},
      {"SetObjectArrayValue", [](CJsonObject& object) { object.SetObjectArrayValue("new", {Json("{}")}); },
       with(R"("new":[{}])")},
      {"SetObjectValue", [](CJsonObject& object) { object.SetObjectValue("new", Json("{}")); }, with(R"("new":{})")},
      {"GetObjectValue", [](const CJsonObject& object) { object.GetObjectValue("inner")->SetStringValue("n", "2"); },
       LargeText("1", "2")},
      {"GetPropertyObjectValue",
       [](const CJsonObject& object) { object.GetPropertyObjectValue("inner")->SetStringValue("n", "2"); },
       LargeText("1", "2")},
      {"GetPropertyObjectArrayValue",
       [](const CJsonObject& object) {
         object.GetPropertyObjectArrayValue("list").second.front()->SetStringValue("n", "9");
       },
       LargeText("1", "1", "9")},
      {"a copy of the view", [](const CJsonObject& object) { CJsonObject(object).SetStringValue("n", "2"); },
       LargeText("2")},
      {"Share",
       [](const CJsonObject& object) {
         kvx::JsonValue& root = *object.Share();
         root["inner"]["n"].SetString("2");
       },
       LargeText("1", "2")},
  };
}

TEST(JsonObjectSharingTest, ChangeOfTheSourceLeavesTheTarget) {
  for (const SChange& change : Changes()) {
    SCOPED_TRACE(change.what);
    const Object source = LargeObject();
    CJsonObject target;
    target.SetObjectValue("copy", source);
    change.change(*source);
    EXPECT_EQ(Compact(*source), change.after);
    EXPECT_EQ(Compact(target), R"({"copy":)" + LargeText() + "}");
  }
}

TEST(JsonObjectSharingTest, ChangeOfTheTargetLeavesTheSource) {
  for (const SChange& change : Changes()) {
    SCOPED_TRACE(change.what);
    const Object source = LargeObject();
    CJsonObject target;
    target.SetObjectArrayValue("copies", {source});
    const Object copy = target.GetPropertyObjectArrayValue("copies").second.front();
    if (std::string(change.what) == "Share") {
      continue;  // The root of the shared document is the target's.
    }
    change.change(*copy);
    EXPECT_EQ(Compact(target), R"({"copies":[)" + change.after + "]}");
    EXPECT_EQ(Compact(*source), LargeText());
  }
}

TEST(JsonObjectSharingTest, ChangeInTheTargetsDocumentLeavesTheSource) {
  const Object source = LargeObject();
  CJsonObject target;
  target.SetObjectValue("copy", source);
  const auto document = target.Share();
  (*document)["copy"]["inner"]["n"].SetString("2");
  EXPECT_EQ(Compact(target), R"({"copy":)" + LargeText("1", "2") + "}");
  EXPECT_EQ(Compact(*source), LargeText());
}

TEST(JsonObjectSharingTest, ChangeInADocumentThatWasSharedBeforeLeavesTheSource) {
  const Object source = LargeObject();
  CJsonObject target;
  const auto document = target.Share();
  target.SetObjectValue("copy", source);
  (*document)["copy"]["inner"]["n"].SetString("2");
  EXPECT_EQ(Compact(target), R"({"copy":)" + LargeText("1", "2") + "}");
  EXPECT_EQ(Compact(*source), LargeText());
}

TEST(JsonObjectSharingTest, BothCanBeChangedAgainAndAgain) {
  const Object source = LargeObject();
  CJsonObject target;
  target.SetObjectValue("copy", source);
  for (const char* const value : {"2", "3"}) {
    source->SetStringValue("n", value);
    target.GetObjectValue("copy")->GetObjectValue("inner")->SetStringValue("n", value);
    EXPECT_EQ(Compact(*source), LargeText(value));
    EXPECT_EQ(Compact(target), R"({"copy":)" + LargeText("1", value) + "}");
  }
}

TEST(JsonObjectSharingTest, EitherOutlivesTheOther) {
  Object source = LargeObject();
  auto target = std::make_shared<CJsonObject>();
  target->SetObjectValue("copy", source);
  const Object copy = target->GetObjectValue("copy");
  target.reset();
  source->SetStringValue("n", "2");
  source.reset();
  EXPECT_EQ(Compact(*copy), LargeText());

  source = LargeObject();
  CJsonObject().SetObjectValue("copy", source);
  EXPECT_EQ(Compact(*source), LargeText());
  source->SetStringValue("n", "2");
  EXPECT_EQ(Compact(*source), LargeText("2"));
}

TEST(JsonObjectSharingTest, AnObjectCanBeSetMoreThanOnce) {
  const Object source = LargeObject();
  CJsonObject first;
  CJsonObject second;
  first.SetObjectArrayValue("copies", {source, source});
  second.SetObjectValue("copy", source);
  first.GetPropertyObjectArrayValue("copies").second.front()->SetStringValue("n", "2");
  source->SetStringValue("n", "3");
  EXPECT_EQ(Compact(first), R"({"copies":[)" + LargeText("2") + "," + LargeText() + "]}");
  EXPECT_EQ(Compact(second), R"({"copy":)" + LargeText() + "}");
  EXPECT_EQ(Compact(*source), LargeText("3"));
}

TEST(JsonObjectSharingTest, ALargeObjectCanBeSetIntoItself) {
  const Object object = LargeObject();
  object->SetObjectValue("list", object);
  object->SetStringValue("n", "2");
  std::string expected = R"({"large":")" + Large() + R"(","n":"2","inner":{"n":"1"},"list":)";
  EXPECT_EQ(Compact(*object), expected + LargeText() + "}");
}

TEST(JsonObjectSharingTest, ObjectsThatAreSetIntoOneAnotherEnd) {
  std::weak_ptr<kvx::JsonDocument> first;
  std::weak_ptr<kvx::JsonDocument> second;
  {
    const Object a = LargeObject();
    const Object b = LargeObject();
    a->SetObjectValue("other", b);
    b->SetObjectValue("other", a);
    a->SetObjectValue("other", b);
    first = a->Share();
    second = b->Share();
    const std::string inner = LargeText().substr(0, LargeText().size() - 1) + R"(,"other":)";
    EXPECT_EQ(Compact(*b), inner + inner + LargeText() + "}}");
    EXPECT_EQ(Compact(*a), inner + inner + inner + LargeText() + "}}}");
  }
  EXPECT_TRUE(first.expired());
  EXPECT_TRUE(second.expired());
}

TEST(JsonObjectSharingTest, ViewThatWasMadeBeforeTheSetSeesItsOwnDocument) {
  const Object source = LargeObject();
  const Object inner = source->GetObjectValue("inner");
  CJsonObject target;
  target.SetObjectValue("copy", source);
  inner->SetStringValue("n", "2");
  EXPECT_EQ(Compact(*source), LargeText("1", "2"));
  EXPECT_EQ(Compact(target), R"({"copy":)" + LargeText() + "}");
  target.GetObjectValue("copy")->SetStringValue("n", "3");
  EXPECT_EQ(Compact(*source), LargeText("1", "2"));
}

TEST(JsonObjectSharingTest, MemberOfALargeObjectIsCopied) {
  const Object source = Json(R"({"inner": {"large": ")" + Large() + R"("}})");
  const Object inner = source->GetObjectValue("inner");
  CJsonObject target;
  target.SetObjectValue("copy", inner);
  inner->SetStringValue("large", "2");
  EXPECT_EQ(Compact(target), R"({"copy":{"large":")" + Large() + R"("}})");
}

TEST(JsonObjectSharingTest, LastViewOnAMemberIsNotTakenForItsDocument) {
  const Object inner = LargeObject()->GetObjectValue("inner");
  CJsonObject target;
  target.SetObjectValue("copy", inner);
  EXPECT_EQ(Compact(target), R"({"copy":{"n":"1"}})");
}

TEST(JsonObjectSharingTest, SetReplacesWhatWasShared) {
  const Object source = LargeObject();
  CJsonObject target;
  target.SetObjectValue("copy", source);
  target.SetObjectValue("copy", Json("{}"));
  EXPECT_EQ(Compact(target), R"({"copy":{}})");
  EXPECT_EQ(Compact(*source), LargeText());
}

TEST(JsonObjectSharingTest, SourceCanBeReadAnew) {
  const Object source = LargeObject();
  CJsonObject target;
  target.SetObjectValue("copy", source);
  source->CreateFromText("{}", "text");
  source->SetStringValue("n", "2");
  EXPECT_EQ(Compact(*source), R"({"n":"2"})");
  EXPECT_EQ(Compact(target), R"({"copy":)" + LargeText() + "}");
}

TEST(JsonObjectSharingTest, ObjectsInObjectsThatWereSetStayTheirOwn) {
  const Object entry = LargeObject();
  const Object kind = std::make_shared<CJsonObject>();
  CJsonObject result;
  kind->SetObjectArrayValue("updated", {entry});
  result.SetObjectValue("class", kind);
  const std::string kindText = R"({"updated":[)" + LargeText() + "]}";
  entry->SetStringValue("n", "2");
  EXPECT_EQ(Compact(*kind), kindText);
  EXPECT_EQ(Compact(result), R"({"class":)" + kindText + "}");
  kind->GetPropertyObjectArrayValue("updated").second.front()->SetStringValue("n", "3");
  EXPECT_EQ(Compact(result), R"({"class":)" + kindText + "}");
  result.GetObjectValue("class")->GetPropertyObjectArrayValue("updated").second.front()->SetStringValue("n", "4");
  EXPECT_EQ(Compact(*entry), LargeText("2"));
  EXPECT_EQ(Compact(*kind), R"({"updated":[)" + LargeText("3") + "]}");
  EXPECT_EQ(Compact(result), R"({"class":{"updated":[)" + LargeText("4") + "]}}");
}

TEST(JsonObjectSharingTest, ChangeOfAnObjectInAnObjectThatWasSetLeavesTheFirst) {
  const Object entry = LargeObject();
  CJsonObject result;
  {
    const auto kind = std::make_shared<CJsonObject>();
    kind->SetObjectArrayValue("updated", {entry});
    result.SetObjectValue("class", kind);
  }
  result.GetObjectValue("class")->GetPropertyObjectArrayValue("updated").second.front()->SetStringValue("n", "2");
  EXPECT_EQ(Compact(*entry), LargeText());
}

TEST(JsonObjectSharingTest, AnObjectCanBeSetAgainWhenTheFirstTargetIsGone) {
  const Object source = LargeObject();
  CJsonObject().SetObjectValue("copy", source);
  source->SetStringValue("n", "2");
  CJsonObject target;
  target.SetObjectValue("copy", source);
  source->SetStringValue("n", "3");
  EXPECT_EQ(Compact(target), R"({"copy":)" + LargeText("2") + "}");
  EXPECT_EQ(Compact(*source), LargeText("3"));
}

}  // namespace
