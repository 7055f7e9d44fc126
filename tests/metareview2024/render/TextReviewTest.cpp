#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "kvxsptfile/ReadFile.h"
#include "metareview2024/MadeReview.h"
#include "metareview2024/render/RenderedReview.h"
#include "metareview2024/render/TextLayout.h"

namespace metareview {
namespace {

using test::Made;
using test::MadeChange;
using test::MadeReview;
using test::Rendered;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A line of 100 columns with a text at each end.
std::string Ends(const std::string& left, const std::string& right) {
  return left + std::string(100 - left.size() - right.size(), ' ') + right + "\n";
}

/// What begins with a heading, up to the next empty line.
std::string Section(const std::string& text, const std::string& heading) {
  const std::size_t begin = text.find("\n" + heading + "\n") + 1;
  return text.substr(begin, text.find("\n\n", begin) + 1 - begin);
}

TEST(TextReviewTest, AnswersFirst) {
  EXPECT_THAT(Rendered("text", test::FullReview()),
              StartsWith("Not yet. 3 differences have to be decided first.\n"
                         "2 may lose or alter stored values. One may be refused.\n"
                         "One of 5 is not in the check's report, 1 to be decided: *\n"
                         "\n"
                         "client.json (client) was compared with original.json (original) and base.json (base). The "
                         "review is\n"
                         "complete: classes, links, behaviors. Stored values were looked up in data.db. For one "
                         "difference\n"
                         "they could not be counted, or not all of them. Compared with the earlier review "
                         "yesterday.json: 2\n"
                         "new, 1 changed, 2 known, 1 gone.\n"
                         "\n"));
}

TEST(TextReviewTest, AnswersForConflictsAndForWhatTheReportLeavesOut) {
  SFinding safe = MadeChange("class/A/display_name", "display-name", "a", "b", EOrigin::kBoth);
  const SFinding more = MadeChange("class/B/display_name", "display-name", "a", "b", EOrigin::kBoth);
  const SFinding loss = MadeChange("class/C/table_name", "table-moved", "T_1", "T_2", EOrigin::kBoth);
  const SFinding block = MadeChange("class/D/class_id", "class-id", 1U, 2U, EOrigin::kBoth);
  EXPECT_THAT(Rendered("text", MadeReview({safe, block, loss})),
              StartsWith("Not yet. 3 differences have to be decided first.\n"
                         "One may lose or alter stored values. One may be refused. One more was changed on both "
                         "sides.\n\n"));
  EXPECT_THAT(Rendered("text", MadeReview({safe, more})),
              StartsWith("Not yet. 2 differences have to be decided first.\n"
                         "2 more were changed on both sides.\n\n"));
  safe.origin = EOrigin::kCustomer;
  safe.reported = false;
  EXPECT_THAT(Rendered("text", MadeReview({safe})),
              StartsWith("Yes. One difference is left, and it touches nothing stored.\n"
                         "One of 1 is not in the check's report: *\n\n"));
}

TEST(TextReviewTest, SaysWhatIsPeculiarAboutTheBase) {
  SReview review = MadeReview({Made("class/Own", EChange::kInserted, "class-inserted")});
  review.notes = {ENote::kBaseEqualsClient, ENote::kBaseEqualsOriginal};
  EXPECT_THAT(Rendered("text", review),
              HasSubstr("\ncomplete: classes, links, behaviors.\n"
                        "Base and client are equal: every difference is the vendor's.\n"
                        "Base and original are equal: every difference is the customer's.\n\n"));
}

TEST(TextReviewTest, SaysWhenNothingDiffers) {
  SReview review = MadeReview({});
  review.base.reset();
  review.elements = {EKind::kClass, EKind::kBehavior};
  EXPECT_EQ(Rendered("text", review),
            "Yes. Installation and upgrade do not differ.\n"
            "\n"
            "client.json (client) was compared with original.json (original). Without a base nobody can tell who\n"
            "made a difference. The review is complete: classes, behaviors. Not compared: links.\n"
            "\n"
            "              loss    block   attention     safe   accepted    total\n"
            "classes          0        0           0        0          0        0\n"
            "behaviors        0        0           0        0          0        0\n"
            "all              0        0           0        0          0        0\n");
}

TEST(TextReviewTest, CountsByKindAndRisk) {
  EXPECT_EQ(Section(Rendered("text", test::FullReview()),
                    "              loss    block   attention     safe   accepted    total"),
            "              loss    block   attention     safe   accepted    total\n"
            "classes          2        0           0        1          1        4\n"
            "links            0        1           0        0          0        1\n"
            "behaviors        0        0           0        0          0        0\n"
            "all              2        1           0        1          1        5\n");
}

TEST(TextReviewTest, SaysHowValuesAndOriginsAreToBeRead) {
  const std::string values = "a -> b: the value here, then the shipped one.";
  EXPECT_THAT(Rendered("text", test::FullReview()),
              HasSubstr("\n\n" + values +
                        " customer: changed here since the base; vendor: changed\nby the upgrade.\n\nDECIDE FIRST\n"));
  SReview review = test::FullReview();
  review.base.reset();
  EXPECT_THAT(Rendered("text", review), HasSubstr("\n\n" + values + "\n\nDECIDE FIRST\n"));
}

TEST(TextReviewTest, TableAloneIsTheTable) {
  SRenderOptions options;
  options.isTableOnly = true;
  EXPECT_EQ(Rendered("text", MadeReview({Made("class/Own", EChange::kInserted, "class-inserted")}), options),
            "              loss    block   attention     safe   accepted    total\n"
            "classes          0        0           0        1          0        1\n"
            "links            0        0           0        0          0        0\n"
            "behaviors        0        0           0        0          0        0\n"
            "all              0        0           0        1          0        1\n");
}

TEST(TextReviewTest, ColumnsOfTheTableAreAsWideAsTheirWords) {
  SRenderOptions chinese;
  chinese.isTableOnly = true;
  chinese.words = CWords::Find("zh");
  EXPECT_EQ(Rendered("text", MadeReview({}), chinese),
            "         丢失     受阻     留意     安全   已接受     合计\n"
            "类          0        0        0        0        0        0\n"
            "关联        0        0        0        0        0        0\n"
            "行为        0        0        0        0        0        0\n"
            "全部        0        0        0        0        0        0\n");
}

TEST(TextReviewTest, TellsWhatToDecideFirst) {
  EXPECT_EQ(Section(Rendered("text", test::FullReview()), "DECIDE FIRST"),
            "DECIDE FIRST\n" + Ends("class/Part/property/Code/length", "length-shrinks, customer, changed since") +
                "LOSS      The upgrade shortens Code from 48 to 32 characters. 137 of 20,341 stored values are longer\n"
                "          and would be cut or refused. The decision on record is about 40 here and 32 shipped, so it\n"
                "          no longer applies. The decision on record expired on 2026-10-31.\n" +
                Ends("class/Part/property/Sum/field", "field-moved, customer, new *") +
                "LOSS      The upgrade keeps Sum in column F_SUM instead of F_SHA. The values in F_SHA would be left\n"
                "          behind. Stored values could not be counted: no column F_SHA in T_PART.\n" +
                Ends("link/Uses", "link-identity-taken, vendor, new") +
                "BLOCK     The upgrade adds link Uses with class id 1001 and table T_USES, which class Own already\n"
                "          has here.\n");
}

TEST(TextReviewTest, ListsEveryFindingAndSaysAgainOnlyItsValues) {
  EXPECT_EQ(Section(Rendered("text", test::FullReview()), "CLASSES"),
            "CLASSES\n" +
                Ends("LOSS      class/Part/property/Code/length  48 -> 32", "length-shrinks, customer, changed since") +
                Ends("safe      class/Part/property/Weight/precision  6 -> 3", "precision-shrinks, customer") +
                "          The upgrade keeps 3 instead of 6 decimal places of Weight. None of 884 stored values has\n"
                "          more. Without the count it would be judged loss.\n" +
                Ends("LOSS      class/Part/property/Sum/field  F_SHA -> F_SUM", "field-moved, customer, new *") +
                Ends("accepted  class/Own", "class-inserted, customer") +
                "          Only this installation has class Own. The upgrade leaves it alone.\n"
                "          Accepted by jo until 2027-06-30: ours\n");
  EXPECT_EQ(Section(Rendered("text", test::FullReview()), "LINKS"),
            "LINKS\n" + Ends("BLOCK     link/Uses  is added", "link-identity-taken, vendor, new"));
  EXPECT_THAT(Rendered("text", test::FullReview()), Not(HasSubstr("\nBEHAVIORS\n")));
}

TEST(TextReviewTest, ListsDecisionsThatNoLongerHoldAndWhatIsGone) {
  EXPECT_EQ(Section(Rendered("text", test::FullReview()), "DECISIONS"),
            "DECISIONS\n"
            "outdated  class/Part/property/Code/length: accepted for 40 here and 32 shipped, now 48 here and 32\n"
            "          shipped. Reason: longest has 31\n"
            "expired   class/Part/property/Code/length: accepted until 2026-10-31. Reason: until later\n"
            "stale     class/*/behavior/Gone: nothing differs there. Reason: add-on\n"
            "gone      behavior/Rated: was only in the upgrade.\n");
}

TEST(TextReviewTest, ListsDecisionsOfOneKind) {
  SDecision decision;
  decision.path = "class/A/class_id";
  decision.original = 1U;
  decision.client = 2U;
  decision.acceptance = {"fine", {}, "2026-10-31"};
  SReview outdated = MadeReview({});
  outdated.outdated.push_back({decision, 1U, 3U});
  SReview expired = MadeReview({});
  expired.expired.push_back(decision);
  SReview stale = MadeReview({});
  stale.stale.push_back(decision);
  SReview gone = MadeReview({});
  gone.gone.push_back({FindingId("class/A", EChange::kInserted), "class/A", EChange::kInserted});
  EXPECT_THAT(
      Rendered("text", outdated),
      EndsWith("\n\nDECISIONS\n"
               "outdated  class/A/class_id: accepted for 2 here and 1 shipped, now 3 here and 1 shipped. Reason:\n"
               "          fine\n"));
  EXPECT_THAT(Rendered("text", expired),
              EndsWith("\n\nDECISIONS\nexpired   class/A/class_id: accepted until 2026-10-31. Reason: fine\n"));
  EXPECT_THAT(Rendered("text", stale),
              EndsWith("\n\nDECISIONS\nstale     class/A/class_id: nothing differs there. Reason: fine\n"));
  EXPECT_THAT(Rendered("text", gone), EndsWith("\n\nDECISIONS\ngone      class/A: was only here.\n"));
}

TEST(TextReviewTest, EndsWithTheCommandsThatComeNext) {
  EXPECT_THAT(Rendered("text", test::FullReview()), EndsWith("\n\n"
                                                             "accept    upgradesrv decide --reason '' upgrade PATH...\n"
                                                             "explain   upgradesrv explain RULE\n"
                                                             "prune     upgradesrv decide --prune upgrade\n"));
}

TEST(TextReviewTest, QuotesADirectoryForTheShell) {
  SReview review = MadeReview({Made("class/Own", EChange::kInserted, "class-inserted")});
  review.directory = "it's here";
  EXPECT_THAT(Rendered("text", review), HasSubstr("decide --reason '' 'it'\\''s here' PATH...\n"));
}

TEST(TextReviewTest, AttributesOfOnePropertyAreDecidedTogetherWorstFirst) {
  SFinding least = MadeChange("class/A/property/P/min", "min-tightens", "0.25", "1", EOrigin::kBoth);
  least.base = "0.250";
  const SReview review = MadeReview({MadeChange("class/A/property/P/default_value", "default-changes", "3", "6"),
                                     MadeChange("class/A/property/P/max", "max-tightens", "9", "5"), least,
                                     MadeChange("class/A/property/P/type", "type-narrowed", "int16", "int8")});
  EXPECT_EQ(Section(Rendered("text", review), "DECIDE FIRST"),
            "DECIDE FIRST\n"
            "class/A/property/P/\n"
            "LOSS      type (type-narrowed, customer): The upgrade changes the type of P from int16 to int8.\n"
            "          Values outside the range of int8 would not fit. Stored values were not counted.\n"
            "BLOCK     max (max-tightens, customer): The upgrade lowers the maximum of P from 9 to 5. Stored\n"
            "          values were not counted.\n"
            "BLOCK     min (min-tightens, both, conflict): The upgrade raises the minimum of P from 0.25 to 1.\n"
            "          Stored values were not counted. Both sides changed it from 0.250.\n");
}

TEST(TextReviewTest, WhatIsWorseComesFirst) {
  const SReview review = MadeReview({MadeChange("class/A/property/P/max", "max-tightens", "9", "5"),
                                     Made("class/B", EChange::kInserted, "class-withdrawn", EOrigin::kVendor),
                                     MadeChange("class/C/table_name", "table-moved", "T_1", "T_2")});
  const std::string text = Section(Rendered("text", review), "DECIDE FIRST");
  EXPECT_LT(text.find("class/B"), text.find("class/C/"));
  EXPECT_LT(text.find("class/C/"), text.find("class/A/"));
}

TEST(TextReviewTest, AConflictShowsTheBase) {
  SFinding finding = MadeChange("class/A/property/P/length", "length-grows", 5U, 9U, EOrigin::kBoth);
  finding.base = 4U;
  EXPECT_THAT(Rendered("text", MadeReview({finding})),
              HasSubstr(Ends("safe      class/A/property/P/length  5 -> 9, was 4", "length-grows, both, conflict")));
}

TEST(TextReviewTest, SaysWhatBecomesOfWhatOnlyOneSideHas) {
  const auto state = [](const SFinding& finding) {
    const std::string text = Section(Rendered("text", MadeReview({finding})), "CLASSES");
    const std::size_t begin = text.find('\n') + 1;
    return text.substr(begin, text.find("   ", begin + 10) - begin);
  };
  EXPECT_EQ(state(Made("class/A", EChange::kInserted, "class-withdrawn", EOrigin::kVendor)),
            "LOSS      class/A  no longer shipped");
  EXPECT_EQ(state(Made("class/A", EChange::kInserted, "class-withdrawn", EOrigin::kBoth)),
            "LOSS      class/A  no longer shipped");
  // A decision may make more of a rule.
  SFinding own = Made("class/A", EChange::kInserted, "class-inserted", EOrigin::kCustomer);
  own.risk = ERisk::kBlock;
  EXPECT_EQ(state(own), "BLOCK     class/A  only here, stays");
  own.origin = EOrigin::kUnknown;
  EXPECT_EQ(state(own), "BLOCK     class/A  only here, stays");
  EXPECT_EQ(state(Made("class/A", EChange::kDeleted, "class-identity-taken", EOrigin::kUnknown)),
            "BLOCK     class/A  is added");
  EXPECT_EQ(state(Made("class/A", EChange::kDeleted, "class-identity-taken", EOrigin::kVendor)),
            "BLOCK     class/A  is added");
  EXPECT_EQ(state(Made("class/A", EChange::kDeleted, "class-identity-taken", EOrigin::kCustomer)),
            "BLOCK     class/A  is added again");
  EXPECT_EQ(state(Made("class/A", EChange::kDeleted, "class-deleted", EOrigin::kBoth)),
            "attention class/A  is added again");
}

TEST(TextReviewTest, AnEmptyValueIsAWord) {
  EXPECT_THAT(
      Rendered("text", MadeReview({MadeChange("class/A/property/P/default_value", "default-changes", "", "b")})),
      HasSubstr("class/A/property/P/default_value  (empty) -> b"));
}

TEST(TextReviewTest, WhatDoesNotFitBesideAPathComesBelow) {
  const std::string name(60, 'x');
  const SFinding finding = MadeChange("class/" + name + "/property/P/max", "max-tightens", "123456789", "1");
  const std::string text = Rendered("text", MadeReview({finding}));
  const std::string path = "class/" + name + "/property/P/max";
  EXPECT_THAT(text, HasSubstr("\nDECIDE FIRST\n" + path + "\n" + Ends("", "max-tightens, customer") + "BLOCK "));
  EXPECT_THAT(text, HasSubstr("\nBLOCK     " + path + "\n" + Ends("", "max-tightens, customer") +
                              "          123456789 -> 1\n"));
}

TEST(TextReviewTest, WhatFitsJustSoStaysBesideThePath) {
  const std::string right = "max-tightens, customer";
  const auto path = [](std::size_t size) { return "class/" + std::string(size - 21, 'x') + "/property/P/max"; };
  const auto render = [&](std::size_t size) {
    return Rendered("text", MadeReview({MadeChange(path(size), "max-tightens", "9", "1")}));
  };
  // Two columns are left between a path and what is at its right.
  EXPECT_THAT(render(76), HasSubstr("\nDECIDE FIRST\n" + path(76) + "  " + right + "\n"));
  EXPECT_THAT(render(77), HasSubstr("\nDECIDE FIRST\n" + path(77) + "\n" + Ends("", right)));
  EXPECT_THAT(render(58), HasSubstr("\nBLOCK     " + path(58) + "  9 -> 1  " + right + "\n"));
  EXPECT_THAT(render(59), HasSubstr("\n" + Ends("BLOCK     " + path(59), right) + "          9 -> 1\n"));
}

TEST(TextReviewTest, NoLineIsWiderThanAHundredColumnsInAnyLanguage) {
  for (const SLanguage& language : Languages()) {
    SRenderOptions options;
    options.words = CWords::Find(language.code);
    std::istringstream lines(Rendered("text", test::FullReview(), options));
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(DisplayWidth(line), 100U) << line;
      EXPECT_TRUE(line.empty() || line.back() != ' ') << line;
    }
  }
}

TEST(TextReviewTest, MakesControlsVisible) {
  SReview review = MadeReview({MadeChange("class/A\x1B[2J/display_name", "display-name", "a\nb", "c\r")});
  review.client = "cl\x1Bient";
  review.directory = "d\x07";
  SDecision decision;
  decision.path = "class/\x1B";
  decision.acceptance.reason = "r\x1B";
  review.stale.push_back(decision);
  const std::string text = Rendered("text", review);
  EXPECT_EQ(text.find_first_of("\x1B\x07\r"), std::string::npos);
  EXPECT_THAT(text, HasSubstr("class/A\\x1B[2J/display_name"));
  EXPECT_THAT(text, HasSubstr("a\\nb"));
}

TEST(TextReviewTest, HasColourOnlyWhenAsked) {
  const SReview review = test::FullReview();
  SRenderOptions options;
  EXPECT_EQ(Rendered("text", review, options).find('\x1B'), std::string::npos);
  options.hasColour = true;
  const std::string text = Rendered("text", review, options);
  EXPECT_THAT(text, HasSubstr("\x1B[1;31mLOSS\x1B[0m      class/Part"));
  EXPECT_THAT(text, HasSubstr("\x1B[1;35mBLOCK\x1B[0m     link/Uses"));
  // Without its colours it is the same text.
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\x1B') {
      i = text.find('m', i);
    } else {
      plain += text[i];
    }
  }
  EXPECT_EQ(plain, Rendered("text", review));
}

