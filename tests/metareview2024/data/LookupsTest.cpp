#include "metareview2024/data/Lookups.h"

#include <gmock/gmock.h>

#include "metareview2024/Metamodels.h"

using metareview::SLookup;
using test::SModel;
using test::SProperty;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

SProperty Property(const std::string& name, const std::string& type, std::uint32_t length = 0) {
  SProperty property = test::Property(name);
  property.type = type;
  property.length = length;
  return property;
}

struct SPlan {
  /// "PATH RULE: what is counted".
  std::vector<std::string> lookups;
  std::vector<std::string> nowhere;
  /// "PATH: problem".
  std::vector<std::string> problems;
};

SPlan Plan(const metareview::SReview& review, const SModel& client) {
  const metareview::SLookups lookups = MakeLookups(review, *test::MakeMetamodel(client));
  SPlan plan;
  for (const SLookup& lookup : lookups.lookups) {
    EXPECT_EQ(lookup.path, review.findings.at(lookup.finding).path);
    plan.lookups.push_back(lookup.path + " " + std::string(lookup.rule) + ": " + DescribeLookup(lookup));
  }
  for (const std::size_t finding : lookups.nowhere) {
    plan.nowhere.push_back(review.findings.at(finding).path);
  }
  for (const metareview::SNoLookup& problem : lookups.problems) {
    plan.problems.push_back(review.findings.at(problem.finding).path + ": " + problem.problem);
  }
  return plan;
}

SModel OneClass(const SProperty& property) {
  return {{{"Part", {}, {property}}}, {}, {}};
}

std::vector<std::string> LookupsFor(const SProperty& client, const SProperty& original) {
  return Plan(test::Review(OneClass(client), OneClass(original)), OneClass(client)).lookups;
}

TEST(LookupsTest, AShorterLengthCountsLongerTexts) {
  for (const std::string type : {"string", "text", "url", "e-mail", "ip_address", "password"}) {
    EXPECT_THAT(LookupsFor(Property("Code", type, 48), Property("Code", type, 32)),
                ElementsAre("class/Part/property/Code/length length-shrinks: values of T_Part.F_Code longer than 32 "
                            "characters"))
        << type;
  }
  for (const std::string type : {"int32", "lookup", ""}) {
    EXPECT_THAT(LookupsFor(Property("Code", type, 48), Property("Code", type, 32)), IsEmpty()) << type;
  }
}

TEST(LookupsTest, ALesserPrecisionCountsWhatRoundingChanges) {
  SProperty client = Property("Mass", "float64");
  SProperty original = client;
  client.precision = 4;
  original.precision = 2;
  EXPECT_THAT(LookupsFor(client, original),
              ElementsAre("class/Part/property/Mass/precision precision-shrinks: values of T_Part.F_Mass that rounding "
                          "to 2 decimal places changes"));
}

TEST(LookupsTest, ANarrowerNumericTypeCountsWhatItCannotHold) {
  EXPECT_THAT(
      LookupsFor(Property("Mass", "int64"), Property("Mass", "int16")),
      ElementsAre("class/Part/property/Mass/type type-narrowed: values of T_Part.F_Mass that int16 cannot hold"));
  EXPECT_THAT(
      LookupsFor(Property("Mass", "money"), Property("Mass", "int8")),
      ElementsAre("class/Part/property/Mass/type type-narrowed: values of T_Part.F_Mass that int8 cannot hold"));
  EXPECT_THAT(LookupsFor(Property("Mass", "text"), Property("Mass", "string")), IsEmpty());
  EXPECT_THAT(LookupsFor(Property("Mass", "datetime"), Property("Mass", "date")), IsEmpty());
}

TEST(LookupsTest, ATighterLimitCountsNumbersBeyondIt) {
  SProperty client = Property("Mass", "float64");
  SProperty original = client;
  original.max = "99.5";
  original.min = "-1";
  EXPECT_THAT(LookupsFor(client, original),
              ElementsAre("class/Part/property/Mass/max max-tightens: values of T_Part.F_Mass greater than 99.5",
                          "class/Part/property/Mass/min min-tightens: values of T_Part.F_Mass less than -1"));
}

TEST(LookupsTest, ALimitThatIsNoNumberIsNotLookedUp) {
  SProperty client = Property("Mass", "float64");
  SProperty original = client;
  original.max = "1); DROP TABLE T; --";
  EXPECT_THAT(LookupsFor(client, original), IsEmpty());
}

TEST(LookupsTest, AMovedTableCountsTheRowsOfTheClients) {
  SModel client = OneClass(Property("Code", "string"));
  SModel original = client;
  original.classes.front().tableName = "T_OTHER";
  EXPECT_THAT(Plan(test::Review(client, original), client).lookups,
              ElementsAre("class/Part/table_name table-moved: rows of T_Part"));
}

TEST(LookupsTest, WhatIsCountedWithoutALimitHasNone) {
  const SModel client = {{{"Part", {}, {}}}, {}, {}};
  const SModel original = {{}, {}, {}};
  const metareview::SLookups lookups =
      MakeLookups(test::Review(client, original, client), *test::MakeMetamodel(client));
  ASSERT_EQ(lookups.lookups.size(), 1U);
  EXPECT_EQ(lookups.lookups.front().limit, "");
}

