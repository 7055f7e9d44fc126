#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "upgrademeta2024/storage/document/MetaDocument.h"

// The names of one list, and lists that may repeat them.
namespace {

using test::ContentError;
using test::LoadErrorAtPointer;
using test::LoadText;
using test::SError;
using test::SObjectPlace;
using test::With;
using testing::ElementsAre;

/// Objects with these names and nothing else.
std::string Objects(const std::vector<std::string>& names) {
  std::string objects;
  for (const std::string& name : names) {
    objects += (objects.empty() ? "" : ", ") + (R"({"internal_name": ")" + name + "\"}");
  }
  return objects;
}

class DocumentMetaNamesTest : public testing::TestWithParam<SObjectPlace> {
 protected:
  /// The error for item `index`, whose name is that of item `earlier`.
  static SError Repeated(int index, const std::string& name, int earlier, const std::string& earlierName) {
    std::string list = GetParam().pointer;
    list.pop_back();
    return ContentError(list + std::to_string(index) + "/internal_name",
                        "the name \"" + name + "\" repeats \"" + earlierName + "\" of item " + std::to_string(earlier) +
                            " of the same list; names must differ in more than letter case");
  }
};

INSTANTIATE_TEST_SUITE_P(List, DocumentMetaNamesTest, testing::ValuesIn(test::kPlaces),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(DocumentMetaNamesTest, SameNameTwiceIsRefused) {
  EXPECT_EQ(LoadErrorAtPointer(With(GetParam(), Objects({"A", "Part", "Part"}))), Repeated(2, "Part", 1, "Part"));
}

TEST_P(DocumentMetaNamesTest, NamesThatDifferOnlyInAsciiCaseAreRefusedAndBothNamed) {
  EXPECT_EQ(LoadErrorAtPointer(With(GetParam(), Objects({"Part", "A", "B", "pART"}))), Repeated(3, "pART", 0, "Part"));
}

TEST_P(DocumentMetaNamesTest, NamesThatDifferInNonAsciiCaseAreAccepted) {
  EXPECT_NO_THROW(LoadText(With(GetParam(), Objects({"\u00C4rea", "\u00E4rea", "\u0130", "i", "\u212A", "k"}))));
}

TEST_P(DocumentMetaNamesTest, NamesThatDifferInASpaceAreAccepted) {
  EXPECT_NO_THROW(LoadText(With(GetParam(), Objects({"Part", "Part ", " Part"}))));
}

TEST_P(DocumentMetaNamesTest, EarliestRepetitionIsReported) {
  EXPECT_EQ(LoadErrorAtPointer(With(GetParam(), Objects({"B", "A", "a", "b", "A"}))), Repeated(2, "a", 1, "A"));
}

TEST_P(DocumentMetaNamesTest, ControlCharactersOfTheNamesAreShown) {
  EXPECT_EQ(LoadErrorAtPointer(With(GetParam(), Objects({"a\\n", "A\\n"}))), Repeated(1, "A\\n", 0, "a\\n"));
  EXPECT_EQ(LoadErrorAtPointer(With(GetParam(), Objects({"a\\u0000x", "A\\u0000x"}))),
            Repeated(1, "A\\x00x", 0, "a\\x00x"));
}

TEST_P(DocumentMetaNamesTest, NamesThatDifferAfterANulByteAreAccepted) {
  EXPECT_NO_THROW(LoadText(With(GetParam(), Objects({"a\\u0000x", "a\\u0000y", "a"}))));
}

TEST(DocumentMetaListsTest, NameMayStandInSeveralLists) {
  const auto dictionary = LoadText(R"({"generation": 2024,
    "classes": [{"internal_name": "Part", "properties": [{"internal_name": "Part"}]},
                {"internal_name": "Other", "properties": [{"internal_name": "part"}]}],
    "links": [{"internal_name": "Part"}],
    "behaviors": [{"internal_name": "part", "methods": [{"internal_name": "Part"}],
                   "properties": [{"internal_name": "Part"}]}]})");
  EXPECT_EQ(dictionary->GetClass("PART")->GetPropertyDict().count("part"), 1U);
  EXPECT_EQ(dictionary->GetLink("PART")->GetInternalName(), "Part");
  EXPECT_TRUE(dictionary->GetBehavior("PART")->ExistMethod("PART"));
}

TEST(DocumentMetaListsTest, BehaviorNamesOfAClassMayRepeatAndAreKeptAsTheyStand) {
  const auto dictionary = LoadText(R"({"generation": 2024, "classes": [
    {"internal_name": "A", "behaviors": ["Versioned", "", "VERSIONED", "Versioned", "\u96f6", "not a behavior"]}]})");
  EXPECT_THAT(dictionary->GetClass("A")->GetBehaviors(),
              ElementsAre("Versioned", "", "VERSIONED", "Versioned", "\u96F6", "not a behavior"));
}

}  // namespace
