#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/GeneratedReview.h"
#include "metareview2024/render/MarkdownText.h"
#include "metareview2024/render/RenderedReview.h"

namespace metareview {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// Findings of one rule about tables whose names are as long as names are shown, and of characters that become longer
/// when they are.
SReview LargeReview(const std::string& rule, std::size_t findings) {
  const std::string name(500, '\x01');
  SReview review = test::MadeReview({});
  for (std::size_t i = 0; i < findings; ++i) {
    review.findings.push_back(
        test::MadeChange("class/" + std::to_string(1000 + i) + name + "/table_name", rule, name + "A", name + "B"));
  }
  return review;
}

std::size_t Occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST(MarkdownReviewTest, SaysEverythingInItsOrder) {
  EXPECT_EQ(
      test::Rendered("markdown", test::FullReview()),
      "# Not yet. 3 differences have to be decided first.\n\n"
      "`client.json` (client) was compared with `original.json` (original) and `base.json` (base). The review is "
      "complete: classes, links, behaviors. Stored values were looked up in `data.db`. For one difference they could "
      "not be counted, or not all of them. Compared with the earlier review `yesterday.json`: 2 new, 1 changed, 2 "
      "known, 1 gone.\n\n"
      "| | Loss | Block | Attention | Safe | Accepted | Total |\n"
      "|:--|--:|--:|--:|--:|--:|--:|\n"
      "| Classes | 2 | 0 | 0 | 1 | 1 | 4 |\n"
      "| Links | 0 | 1 | 0 | 0 | 0 | 1 |\n"
      "| Behaviors | 0 | 0 | 0 | 0 | 0 | 0 |\n"
      "| All | 2 | 1 | 0 | 1 | 1 | 5 |\n\n"
      "## Decide first\n\n"
      "- **Loss** `class/Part/property/Code/length`  \n"
      "  The upgrade shortens `Code` from `48` to `32` characters. 137 of 20,341 stored values are longer and would be "
      "cut or refused. The decision on record is about `40` here and `32` shipped, so it no longer applies. The "
      "decision on record expired on `2026-10-31`.  \n"
      "  *Length shrinks* · customer, changed since the last review\n"
      "- **Loss** `class/Part/property/Sum/field`  \n"
      "  The upgrade keeps `Sum` in column `F_SUM` instead of `F_SHA`. The values in `F_SHA` would be left behind. "
      "Stored values could not be counted: `no column F_SHA in T_PART`.  \n"
      "  *Column moved* · customer, new since the last review, not in the report\n"
      "- **Block** `link/Uses`  \n"
      "  The upgrade adds link `Uses` with class id `1001` and table `T_USES`, which class `Own` already has here.  \n"
      "  *Link id or table is taken* · vendor, new since the last review\n\n"
      "To accept it, put the reason between the quotes: `upgradesrv decide --reason '' upgrade PATH...`\n\n"
      "## All differences\n\n"
      "| Risk | Difference | What the upgrade does | Changed by |\n"
      "|:--|:--|:--|:--|\n"
      "| Loss | `class/Part/property/Code/length` | The upgrade shortens `Code` from `48` to `32` characters. 137 of "
      "20,341 stored values are longer and would be cut or refused. The decision on record is about `40` here and "
      "`32` shipped, so it no longer applies. The decision on record expired on `2026-10-31`. | customer, changed "
      "since the last review |\n"
      "| Safe | `class/Part/property/Weight/precision` | The upgrade keeps `3` instead of `6` decimal places of "
      "`Weight`. None of 884 stored values has more. Without the count it would be judged loss. | customer |\n"
      "| Loss | `class/Part/property/Sum/field` | The upgrade keeps `Sum` in column `F_SUM` instead of `F_SHA`. The "
      "values in `F_SHA` would be left behind. Stored values could not be counted: `no column F_SHA in T_PART`. | "
      "customer, new since the last review, not in the report |\n"
      "| Accepted | `class/Own` | Only this installation has class `Own`. The upgrade leaves it alone. | customer, "
      "Accepted by `jo` until `2027-06-30`: `ours` |\n"
      "| Block | `link/Uses` | The upgrade adds link `Uses` with class id `1001` and table `T_USES`, which class "
      "`Own` already has here. | vendor, new since the last review |\n\n"
      "## Outdated: 1\n\n"
      "- `class/Part/property/Code/length`: accepted for `40` here and `32` shipped, now `48` here and `32` shipped. "
      "Reason: `longest has 31`\n\n"
      "## Expired: 1\n\n"
      "- `class/Part/property/Code/length`: accepted until `2026-10-31`. Reason: `until later`\n\n"
      "## Stale: 1\n\n"
      "- `class/*/behavior/Gone`: nothing differs there. Reason: `add-on`\n\n"
      "## Gone since the last review: 1\n\n"
      "- `behavior/Rated`: was only in the upgrade.\n\n");
}

TEST(MarkdownReviewTest, WithoutABaseNothingIsSaidOfWhoChangedIt) {
  SReview review =
      test::MadeReview({test::MadeChange("class/Part/table_name", "table-moved", "T_A", "T_B", EOrigin::kUnknown)});
  review.base.reset();
  const std::string text = test::Rendered("markdown", review);
  EXPECT_THAT(text, HasSubstr("\n| Risk | Difference | What the upgrade does | Notes |\n"));
  EXPECT_THAT(text, HasSubstr("Stored values were not counted. |  |\n"));
  EXPECT_THAT(text, HasSubstr("\n  *Table moved*\n"));
}

TEST(MarkdownReviewTest, SaysWhatIsPeculiarAboutTheMetamodels) {
  SReview review = test::MadeReview({});
  review.notes = {ENote::kBaseEqualsClient};
  EXPECT_THAT(test::Rendered("markdown", review),
              HasSubstr("behaviors.\n\nBase and client are equal: every difference is the vendor's.\n\n| |"));
}

TEST(MarkdownReviewTest, SaysNothingOfDecidingWhereNothingIsToBeDecided) {
  const SReview review = test::MadeReview({test::Made("class/Own", EChange::kInserted, "class-inserted")});
  EXPECT_THAT(test::Rendered("markdown", review), Not(HasSubstr("ecide")));
}

TEST(MarkdownReviewTest, ABarIsEscapedInTheTableAndOnlyThere) {
  SReview review = test::MadeReview(
      {test::MadeChange("class/A|B/table_name", "table-moved", "T|A", "T|B"),
       test::Accepted(test::Made("class/Own", EChange::kInserted, "class-inserted"), {"a|b", {}, {}})});
  review.client = "c|d.json";
  review.directory = "up|grade";
  review.stale.push_back({"class/C|D", EChange::kDeleted, {}, {}, {"s|t", {}, {}}});
  const std::string text = test::Rendered("markdown", review);
  EXPECT_THAT(text, HasSubstr("\n`c|d.json` (client)"));
  EXPECT_THAT(text, HasSubstr("\n- **Loss** `class/A|B/table_name`  \n"
                              "  The upgrade keeps `A|B` in table `T|B` instead of `T|A`. The rows in `T|A` would be "
                              "left behind. Stored values were not counted.  \n"));
  EXPECT_THAT(text, HasSubstr(": `upgradesrv decide --reason '' 'up|grade' PATH...`\n"));
  EXPECT_THAT(text,
              HasSubstr("\n| Loss | `class/A\\|B/table_name` | The upgrade keeps `A\\|B` in table `T\\|B` instead "
                        "of `T\\|A`. The rows in `T\\|A` would be left behind. Stored values were not "
                        "counted. | customer |\n"));
  EXPECT_THAT(text, HasSubstr(" | customer, Accepted: `a\\|b` |\n"));
  EXPECT_THAT(text, HasSubstr("\n- `class/C|D`: nothing differs there. Reason: `s|t`\n"));
  review.complete = false;
  review.problem = "a|b";
  EXPECT_THAT(test::Rendered("markdown", review), HasSubstr("\nReason: `a|b`\n"));
}

TEST(MarkdownReviewTest, SaysFirstWhetherTheUpgradeMayGoAhead) {
  EXPECT_EQ(test::Rendered("markdown", test::FullReview()).substr(0, 11), "# Not yet. ");
  EXPECT_EQ(test::Rendered("markdown", test::MadeReview({})).substr(0, 6), "# Yes.");
}

TEST(MarkdownReviewTest, HasTheTotalsOfEachKindAndOfAll) {
  const std::string text = test::Rendered("markdown", test::FullReview());
  EXPECT_THAT(text, HasSubstr("| | Loss | Block | Attention | Safe | Accepted | Total |\n"
                              "|:--|--:|--:|--:|--:|--:|--:|\n"
                              "| Classes | 2 | 0 | 0 | 1 | 1 | 4 |\n"
                              "| Links | 0 | 1 | 0 | 0 | 0 | 1 |\n"
                              "| Behaviors | 0 | 0 | 0 | 0 | 0 | 0 |\n"
                              "| All | 2 | 1 | 0 | 1 | 1 | 5 |\n"));
}

TEST(MarkdownReviewTest, HasEveryFindingOnceInTheTable) {
  const std::string text = test::Rendered("markdown", test::FullReview());
  for (const SFinding& finding : test::FullReview().findings) {
    const std::string cell = "| `" + finding.path + "` |";
    const std::size_t at = text.find(cell);
    ASSERT_NE(at, std::string::npos) << finding.path;
    EXPECT_EQ(text.find(cell, at + 1), std::string::npos) << finding.path;
  }
}

TEST(MarkdownReviewTest, EachSectionHasItsHeading) {
  const std::string text = test::Rendered("markdown", test::FullReview());
  EXPECT_THAT(text, HasSubstr("\n## Decide first\n\n- **Loss** "));
  EXPECT_THAT(text, HasSubstr("\n## All differences\n\n"
                              "| Risk | Difference | What the upgrade does | Changed by |\n"
                              "|:--|:--|:--|:--|\n"
                              "| Loss | "));
  EXPECT_THAT(text, HasSubstr("\n## Outdated: 1\n\n- "));
  EXPECT_THAT(text, HasSubstr("\n## Gone since the last review: 1\n\n- "));
}

TEST(MarkdownReviewTest, AFailedReviewSaysWhy) {
  SReview review;
  review.complete = false;
  review.problem = "base.json is not there";
  const std::string text = test::Rendered("markdown", review);
  EXPECT_THAT(text, HasSubstr("`base.json is not there`"));
  EXPECT_THAT(text, Not(HasSubstr("|")));
}

TEST(MarkdownReviewTest, ASectionEndsWhereItsShareDoesAndSaysHowManyMoreThereAre) {
  SReview review = LargeReview("table-moved", 150);
  review.findings.push_back(test::MadeChange("class/Small/table_name", "table-moved", "T_A", "T_B"));
  const std::string text = test::Rendered("markdown", review);
  EXPECT_LT(text.size(), 1000000U);
  const std::string all = text.substr(text.find("## All differences"));
  const std::string decide = text.substr(0, text.size() - all.size());
  // An item is shorter than 20,000 bytes, and what is said around the items than 2,000.
  EXPECT_GT(decide.size(), 380000U);
  EXPECT_LT(decide.size(), 402000U);
  EXPECT_GT(all.size(), 280000U);
  // The first section leaves less than an item.
  EXPECT_LT(all.size(), 322000U);
  EXPECT_THAT(decide, HasSubstr("\n\n" + std::to_string(151 - Occurrences(decide, "\n- **Loss** ")) +
                                " more; the JSON output has all.\n\nTo accept it, "));
  EXPECT_THAT(all, EndsWith(" |\n\n" + std::to_string(151 - Occurrences(all, "\n| Loss ")) +
                            " more; the JSON output has all.\n\n"));
  EXPECT_THAT(text, Not(HasSubstr("class/Small")));
}

TEST(MarkdownReviewTest, WhatOneSectionLeavesOfItsShareTheNextOneMayUse) {
  // Nothing has to be decided.
  const std::string text = test::Rendered("markdown", LargeReview("table-unset", 150));
  EXPECT_GT(text.size(), 680000U);
  EXPECT_LT(text.size(), 702000U);
  const std::size_t room = Occurrences(text, "\n| Attention | `");
  EXPECT_THAT(test::Rendered("markdown", LargeReview("table-unset", room)), Not(HasSubstr("the JSON output")));
  EXPECT_THAT(test::Rendered("markdown", LargeReview("table-unset", room + 1)),
              EndsWith(" |\n\nOne more; the JSON output has all.\n\n"));
}

TEST(MarkdownReviewTest, StaysBelowAMillionBytesAndSaysHowManyMoreThereAre) {
  const std::string text = test::Rendered("markdown", test::GeneratedReview(20000));
  EXPECT_LT(text.size(), 1000000U);
  EXPECT_GT(text.size(), 500000U);
  std::size_t rows = 0;
  for (std::size_t at = text.find("\n| "); at != std::string::npos; at = text.find("\n| ", at + 1)) {
    ++rows;
  }
  // The totals have a head and four rows, the table of all findings a head.
  const std::size_t left = 20000 - (rows - 6);
  const std::string number = std::to_string(left);
  EXPECT_THAT(text, HasSubstr(number.substr(0, number.size() - 3) + "," + number.substr(number.size() - 3)));
}

TEST(MarkdownReviewTest, EachSectionIsCutByItself) {
  SReview review = test::GeneratedReview(20000);
  SDecision stale;
  stale.path = "class/Last";
  stale.acceptance.reason = "why";
  review.stale.push_back(stale);
  EXPECT_THAT(test::Rendered("markdown", review), HasSubstr("class/Last"));
}

TEST(MarkdownReviewTest, HostileNamesStayWithinTheirCell) {
  const SReview review = test::HostileReview();
  const std::string text = test::Rendered("markdown", review);
  EXPECT_LT(text.size(), 1000000U);
  std::istringstream lines(text.substr(text.find("| Risk |")));
  std::size_t rows = 0;
  for (std::string line; std::getline(lines, line) && !line.empty(); ++rows) {
    std::size_t bars = 0;
    for (std::size_t at = line.find('|'); at != std::string::npos; at = line.find('|', at + 1)) {
      bars += at == 0 || line[at - 1] != '\\' ? 1 : 0;
    }
    EXPECT_EQ(bars, 5U) << line.substr(0, 200);
  }
  EXPECT_EQ(rows, review.findings.size() + 2);
}

TEST(MarkdownTextTest, AValueIsCodeWhateverItHolds) {
  EXPECT_EQ(MarkdownCode("a<b>*c*", false), "`a<b>*c*`");
  EXPECT_EQ(MarkdownCode("a`b", false), "``a`b``");
  EXPECT_EQ(MarkdownCode("``", false), "``` `` ```");
  EXPECT_EQ(MarkdownCode("", false), "`  `");
  EXPECT_EQ(MarkdownCode(" a ", false), "`  a  `");
  EXPECT_EQ(MarkdownCode("`a", false), "`` `a ``");
  EXPECT_EQ(MarkdownCode("a`", false), "`` a` ``");
  EXPECT_EQ(MarkdownCode(" a", false), "` a`");
  EXPECT_EQ(MarkdownCode("a ", false), "`a `");
  EXPECT_EQ(MarkdownCode("a|b", false), "`a|b`");
  EXPECT_EQ(MarkdownCode("a||b", true), "`a\\|\\|b`");
  EXPECT_EQ(MarkdownCode("a|b", true), "`a\\|b`");
  // In a table a backslash is taken off before "|" and nowhere else.
  EXPECT_EQ(MarkdownCode("a\\|b", true), "`a\\\\|b`");
  EXPECT_EQ(MarkdownCode("a\\\\|b", true), "`a\\\\\\|b`");
  EXPECT_EQ(MarkdownCode("a\nb", false), "`a\\nb`");
}

}  // namespace
}  // namespace metareview
