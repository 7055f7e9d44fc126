#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/page/PageHtml.h"

namespace metareview::page {
namespace {

using test::Between;
using test::Made;
using test::MadeReview;
using test::PageHtml;
using testing::HasSubstr;

const SFinding kOwn = Made("class/Own", EChange::kInserted, "class-inserted");

/// A field of the form, as the page has it.
std::string Field(const std::string& key, const std::string& name,
                  const std::vector<std::pair<std::string, std::string>>& options) {
  std::string html = "<label class=\"hear\" for=\"filter-" + key + "\">" + name + "</label><select name=\"" + key +
                     "\" id=\"filter-" + key + "\">";
  for (const auto& [value, text] : options) {
    html += "<option value=\"" + value + "\">" + text + "</option>";
  }
  return html + "</select>\n";
}

const std::string kKind =
    Field("kind", "Kind", {{"", "Any kind"}, {"class", "Classes"}, {"link", "Links"}, {"behavior", "Behaviors"}});
const std::string kRisk =
    Field("risk", "Risk",
          {{"", "Any risk"}, {"loss", "Loss"}, {"block", "Block"}, {"attention", "Attention"}, {"safe", "Safe"}});
const std::string kOrigin =
    Field("origin", "Changed by",
          {{"", "Changed by anybody"}, {"customer", "Customer"}, {"vendor", "Vendor"}, {"both", "Both, conflict"}});
const std::string kDecision = Field("decision", "Decision",
                                    {{"", "Any decision"},
                                     {"decide", "To decide"},
                                     {"open", "Not accepted"},
                                     {"accepted", "Accepted"},
                                     {"outdated", "Decision outdated"},
                                     {"expired", "Decision expired"}});
const std::string kSince = Field("since", "Since the last review",
                                 {{"", "New or known"}, {"new", "New"}, {"changed", "Changed"}, {"known", "Known"}});

/// What can be chosen, behind the field for any text.
std::string Choices(const SReview& review) {
  return Between(PageHtml(review), "spellcheck=\"false\">\n", "<label class=\"tick\">");
}

TEST(PageFilterTest, AllThatFindingsDifferInCanBeChosen) {
  SReview review = MadeReview({kOwn});
  review.against = "yesterday.json";
  EXPECT_EQ(Choices(review), kKind + kRisk + kOrigin + kDecision + kSince);
}

TEST(PageFilterTest, WithoutAnEarlierReviewNothingIsNew) {
  EXPECT_EQ(Choices(MadeReview({kOwn})), kKind + kRisk + kOrigin + kDecision);
}

TEST(PageFilterTest, WithoutABaseNobodyMadeADifference) {
  SReview review = MadeReview({kOwn});
  review.base.reset();
  EXPECT_EQ(Choices(review), kKind + kRisk + kDecision);
}

TEST(PageFilterTest, ItSaysHowManyDifferencesThereAre) {
  EXPECT_THAT(PageHtml(MadeReview({kOwn})),
              HasSubstr(" data-all=\"One difference\" data-some=\"{shown} of 1 differences\" "));
  std::vector<SFinding> findings;
  for (int i = 0; i < 1001; ++i) {
    findings.push_back(Made("class/C" + std::to_string(i), EChange::kInserted, "class-inserted"));
  }
  EXPECT_THAT(PageHtml(MadeReview(findings)),
              HasSubstr(" data-all=\"1,001 differences\" data-some=\"{shown} of 1,001 differences\" "));
}

}  // namespace
}  // namespace metareview::page
