#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <set>
#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/GeneratedReview.h"
#include "metareview2024/render/RenderedReview.h"

namespace metareview {
namespace {

using testing::HasSubstr;
using testing::Not;

const char* kReviewSuite =
    "    <testsuite name=\"upgrade: review\" tests=\"1\" failures=\"0\" errors=\"0\" skipped=\"0\" time=\"0\">\n"
    "        <testcase classname=\"upgrade: review\" name=\"complete\" time=\"0\"/>\n"
    "    </testsuite>\n";

SFinding Own() {
  return test::Made("class/Own", EChange::kInserted, "class-inserted");
}

std::string Document(const std::string& counts, const std::string& suites) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"upgradesrv review: upgrade\" " + counts +
         " time=\"0\">\n" + suites + "</testsuites>\n";
}

/// The attribute of the first element of that name, looked for in depth.
std::string Attribute(const tinyxml2::XMLElement* parent, const std::string& name, const char* attribute) {
  for (const auto* element = parent->FirstChildElement(); element != nullptr; element = element->NextSiblingElement()) {
    if (name == element->Name()) {
      const char* const value = element->Attribute(attribute);
      return value != nullptr ? value : "";
    }
    if (const std::string value = Attribute(element, name, attribute); !value.empty()) {
      return value;
    }
  }
  return "";
}

TEST(JunitReviewTest, HasATestCasePerElementPassingOnesToo) {
  SReview review = test::MadeReview({Own()});
  review.equal = {"class/Part", "behavior/Versioned"};
  EXPECT_EQ(
      test::Rendered("junit", review),
      Document(
          "tests=\"4\" failures=\"1\" errors=\"0\" skipped=\"0\"",
          std::string(kReviewSuite) +
              "    <testsuite name=\"upgrade: class\" tests=\"2\" failures=\"1\" errors=\"0\" skipped=\"0\" "
              "time=\"0\">\n"
              "        <testcase classname=\"upgrade: class\" name=\"Own\" time=\"0\">\n"
              "            <failure message=\"Only this installation has class Own. The upgrade leaves it alone.\" "
              "type=\"safe\">[safe] class/Own\n"
              "    Only this installation has class Own. The upgrade leaves it alone.\n"
              "</failure>\n"
              "        </testcase>\n"
              "        <testcase classname=\"upgrade: class\" name=\"Part\" time=\"0\"/>\n"
              "    </testsuite>\n"
              "    <testsuite name=\"upgrade: behavior\" tests=\"1\" failures=\"0\" errors=\"0\" skipped=\"0\" "
              "time=\"0\">\n"
              "        <testcase classname=\"upgrade: behavior\" name=\"Versioned\" time=\"0\"/>\n"
              "    </testsuite>\n"));
}

TEST(JunitReviewTest, SaysWhatEachDifferenceMeansAndWhoAcceptedIt) {
  const std::string shortened =
      "The upgrade shortens Code from 48 to 32 characters. 137 of 20,341 stored values are longer and would be cut or "
      "refused. The decision on record is about 40 here and 32 shipped, so it no longer applies. The decision on "
      "record expired on 2026-10-31.";
  const std::string taken =
      "The upgrade adds link Uses with class id 1001 and table T_USES, which class Own already has here.";
  EXPECT_EQ(
      test::Rendered("junit", test::FullReview()),
      Document(
          "tests=\"4\" failures=\"2\" errors=\"0\" skipped=\"1\"",
          std::string(kReviewSuite) +
              "    <testsuite name=\"upgrade: class\" tests=\"2\" failures=\"1\" errors=\"0\" skipped=\"1\" "
              "time=\"0\">\n"
              "        <testcase classname=\"upgrade: class\" name=\"Part\" time=\"0\">\n"
              "            <failure message=\"" +
              shortened + "\" type=\"loss\">[loss] class/Part/property/Code/length\n    " + shortened +
              "\n[safe] class/Part/property/Weight/precision\n"
              "    The upgrade keeps 3 instead of 6 decimal places of Weight. None of 884 stored values has more. "
              "Without the count it would be judged loss.\n"
              "[loss] class/Part/property/Sum/field\n"
              "    The upgrade keeps Sum in column F_SUM instead of F_SHA. The values in F_SHA would be left behind. "
              "Stored values could not be counted: no column F_SHA in T_PART.\n"
              "</failure>\n"
              "        </testcase>\n"
              "        <testcase classname=\"upgrade: class\" name=\"Own\" time=\"0\">\n"
              "            <skipped message=\"Accepted by jo until 2027-06-30: ours\"/>\n"
              "            <system-out>[safe] class/Own\n"
              "    Only this installation has class Own. The upgrade leaves it alone.\n"
              "    Accepted by jo until 2027-06-30: ours\n"
              "</system-out>\n"
              "        </testcase>\n"
              "    </testsuite>\n"
              "    <testsuite name=\"upgrade: link\" tests=\"1\" failures=\"1\" errors=\"0\" skipped=\"0\" "
              "time=\"0\">\n"
              "        <testcase classname=\"upgrade: link\" name=\"Uses\" time=\"0\">\n"
              "            <failure message=\"" +
              taken + "\" type=\"block\">[block] link/Uses\n    " + taken +
              "\n</failure>\n"
              "        </testcase>\n"
              "    </testsuite>\n"));
}

TEST(JunitReviewTest, HasNoEmptySuite) {
  EXPECT_EQ(test::Rendered("junit", test::MadeReview({})),
            Document("tests=\"1\" failures=\"0\" errors=\"0\" skipped=\"0\"", kReviewSuite));
}

TEST(JunitReviewTest, AnAcceptedElementIsSkippedWithItsReason) {
  const std::string text = test::Rendered("junit", test::MadeReview({test::Accepted(Own(), {"ours", "jo", {}})}));
  EXPECT_THAT(text, HasSubstr("tests=\"2\" failures=\"0\" errors=\"0\" skipped=\"1\""));
  EXPECT_THAT(text, HasSubstr("<skipped message=\"Accepted by jo: ours\"/>"));
  EXPECT_THAT(text, Not(HasSubstr("<failure")));
}

TEST(JunitReviewTest, AnElementWithAnAcceptedFindingAndOneThatCountsFails) {
  const SFinding counts = test::MadeChange("class/Own/display_name", "display-name", "a", "b");
  const std::string text =
      test::Rendered("junit", test::MadeReview({test::Accepted(Own(), {"ours", "jo", {}}), counts}));
  EXPECT_THAT(text, HasSubstr("tests=\"2\" failures=\"1\" errors=\"0\" skipped=\"0\""));
  EXPECT_THAT(text, HasSubstr("<system-out>[safe] class/Own\n"));
}

TEST(JunitReviewTest, AnElementWithAnAcceptedFindingAndOneThatMerelyDoesNotCountPasses) {
  const SFinding open = test::MadeChange("class/Own/table_name", "table-moved", "T_A", "T_B");
  const SReview review = test::MadeReview({test::Accepted(Own(), {"ours", "jo", {}}), open});
  SRenderOptions options;
  options.failOn = std::nullopt;
  const std::string text = test::Rendered("junit", review, options);
  EXPECT_THAT(text, HasSubstr("tests=\"2\" failures=\"0\" errors=\"0\" skipped=\"0\""));
  EXPECT_THAT(text, Not(HasSubstr("<skipped")));
  EXPECT_THAT(text, HasSubstr("[loss] class/Own/table_name"));
}

TEST(JunitReviewTest, TheMessageIsOfTheWorstFindingThatCounts) {
  const SFinding name = test::MadeChange("class/Part/display_name", "display-name", "a", "b");
  const SFinding moved = test::MadeChange("class/Part/table_name", "table-moved", "T_A", "T_B");
  const SFinding accepted =
      test::Accepted(test::MadeChange("class/Part/property/P/field", "field-moved", "F_A", "F_B"), {"known", {}, {}});
  const std::string text = test::Rendered("junit", test::MadeReview({name, moved, accepted}));
  tinyxml2::XMLDocument document;
  ASSERT_EQ(document.Parse(text.c_str()), tinyxml2::XML_SUCCESS);
  EXPECT_EQ(Attribute(&*document.RootElement(), "failure", "type"), "loss");
  EXPECT_THAT(Attribute(document.RootElement(), "failure", "message"), HasSubstr("T_B"));
}

TEST(JunitReviewTest, WhatDoesNotCountForTheExitStatusFailsNothing) {
  SFinding known = test::MadeChange("class/Part/table_name", "table-moved", "T_A", "T_B");
  known.since = ESince::kKnown;
  const SReview review = test::MadeReview({Own(), known});
  SRenderOptions options;
  options.failOn = ERisk::kLoss;
  EXPECT_THAT(test::Rendered("junit", review, options), HasSubstr("tests=\"3\" failures=\"1\""));
  options.onlyNew = true;
  EXPECT_THAT(test::Rendered("junit", review, options), HasSubstr("tests=\"3\" failures=\"0\""));
  options.failOn = std::nullopt;
  options.onlyNew = false;
  EXPECT_THAT(test::Rendered("junit", review, options), HasSubstr("tests=\"3\" failures=\"0\""));
}

TEST(JunitReviewTest, AFailedReviewIsAnError) {
  SReview review;
  review.complete = false;
  review.problem = "base.json: <is> not there";
  EXPECT_EQ(test::Rendered("junit", review),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<testsuites name=\"upgradesrv review\" tests=\"1\" failures=\"0\" errors=\"1\" skipped=\"0\" "
            "time=\"0\">\n"
            "    <testsuite name=\"review\" tests=\"1\" failures=\"0\" errors=\"1\" skipped=\"0\" time=\"0\">\n"
            "        <testcase classname=\"review\" name=\"complete\" time=\"0\">\n"
            "            <error message=\"base.json: &lt;is&gt; not there\" type=\"failed\">No answer. The review did "
            "not finish, so nothing on this page may be taken for a result.</error>\n"
            "        </testcase>\n"
            "    </testsuite>\n"
            "</testsuites>\n");
}

TEST(JunitReviewTest, CharactersThatXmlCannotHoldAreShown) {
  SReview review = test::MadeReview({});
  review.equal = {"class/a\uFFFE\uFFFEb\uFFFF\uFFFFc"};
  EXPECT_THAT(test::Rendered("junit", review), HasSubstr(" name=\"a\\uFFFE\\uFFFEb\\uFFFF\\uFFFFc\""));
}

TEST(JunitReviewTest, EveryNameOfASuiteBeginsWithTheDirectory) {
  SReview review = test::MadeReview({Own()});
  review.directory = "a\"<b>\xFF\u202E";
  const std::string text = test::Rendered("junit", review);
  const std::string shown = R"(a&quot;&lt;b&gt;\xFF\u202E)";
  EXPECT_THAT(text, HasSubstr("<testsuites name=\"upgradesrv review: " + shown + "\""));
  for (const char* suite : {"review", "class"}) {
    EXPECT_THAT(text, HasSubstr("<testsuite name=\"" + shown + ": " + suite + "\""));
    EXPECT_THAT(text, HasSubstr("<testcase classname=\"" + shown + ": " + suite + "\""));
  }
  review.directory = "";
  EXPECT_THAT(test::Rendered("junit", review), HasSubstr("<testsuite name=\"class\""));
}

TEST(JunitReviewTest, NamesThatLookTheSameGetANumber) {
  const std::string visible = "A\\x01";
  const std::string control = "A\x01";
  SReview review = test::MadeReview({});
  review.equal = {"class/" + visible, "class/" + control};
  EXPECT_THAT(test::Rendered("junit", review), HasSubstr("name=\"A\\x01 (2)\""));
}

TEST(JunitReviewTest, LongNamesThatDifferInWhatIsNotShownGetNumbersInTheirOrder) {
  SReview review = test::MadeReview({});
  for (const char* middle : {"x", "y", "z"}) {
    review.equal.push_back("class/" + std::string(400, 'A') + std::string(101, *middle) + std::string(100, 'B'));
  }
  const std::string shown = std::string(400, 'A') + " … " + std::string(100, 'B');
  const std::string text = test::Rendered("junit", review);
  EXPECT_THAT(text, HasSubstr("name=\"" + shown + "\""));
  EXPECT_LT(text.find(shown + "\""), text.find(shown + " (2)\""));
  EXPECT_LT(text.find(shown + " (2)\""), text.find(shown + " (3)\""));
  EXPECT_THAT(text, HasSubstr("name=\"" + shown + " (3)\""));
}

TEST(JunitReviewTest, HostileNamesAreXmlToAnotherParserAndUnique) {
  const std::string text = test::Rendered("junit", test::HostileReview());
  tinyxml2::XMLDocument document;
  ASSERT_EQ(document.Parse(text.c_str()), tinyxml2::XML_SUCCESS);
  std::set<std::string> names;
  for (const auto* suite = document.RootElement()->FirstChildElement(); suite != nullptr;
       suite = suite->NextSiblingElement()) {
    for (const auto* one = suite->FirstChildElement(); one != nullptr; one = one->NextSiblingElement()) {
      EXPECT_TRUE(names.insert(std::string(one->Attribute("classname")) + "\n" + one->Attribute("name")).second);
    }
  }
  EXPECT_GT(names.size(), 5U);
}

}  // namespace
}  // namespace metareview
