#include <gmock/gmock.h>

#include <map>

#include "metareview2024/Metamodels.h"

// What the check's own report shows; a test beside the module compares the two.
namespace {

using test::FindingAt;
using test::Property;
using test::Review;
using test::SModel;
using test::SProperty;

SModel With(const SProperty& property) {
  return {{{"Part", {}, {property}}}, {{"Near", {}, {property}}}, {{"Locked", {}, {property}}}};
}

TEST(ReportedTest, ItShowsTypeLengthDefaultPrecisionMaximumAndMinimumOnly) {
  const SProperty original = {"Code", "Code", "F_CODE", "string", 1, "d", 1, "9", "1", "User"};
  const SProperty client = {"code", "Number", "F_OWN", "text", 2, "e", 2, "8", "2", "Group"};
  const std::map<std::string, bool> expected = {{"internal_name", false},
                                                {"display_name", false},
                                                {"field", false},
                                                {"type", true},
                                                {"length", true},
                                                {"default_value", true},
                                                {"precision", true},
                                                {"max", true},
                                                {"min", true},
                                                {"lookup_internal_name", false}};
  const auto review = Review(With(client), With(original));
  for (const std::string element : {"class/Part", "link/Near", "behavior/Locked"}) {
    for (const auto& [attribute, reported] : expected) {
      EXPECT_EQ(FindingAt(review, element + "/property/code/" + attribute).reported, reported) << element << attribute;
    }
  }
}

TEST(ReportedTest, AttributesOfElementsAndMethodsAreNotShown) {
  const SModel client = {{{"part", {}, {}, "a", 1, "T_1"}}, {}, {{"locked", {"lock"}, {}, "a"}}};
  const SModel original = {{{"Part", {}, {}, "b", 2, "T_2"}}, {}, {{"Locked", {"Lock"}, {}, "b"}}};
  const auto review = Review(client, original);
  EXPECT_EQ(review.findings.size(), 8U);
  for (const metareview::SFinding& finding : review.findings) {
    EXPECT_FALSE(finding.reported) << finding.path;
  }
}

TEST(ReportedTest, ListedBehaviorsAreShownOfClassesAndNeverOfLinks) {
  const SModel client = {{{"Part", {"A"}, {}}}, {{"Near", {"A"}, {}}}, {}};
  const SModel original = {{{"Part", {"B"}, {}}}, {{"Near", {"B"}, {}}}, {}};
  const auto review = Review(client, original);
  EXPECT_TRUE(FindingAt(review, "class/Part/behavior/A").reported);
  EXPECT_TRUE(FindingAt(review, "class/Part/behavior/B").reported);
  EXPECT_FALSE(FindingAt(review, "link/Near/behavior/A").reported);
  EXPECT_FALSE(FindingAt(review, "link/Near/behavior/B").reported);
}

TEST(ReportedTest, MethodsAndPropertiesThatOnlyOneSideHasAreShown) {
  const SModel client = {{}, {{"Near", {}, {Property("P")}}}, {{"Locked", {"M"}, {Property("P")}}}};
  const SModel original = {{}, {{"Near", {}, {Property("Q")}}}, {{"Locked", {"N"}, {Property("Q")}}}};
  const auto review = Review(client, original);
  EXPECT_EQ(review.findings.size(), 6U);
  for (const metareview::SFinding& finding : review.findings) {
    EXPECT_TRUE(finding.reported) << finding.path;
  }
}

/// Whether the report shows the inserted class beside the other difference between the two.
bool IsOwnShownBeside(SModel client, const SModel& original) {
  client.classes.insert(client.classes.begin(), {"Own", {}, {}});
  return FindingAt(Review(client, original), "class/Own").reported;
}

TEST(ReportedTest, AnInsertedElementIsShownBesideWhatElseIsShownOfItsKind) {
  const SModel part = {{{"Part", {}, {}}}, {}, {}};
  EXPECT_FALSE(IsOwnShownBeside(part, part));
  EXPECT_TRUE(IsOwnShownBeside({}, part));
  EXPECT_TRUE(IsOwnShownBeside({{{"Part", {}, {Property("P")}}}, {}, {}}, part));
  EXPECT_TRUE(IsOwnShownBeside(part, {{{"Part", {}, {Property("P")}}}, {}, {}}));
  EXPECT_TRUE(IsOwnShownBeside({{{"Part", {"A"}, {}}}, {}, {}}, part));
  EXPECT_FALSE(IsOwnShownBeside({{{"Part", {}, {}, "other"}}, {}, {}}, part));
  EXPECT_FALSE(
      IsOwnShownBeside({{{"Part", {}, {}}}, {{"Near", {}, {}}}, {}}, {{{"Part", {}, {}}}, {{"Far", {}, {}}}, {}}));
}

TEST(ReportedTest, AnInsertedLinkIsNotShownBesideListedBehaviorsOfLinks) {
  const SModel client = {{}, {{"Near", {"A"}, {}}, {"Own", {}, {}}}, {}};
  EXPECT_FALSE(FindingAt(Review(client, {{}, {{"Near", {}, {}}}, {}}), "link/Own").reported);
}

}  // namespace