TEST(LookupsTest, AMovedFieldCountsTheValuesOfTheClients) {
  SProperty original = Property("Code", "string");
  original.field = "F_OTHER";
  EXPECT_THAT(LookupsFor(Property("Code", "string"), original),
              ElementsAre("class/Part/property/Code/field field-moved: values of T_Part.F_Code"));
}

TEST(LookupsTest, WhatIsWithdrawnCountsWhatItHolds) {
  SModel client = OneClass(Property("Code", "string"));
  client.classes.push_back({"Old", {}, {}});
  client.links.push_back({"OldLink", {}, {}});
  const SModel base = client;
  SModel original;
  original.classes.push_back({"Part", {}, {}});
  EXPECT_THAT(
      Plan(test::Review(client, original, base), client).lookups,
      ElementsAre("class/Part/property/Code property-withdrawn: values of T_Part.F_Code",
                  "class/Old class-withdrawn: rows of T_Old", "link/OldLink link-withdrawn: rows of T_OldLink"));
}

TEST(LookupsTest, WhatOnlyTheCustomerHasIsNotLookedUp) {
  SModel client = OneClass(Property("Code", "string"));
  client.classes.push_back({"Own", {}, {}});
  const SModel original = OneClass(Property("Code", "string"));
  const SPlan plan = Plan(test::Review(client, original, original), client);
  EXPECT_THAT(plan.lookups, IsEmpty());
  EXPECT_THAT(plan.nowhere, IsEmpty());
  EXPECT_THAT(plan.problems, IsEmpty());
}

SModel WithBehavior(const std::vector<SProperty>& properties) {
  return {{{"Part", {"versioned", "VERSIONED"}, {}}, {"Document", {}, {}}},
          {{"Uses", {"Versioned"}, {}}},
          {{"Versioned", {}, properties}}};
}

TEST(LookupsTest, ABehaviorsPropertyIsLookedUpWhereTheClientListsIt) {
  const SModel client = WithBehavior({Property("Rev", "string", 48)});
  const SModel original = WithBehavior({Property("Rev", "string", 32)});
  EXPECT_THAT(
      Plan(test::Review(client, original), client).lookups,
      ElementsAre("behavior/Versioned/property/Rev/length length-shrinks: values of T_Part.F_Rev longer than 32 "
                  "characters",
                  "behavior/Versioned/property/Rev/length length-shrinks: values of T_Uses.F_Rev longer than 32 "
                  "characters"));
}

TEST(LookupsTest, ATableOfSeveralClassesIsCountedOnce) {
  SModel client = WithBehavior({Property("Rev", "string", 48)});
  client.links.front().tableName = "t_PART";
  SModel original = client;
  original.behaviors = {{"Versioned", {}, {Property("Rev", "string", 32)}}};
  EXPECT_THAT(Plan(test::Review(client, original), client).lookups, testing::SizeIs(1));
}

TEST(LookupsTest, ABehaviorThatNothingListsHoldsNoValues) {
  SModel client = WithBehavior({Property("Rev", "string", 48)});
  client.classes.clear();
  client.links.clear();
  SModel original = client;
  original.behaviors = {{"Versioned", {}, {Property("Rev", "string", 32)}}};
  const SPlan plan = Plan(test::Review(client, original), client);
  EXPECT_THAT(plan.lookups, IsEmpty());
  EXPECT_THAT(plan.nowhere, ElementsAre("behavior/Versioned/property/Rev/length"));
}

TEST(LookupsTest, AWithdrawnBehaviorCountsAllItsColumnsTogether) {
  SProperty again = Property("Again", "string");
  again.field = "f_rev";
  const SModel client = WithBehavior({Property("Rev", "string"), Property("Iter", "int32"), again});
  SModel original = client;
  original.behaviors.clear();
  original.links.front().behaviors.clear();
  EXPECT_THAT(
      Plan(test::Review(client, original, client), client).lookups,
      ElementsAre(
          "link/Uses/behavior/Versioned listed-behavior-columns-withdrawn: rows with a value in at least one of "
          "T_Uses.F_Rev, T_Uses.F_Iter",
          "behavior/Versioned behavior-columns-withdrawn: rows with a value in at least one of T_Part.F_Rev, "
          "T_Part.F_Iter",
          "behavior/Versioned behavior-columns-withdrawn: rows with a value in at least one of T_Uses.F_Rev, "
          "T_Uses.F_Iter"));
}

TEST(LookupsTest, WithoutATableOrColumnThereIsAProblem) {
  SModel client = {
      {{"Part", {}, {Property("Code", "string", 48)}}, {"Document", {}, {Property("Code", "string", 48)}}}, {}, {}};
  SModel original = client;
  for (test::SClass& element : original.classes) {
    element.properties.front().length = 32;
  }
  client.classes[0].tableName.clear();
  original.classes[0].tableName.clear();
  client.classes[1].properties.front().field.clear();
  original.classes[1].properties.front().field.clear();
  const SPlan plan = Plan(test::Review(client, original), client);
  EXPECT_THAT(plan.lookups, IsEmpty());
  EXPECT_THAT(plan.problems,
              ElementsAre("class/Part/property/Code/length: the client's metamodel names no table",
                          "class/Document/property/Code/length: the client's metamodel names no column"));
}

TEST(LookupsTest, TheDescriptionFitsOnOneLine) {
  const SLookup lookup = {0, "", "", "T\nDROP", {}, metareview::EMeasure::kAnyRow, ""};
  EXPECT_EQ(DescribeLookup(lookup), "rows of T\\nDROP");
}

}  // namespace
