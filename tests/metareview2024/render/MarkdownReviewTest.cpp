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

using testing::HasSubstr;
using testing::Not;

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
  EXPECT_EQ(MarkdownCode("a|b", false), "`a|b`");
  EXPECT_EQ(MarkdownCode("a|b", true), "`a\\|b`");
  // In a table a backslash is taken off before "|" and nowhere else.
  EXPECT_EQ(MarkdownCode("a\\|b", true), "`a\\\\|b`");
  EXPECT_EQ(MarkdownCode("a\\\\|b", true), "`a\\\\\\|b`");
  EXPECT_EQ(MarkdownCode("a\nb", false), "`a\\nb`");
}

}  // namespace
}  // namespace metareview
