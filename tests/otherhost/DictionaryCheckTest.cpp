#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/CheckMeta2024Helper.h"
#include "kvxsptexception/KVXException.h"
#include "otherhost/HostTest.h"

namespace {

using otherhost::Object;
using otherhost::SElement;
using otherhost::SFailure;
using otherhost::SModel;
using otherhost::STestAccess;
using otherhost::TextOf;
using testing::ElementsAre;

/// What tells a kind apart: its names in operations and keys, and what is called and read for it.
struct SKind {
  std::string kind;
  std::string keys;
  std::string list;
  std::string operation;
  std::vector<SElement> SModel::*elements;
  bool (CCheckMeta2024Helper::*checkWithDocument)(std::shared_ptr<CJsonObject>&);
  bool (CCheckMeta2024Helper::*check)();
  int originalLine;
  std::uint32_t code;
};

void PrintTo(const SKind& kind, std::ostream* output) {
  *output << kind.kind;
}

std::vector<SElement> Elements(const std::vector<std::string>& names) {
  std::vector<SElement> elements;
  for (const std::string& name : names) {
    elements.push_back({name, {}, {}, {}});
  }
  return elements;
}

class DictionaryCheckTest : public otherhost::CHostTest, public testing::WithParamInterface<SKind> {
 protected:
  void Set(const std::vector<SElement>& client, const std::vector<SElement>& original) {
    host_.client.*GetParam().elements = client;
    host_.original.*GetParam().elements = original;
  }
  /// A client that has inserted "New", deleted "Old" and changed "Both".
  void SetEveryFinding() {
    Set({{"New", {}, {}, {}}, {"Both", {{"Code", 64}}, {}, {}}}, {{"Old", {}, {}, {}}, {"Both", {{"Code"}}, {}, {}}});
  }

  bool CheckWithDocument() { return (helper_.*GetParam().checkWithDocument)(document_); }
  bool Check() { return (helper_.*GetParam().check)(); }

  std::string Key(const std::string& change) const { return change + "_" + GetParam().keys; }
  std::string List(const std::string& side) const { return side + ": " + GetParam().list + "()"; }
  std::string Lookup(const std::string& side, const std::string& operation, const std::string& name) const {
    return side + ": " + operation + GetParam().operation + "(" + name + ")";
  }
  /// The element JSON of an element.
  std::string ElementJson(const std::string& name) const {
    return R"({"internal_name":")" + name + R"(","display_name":")" + name + "!\"" +
           (GetParam().kind == "behavior" ? "" : R"(,"class_id":7,"table_name":"T_)" + name + "\"") + "}";
  }

  CCheckMeta2024Helper helper_{handlerContext_, upgradeContext_};
  std::shared_ptr<CJsonObject> document_ = otherhost::MakeJson(Object());
};

TEST_P(DictionaryCheckTest, TheClientsElementsAreLookedUpBeforeTheOriginals) {
  Set(Elements({"A", "New"}), Elements({"Old", "A"}));
  EXPECT_FALSE(CheckWithDocument());
  EXPECT_THAT(host_.CallsWith({GetParam().list, ": Exist", ": Get" + GetParam().operation + "("}),
              ElementsAre(List("client"), Lookup("original", "Exist", "A"), Lookup("original", "Exist", "New"),
                          List("original"), Lookup("client", "Exist", "Old"), Lookup("client", "Exist", "A")));
}

TEST_P(DictionaryCheckTest, WithoutADocumentTheSameIsAskedBySimpleLookups) {
  Set(Elements({"A", "New"}), Elements({"A", "Old"}));
  try {
    Check();
    FAIL() << "nothing was thrown";
  } catch (const CKVXException& error) {
    EXPECT_EQ(STestAccess::CodeOf(error), GetParam().code);
    EXPECT_EQ(STestAccess::MessageOf(error), "");
  }
  EXPECT_THAT(host_.CallsWith({GetParam().list, ": Exist", ": Get" + GetParam().operation + "("}),
              ElementsAre(List("client"), Lookup("original", "Get", "A"), Lookup("original", "Get", "New"),
                          List("original"), Lookup("client", "Get", "A"), Lookup("client", "Get", "Old")));
  EXPECT_THAT(host_.CallsWith({"Print"}),
              ElementsAre(testing::StartsWith("Print(CheckMeta2024Helper.cpp, " +
                                              std::to_string(GetParam().originalLine) + ", ")));
}

TEST_P(DictionaryCheckTest, FoundButWithoutAnElementIsAnInsertion) {
  Set(Elements({"A"}), Elements({"Old"}));
  host_.original.hollowNames = {"A"};
  EXPECT_FALSE(CheckWithDocument());
  EXPECT_EQ(TextOf(document_), "{\"" + GetParam().kind + "\":{\"" + Key("inserted") + "\":[" + ElementJson("A") +
                                   "],\"" + Key("deleted") + "\":[" + ElementJson("Old") + "]}}");
}

