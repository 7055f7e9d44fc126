#include <gmock/gmock.h>

#include "metareview2024/Metamodels.h"

// The order of findings, and how names are matched and spelled.
namespace {

using test::Judgements;
using test::Property;
using test::Review;
using test::SBehavior;
using test::SClass;
using test::SModel;
using test::SProperty;
using testing::ElementsAre;
using testing::IsEmpty;

SProperty With(const std::string& name, const std::string& displayName) {
  SProperty property = Property(name);
  property.displayName = displayName;
  property.field = "F";
  return property;
}

std::vector<std::string> PathsOf(const SModel& client, const SModel& original) {
  std::vector<std::string> paths;
  for (const metareview::SFinding& finding : Review(client, original).findings) {
    paths.push_back(finding.path);
  }
  return paths;
}

TEST(FindingOrderTest, KindsAreClassesLinksBehaviors) {
  const SModel client = {{{"C", {}, {}}}, {{"L", {}, {}}}, {{"B", {}, {}}}};
  EXPECT_THAT(PathsOf(client, {}), ElementsAre("class/C", "link/L", "behavior/B"));
  EXPECT_THAT(PathsOf({}, client), ElementsAre("class/C", "link/L", "behavior/B"));
}

TEST(FindingOrderTest, ElementsAreInTheClientsOrderThenInTheOriginals) {
  const SModel client = {{{"Z", {}, {}}, {"Both", {}, {}, "here"}, {"A", {}, {}}}, {}, {}};
  const SModel original = {{{"Y", {}, {}}, {"B", {}, {}}, {"Both", {}, {}, "there"}}, {}, {}};
  EXPECT_THAT(PathsOf(client, original),
              ElementsAre("class/Z", "class/Both/display_name", "class/A", "class/Y", "class/B"));
}

TEST(FindingOrderTest, InAClassAttributesComeFirstThenBehaviorsThenProperties) {
  const SModel client = {{{"part", {"Z", "Both", "A"}, {Property("Q"), With("P", "here")}, "here", 1, "T_1"}}, {}, {}};
  const SModel original = {
      {{"Part", {"y", "both", "b"}, {With("P", "there"), Property("R"), Property("O")}, "there", 2, "T_2"}}, {}, {}};
  EXPECT_THAT(PathsOf(client, original),
              ElementsAre("class/part/internal_name", "class/part/display_name", "class/part/class_id",
                          "class/part/table_name", "class/part/behavior/Z", "class/part/behavior/A",
                          "class/part/behavior/y", "class/part/behavior/b", "class/part/property/Q",
                          "class/part/property/P/display_name", "class/part/property/R", "class/part/property/O"));
}

TEST(FindingOrderTest, InABehaviorAttributesComeFirstThenMethodsThenProperties) {
  const SModel client = {{}, {}, {{"locked", {"Z", "both", "A"}, {Property("Q")}, "here"}}};
  const SModel original = {{}, {}, {{"Locked", {"y", "Both"}, {Property("R")}, "there"}}};
  EXPECT_THAT(PathsOf(client, original),
              ElementsAre("behavior/locked/internal_name", "behavior/locked/display_name", "behavior/locked/method/Z",
                          "behavior/locked/method/both/internal_name", "behavior/locked/method/both/display_name",
                          "behavior/locked/method/A", "behavior/locked/method/y", "behavior/locked/property/Q",
                          "behavior/locked/property/R"));
}

TEST(FindingOrderTest, AttributesOfAPropertyAreInTheirOrder) {
  const SModel client = {{{"Part", {}, {{"code", "here", "F_1", "string", 1, "d1", 1, "8", "2", "User"}}}}, {}, {}};
  const SModel original = {{{"Part", {}, {{"Code", "there", "F_2", "text", 2, "d2", 2, "9", "1", "Group"}}}}, {}, {}};
  EXPECT_THAT(PathsOf(client, original),
              ElementsAre("class/Part/property/code/internal_name", "class/Part/property/code/display_name",
                          "class/Part/property/code/field", "class/Part/property/code/type",
                          "class/Part/property/code/length", "class/Part/property/code/default_value",
                          "class/Part/property/code/precision", "class/Part/property/code/max",
                          "class/Part/property/code/min", "class/Part/property/code/lookup_internal_name"));
}

TEST(FindingOrderTest, TheOrderOfListsIsNoDifference) {
  const SModel client = {
      {{"A", {"X", "Y"}, {Property("P"), Property("Q"), Property("R")}}, {"B", {}, {}}}, {}, {{"L", {"M", "N"}, {}}}};
  const SModel original = {
      {{"B", {}, {}}, {"A", {"Y", "X"}, {Property("R"), Property("P"), Property("Q")}}}, {}, {{"L", {"N", "M"}, {}}}};
  EXPECT_THAT(Judgements(Review(client, original)), IsEmpty());
}

TEST(ListedBehaviorTest, ListsCountAsSetsOfNamesWhateverTheirSpelling) {
  const SModel client = {{{"Part", {"Locked", "LOCKED", "Signed"}, {}}}, {}, {}};
  const SModel original = {{{"Part", {"signed", "locked", "Signed", "SIGNED"}, {}}}, {}, {}};
  EXPECT_THAT(Judgements(Review(client, original)), IsEmpty());
}

TEST(ListedBehaviorTest, ARepeatedNameIsOneFindingWhereAndAsItFirstOccurs) {
  const SModel client = {{{"Part", {"one", "Two", "ONE", "two"}, {}}}, {}, {}};
  EXPECT_THAT(PathsOf(client, {{{"Part", {}, {}}}, {}, {}}),
              ElementsAre("class/Part/behavior/one", "class/Part/behavior/Two"));
  EXPECT_THAT(PathsOf({{{"Part", {}, {}}}, {}, {}}, client),
              ElementsAre("class/Part/behavior/one", "class/Part/behavior/Two"));
}

TEST(WholeThingTest, WhatIsInAThingThatOnlyOneSideHasIsNotListed) {
  const SModel full = {{{"Part", {"Locked"}, {Property("Code")}}}, {}, {{"Locked", {"Lock"}, {Property("By")}}}};
  EXPECT_THAT(PathsOf(full, {}), ElementsAre("class/Part", "behavior/Locked"));
  EXPECT_THAT(PathsOf({}, full), ElementsAre("class/Part", "behavior/Locked"));
}

TEST(SpellingTest, PathsHaveTheClientsSpellingAndElseTheOriginals) {
  const SModel client = {{{"PART", {}, {With("CODE", "here")}, "", 1, ""}}, {}, {}};
  const SModel original = {{{"part", {}, {With("code", "there"), Property("Name")}, "", 1, ""}}, {}, {}};
  EXPECT_THAT(PathsOf(client, original),
              ElementsAre("class/PART/internal_name", "class/PART/property/CODE/internal_name",
                          "class/PART/property/CODE/display_name", "class/PART/property/Name"));
}

TEST(SpellingTest, NamesMatchIgnoringAsciiCaseOnly) {
  const SModel client = {{{"Größe", {}, {}, "", 1, ""}}, {}, {}};
  const SModel original = {{{"GRÖßE", {}, {}, "", 2, ""}}, {}, {}};
  EXPECT_THAT(Judgements(Review(client, original)),
              ElementsAre("class/Größe inserted class-inserted", "class/GRÖßE deleted class-deleted"));
}

TEST(SpellingTest, NamesInPathsAreEscaped) {
  EXPECT_THAT(PathsOf({{{"a/b~c*d", {"~1"}, {}}}, {}, {}}, {{{"a/b~c*d", {}, {}}}, {}, {}}),
              ElementsAre("class/a~1b~0c~2d/behavior/~01"));
}

TEST(MatchTest, ManyPropertiesAreMatchedByNameWhateverTheirOrderAndSpelling) {
  SClass client = {"Part", {}, {}};
  SClass original = {"Part", {}, {}};
  for (int i = 0; i < 100; ++i) {
    client.properties.push_back(With("p" + std::to_string(i), std::to_string(i)));
    original.properties.insert(original.properties.begin() + i / 2,
                               With((i % 2 == 0 ? "p" : "P") + std::to_string(i), std::to_string(i)));
  }
  original.properties.erase(original.properties.begin());
  const std::string missing = "p1";
  std::size_t spellings = 0;
  for (const metareview::SFinding& finding : Review({{client}, {}, {}}, {{original}, {}, {}}).findings) {
    if (finding.attribute == metareview::EAttribute::kInternalName) {
      ++spellings;
    } else {
      EXPECT_EQ(finding.path, "class/Part/property/" + missing);
      EXPECT_EQ(finding.change, metareview::EChange::kInserted);
    }
  }
  EXPECT_EQ(spellings, 49U);
}

}  // namespace
