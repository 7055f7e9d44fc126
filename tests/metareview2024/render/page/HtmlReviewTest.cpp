#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/Render.h"
#include "metareview2024/render/RenderedReview.h"
#include "metareview2024/render/page/Assets.h"
#include "metareview2024/render/page/ContentHash.h"
#include "metareview2024/render/page/PageHtml.h"

namespace metareview {
namespace {

using test::Counted;
using test::CountOf;
using test::Made;
using test::MadeChange;
using test::MadeReview;
using testing::HasSubstr;
using testing::Not;

const SFinding kLength = MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
const SFinding kAdded = Made("class/Gear", EChange::kInserted, "class-inserted");

std::string Html(const SReview& review, const char* language = "en") {
  SRenderOptions options;
  options.words = CWords::Find(language);
  std::string html;
  FindFormat("html")->write(review, options, [&](std::string_view text) { html += text; });
  return html;
}

TEST(HtmlReviewTest, TheSameReviewGivesTheSameBytes) {
  const SReview review = MadeReview({kLength, kAdded});
  EXPECT_EQ(Html(review), Html(review));
}

TEST(HtmlReviewTest, LanguageAndDirectionAreSet) {
  EXPECT_THAT(Html(MadeReview({kLength}), "ja"), HasSubstr("<html lang=\"ja\" dir=\"ltr\">"));
}

TEST(HtmlReviewTest, OnlyItsOwnStyleAndScriptMayBeUsed) {
  const std::string html = Html(MadeReview({kLength}));
  EXPECT_THAT(html, HasSubstr("content=\"default-src 'none'; style-src 'sha256-" +
                              page::ContentHash(page::assets::style) + "'; script-src 'sha256-" +
                              page::ContentHash(page::assets::script) + "'; base-uri 'none'; form-action 'none'\""));
  EXPECT_THAT(html, HasSubstr("<style>" + std::string(page::assets::style) + "</style>"));
  EXPECT_THAT(html, HasSubstr("<script>" + std::string(page::assets::script) + "</script>"));
}

TEST(HtmlReviewTest, ThePageSaysWhatMadeIt) {
  EXPECT_THAT(Html(MadeReview({kLength})),
              HasSubstr("<footer class=\"wide\">Made by <bdi>upgradesrv review</bdi>. This page asks nothing of the "
                        "network.</footer>"));
}

TEST(HtmlReviewTest, NoWordIsShownAsItsKey) {
  const SReview review = test::FullReview();
  std::string html = Html(review);
  html.erase(html.find("<style>"), page::assets::style.size());
  html.erase(html.find("<script>"), page::assets::script.size() + std::string_view("<script>").size());
  EXPECT_THAT(html, Not(HasSubstr("page.")));
  for (const SFinding& finding : review.findings) {
    for (const char* const word : {".name", ".why", ".todo"}) {
      EXPECT_THAT(html, Not(HasSubstr(std::string(finding.rule->name) + word)));
    }
  }
}

TEST(HtmlReviewTest, TheVerdictComesFirst) {
  EXPECT_THAT(Html(MadeReview({kLength, kAdded})),
              HasSubstr("<h1><strong>Not yet.</strong> One difference has to be decided first.</h1>"));
  EXPECT_THAT(Html(MadeReview({kAdded}), "zh"), HasSubstr("<h1><strong>可以。</strong>"));
}

TEST(HtmlReviewTest, EveryFindingHasARowOfItsOwn) {
  const std::string html = Html(MadeReview({kLength, kAdded}));
  EXPECT_THAT(html, HasSubstr("<tr id=\"f-" + IdText(kLength.id) + "\""));
  EXPECT_THAT(html, HasSubstr("<tr id=\"f-" + IdText(kAdded.id) + "\""));
}

TEST(HtmlReviewTest, TheTotalsHaveAColumnForEachRisk) {
  std::string heads;
  for (const auto& [risk, name] :
       {std::pair("loss", "Loss"), std::pair("block", "Block"), std::pair("attention", "Attention"),
        std::pair("safe", "Safe"), std::pair("accepted", "Accepted")}) {
    heads += "<th scope=\"col\"><span class=\"risk " + std::string(risk) + "\">" + name + "</span></th>";
  }
  EXPECT_THAT(Html(MadeReview({kLength})), HasSubstr(heads));
}

TEST(HtmlReviewTest, LinksLeadToWhatTheyCount) {
  const std::string html = Html(MadeReview({kLength, kAdded}));
  EXPECT_THAT(html, HasSubstr("href=\"#kind=class&amp;risk=loss&amp;decision=open\" aria-label=\"Classes, Loss: 1\""));
  EXPECT_EQ(CountOf(html, " id=\"kind=class&amp;risk=loss&amp;decision=open\""), 1U);
  EXPECT_EQ(CountOf(html, " id=\"kind=class\""), 1U);
}

TEST(HtmlReviewTest, WithoutABaseNobodyIsSaidToHaveChangedIt) {
  SReview review = MadeReview({MadeChange("class/A/table_name", "table-moved", "T_A", "T_B", EOrigin::kUnknown)});
  review.base.reset();
  const std::string html = Html(review);
  EXPECT_THAT(html, HasSubstr("Without a base nobody can tell who made a difference."));
  EXPECT_THAT(html, Not(HasSubstr("data-label=\"Base\"")));
  EXPECT_THAT(html, Not(HasSubstr("name=\"origin\"")));
  EXPECT_THAT(html, HasSubstr("<body class=\"no-base\">"));
  review.base = "base.json";
  EXPECT_THAT(Html(review), HasSubstr("<body>"));
}

TEST(HtmlReviewTest, CountsOfStoredValuesAreShown) {
  const std::string html = Html(MadeReview({Counted(kLength, 137, 20341)}));
  EXPECT_THAT(html, HasSubstr("<td class=\"number\"><span>137 of 20,341</span></td>"));
  EXPECT_THAT(html, HasSubstr("<dt>Stored values counted</dt><dd>1 of 1</dd>"));
}

TEST(HtmlReviewTest, ACountThatMayBeTooLowIsAtLeastThat) {
  const std::string html = Html(MadeReview({test::CountedInPart(kLength, 1137, 20341, "hidden")}));
  EXPECT_THAT(html, HasSubstr("<td class=\"number\"><span>at least 1,137 of 20,341</span></td>"));
  EXPECT_THAT(html, HasSubstr("This count may be too low: <bdi>hidden</bdi>."));
  EXPECT_THAT(html, HasSubstr("<dt>Stored values counted</dt><dd>1 of 1</dd>"));
}

TEST(HtmlReviewTest, WhatCouldNotBeCountedIsNoNumber) {
  const std::string html = Html(MadeReview({test::NotCountable(kLength, "no table T")}));
  EXPECT_THAT(html, HasSubstr("<td class=\"number\"><span class=\"quiet\">not countable</span></td>"));
  EXPECT_THAT(html, HasSubstr("<dt>Stored values counted</dt><dd>0 of 1</dd>"));
}

TEST(HtmlReviewTest, EqualMetamodelsNeedNoTables) {
  const std::string html = Html(MadeReview({}));
  EXPECT_THAT(html, HasSubstr("<strong>Yes.</strong> Installation and upgrade do not differ."));
  EXPECT_THAT(html, HasSubstr("The review is complete: classes, links, behaviors."));
  EXPECT_THAT(html, Not(HasSubstr("<table")));
}

TEST(HtmlReviewTest, AFailedReviewIsNoResult) {
  SReview review;
  review.complete = false;
  review.problem = "client.json:3:1: <no> metamodel";
  const std::string html = Html(review);
  EXPECT_THAT(html, HasSubstr("<div class=\"verdict failed\">"));
  EXPECT_THAT(html, HasSubstr("<strong>No answer.</strong> The review did not finish"));
  EXPECT_THAT(html, HasSubstr("<bdi>client.json:3:1: &lt;no&gt; metamodel</bdi>"));
  EXPECT_THAT(html, Not(HasSubstr("<table")));
  EXPECT_THAT(html, Not(HasSubstr("<form")));
}

TEST(HtmlReviewTest, OneThatIsPeculiarSaysSo) {
  SReview review = MadeReview({kLength});
  review.notes = {ENote::kBaseEqualsOriginal};
  EXPECT_THAT(Html(review), HasSubstr("<p class=\"remark\">Base and original are equal"));
}

TEST(HtmlReviewTest, NamesAreNoMarkup) {
  const std::string name = "<script>alert(1)<~1script>\"'&]]>{{words.title}}";
  const std::string html = Html(MadeReview(
      {MadeChange("class/" + name + "/display_name", "display-name", name, "b"),
       Made("class/" + name + "/property/" + name, EChange::kInserted, "property-withdrawn", EOrigin::kVendor)}));
  EXPECT_THAT(html, Not(HasSubstr("<script>alert")));
  EXPECT_THAT(html, HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;&quot;&apos;&amp;]]&gt;{{words.title}}"));
}

TEST(HtmlReviewTest, TwentyThousandFindingsAreShownTheWorstFirst) {
  std::vector<SFinding> findings;
  for (int i = 0; i < 20001; ++i) {
    findings.push_back(Made("class/C" + std::to_string(i), EChange::kInserted, "class-inserted"));
  }
  findings.push_back(kLength);
  const std::string html = Html(MadeReview(findings));
  EXPECT_EQ(CountOf(html, "<tr id=\"f-"), 20000U);
  EXPECT_THAT(html, HasSubstr("<tr id=\"f-" + IdText(kLength.id) + "\""));
  EXPECT_THAT(html, Not(HasSubstr(IdText(findings.at(20000).id))));
  EXPECT_THAT(html, HasSubstr("2 more differences are not on this page, which shows the worst."));
  EXPECT_THAT(html, HasSubstr("data-all=\"20,000 differences\""));
}

TEST(HtmlReviewTest, AThousandPlacesAreShownOneByOne) {
  std::vector<SFinding> findings;
  for (int i = 0; i < 1001; ++i) {
    findings.push_back(Made("class/C" + std::to_string(i), EChange::kInserted, "class-withdrawn", EOrigin::kVendor));
  }
  const std::string html = Html(MadeReview(findings));
  EXPECT_EQ(CountOf(html, "<article "), 1000U);
  EXPECT_EQ(CountOf(html, "<th scope=\"rowgroup\""), 25U);
  EXPECT_THAT(html, HasSubstr("One more place is not shown here."));
  EXPECT_THAT(html, HasSubstr("976 more places"));
  // One link for each that has an article.
  EXPECT_EQ(CountOf(html, ">to the decision</a>"), 1000U);
}

TEST(HtmlReviewTest, ThePathThatNoShellTakesHasNoCommand) {
  const std::string name(131072, 'x');
  const std::string html =
      Html(MadeReview({Made("class/" + name, EChange::kInserted, "class-withdrawn", EOrigin::kVendor)}));
  EXPECT_THAT(html, HasSubstr("A path here is too long for a command line."));
  EXPECT_THAT(html, Not(HasSubstr("<code>upgradesrv decide")));
  EXPECT_LT(html.size(), 100000U);
}

}  // namespace
}  // namespace metareview