TEST_P(DictionaryCheckTest, FoundButWithoutAnElementIsNoDeletion) {
  Set({}, Elements({"Old"}));
  host_.client.hollowNames = {"Old"};
  EXPECT_TRUE(CheckWithDocument());
  EXPECT_EQ(TextOf(document_), "{}");
}

TEST_P(DictionaryCheckTest, WithoutADocumentAnElementOfTheClientThatIsEmptyInTheOriginalIsPassedOver) {
  Set(Elements({"A"}), {});
  host_.original.hollowNames = {"A"};
  EXPECT_TRUE(Check());
}

TEST_P(DictionaryCheckTest, TheArraysAreSetInTheirOrderAndThenTheFinishedKindObjectOnce) {
  SetEveryFinding();
  EXPECT_FALSE(CheckWithDocument());
  const std::vector<std::string> calls = host_.CallsWith(
      {"(" + Key("inserted"), "(" + Key("updated"), "(" + Key("deleted"), "SetObjectValue(" + GetParam().kind + ", "});
  const std::string inserted = "[" + ElementJson("New") + "]";
  const std::string deleted = "[" + ElementJson("Old") + "]";
  ASSERT_EQ(calls.size(), 4U);
  EXPECT_EQ(calls[0], "SetObjectArrayValue(" + Key("inserted") + ", " + inserted + ")");
  const std::string beginning = "SetObjectArrayValue(" + Key("updated") + ", ";
  EXPECT_THAT(calls[1], testing::StartsWith(beginning));
  const std::string updated = calls[1].substr(beginning.size(), calls[1].size() - beginning.size() - 1);
  EXPECT_THAT(updated, testing::HasSubstr(R"("updated_field":"length")"));
  EXPECT_EQ(calls[2], "SetObjectArrayValue(" + Key("deleted") + ", " + deleted + ")");
  EXPECT_EQ(calls[3], "SetObjectValue(" + GetParam().kind + ", {\"" + Key("inserted") + "\":" + inserted + ",\"" +
                          Key("updated") + "\":" + updated + ",\"" + Key("deleted") + "\":" + deleted + "})");
}

TEST_P(DictionaryCheckTest, WhatCannotBeSetLeavesTheDocumentAsItWas) {
  for (const std::string& call :
       {"SetObjectArrayValue(" + Key("inserted"), "SetObjectArrayValue(" + Key("updated"),
        "SetObjectArrayValue(" + Key("deleted"), "SetObjectValue(" + GetParam().kind + ", "}) {
    SetEveryFinding();
    document_ = otherhost::MakeJson(Object({{"earlier", "kept"}, {GetParam().kind, "earlier"}}));
    host_.FailAt(call);
    ExpectFailure([this] { CheckWithDocument(); });
    EXPECT_EQ(TextOf(document_), R"({"earlier":"kept",")" + GetParam().kind + R"(":"earlier"})") << call;
  }
}

TEST_P(DictionaryCheckTest, AMetamodelThatCannotBeLoadedLeavesBothToBeLoadedAgain) {
  host_.FailAt("LoadOriginalMeta");
  ExpectFailure([this] { CheckWithDocument(); });
  host_.FailNoMore();
  EXPECT_TRUE(CheckWithDocument());
  EXPECT_THAT(host_.CallsWith({"Load"}),
              ElementsAre("LoadClientMeta()", "LoadOriginalMeta()", "LoadClientMeta()", "LoadOriginalMeta()"));
}

TEST_P(DictionaryCheckTest, ACopySharesTheMetamodelsThatAreLoaded) {
  EXPECT_TRUE(Check());
  CCheckMeta2024Helper copy(helper_);
  EXPECT_TRUE((copy.*GetParam().check)());
  EXPECT_TRUE((copy.*GetParam().checkWithDocument)(document_));
  EXPECT_THAT(host_.CallsWith({"Load"}), ElementsAre("LoadClientMeta()", "LoadOriginalMeta()"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, DictionaryCheckTest,
                         testing::Values(SKind{"class", "classes", "GetClasses", "Class", &SModel::classes,
                                               &CCheckMeta2024Helper::CheckMetaClasses,
                                               &CCheckMeta2024Helper::CheckMetaClasses, 69, 0xA4520005},
                                         SKind{"link", "links", "GetLinks", "Link", &SModel::links,
                                               &CCheckMeta2024Helper::CheckMetaLinks,
                                               &CCheckMeta2024Helper::CheckMetaLinks, 174, 0xA4520006},
                                         SKind{"behavior", "behaviors", "GetBehaviors", "Behavior", &SModel::behaviors,
                                               &CCheckMeta2024Helper::CheckMetaBehaviors,
                                               &CCheckMeta2024Helper::CheckMetaBehaviors, 279, 0xA4520004}),
                         [](const auto& row) { return row.param.kind; });

}  // namespace