TEST(TextReviewTest, HasAColourForEachRisk) {
  SRenderOptions options;
  options.hasColour = true;
  const std::string text = Rendered(
      "text",
      MadeReview({Made("class/A", EChange::kDeleted, "class-deleted"), Made("class/B", EChange::kDeleted, "class-new"),
                  test::Accepted(Made("class/C", EChange::kDeleted, "class-deleted"), {"known", {}, {}})}),
      options);
  EXPECT_THAT(text, StartsWith("\x1B[1mYes, with care. "));
  EXPECT_THAT(text, HasSubstr("\n\x1B[1mCLASSES\x1B[0m\n"));
  EXPECT_THAT(text, HasSubstr("\n\x1B[33mattention\x1B[0m class/A "));
  EXPECT_THAT(text, HasSubstr("\n\x1B[32msafe\x1B[0m      class/B "));
  EXPECT_THAT(text, HasSubstr("\n\x1B[2maccepted\x1B[0m  class/C "));
}

TEST(TextReviewTest, OfAFailedReviewHasNoAnswer) {
  SReview review = test::FullReview();
  review.complete = false;
  review.problem = "client.json: cannot be read\x1B";
  EXPECT_EQ(Rendered("text", review),
            "No answer. The review did not finish, so nothing on this page may be taken for a result.\n"
            "Reason: client.json: cannot be read\\x1B\n");
}

}  // namespace
}  // namespace metareview
