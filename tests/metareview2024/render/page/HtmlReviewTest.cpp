#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/Render.h"
#include "metareview2024/render/RenderedReview.h"
#include "metareview2024/render/page/Assets.h"
#include "metareview2024/render/page/ContentHash.h"

namespace metareview {
namespace {

using test::Accepted;
using test::Counted;
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

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
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

TEST(HtmlReviewTest, WhatHasToBeDecidedHasItsCommand) {
  EXPECT_THAT(Html(MadeReview({kLength})), HasSubstr("<code>upgradesrv decide --reason &apos;&apos; \\\n  upgrade \\\n"
                                                     "  class/Part/property/Code/length</code>"));
}

TEST(HtmlReviewTest, EveryFindingHasARowOfItsOwn) {
  const std::string html = Html(MadeReview({kLength, kAdded}));
  EXPECT_THAT(html, HasSubstr("<tr id=\"f-" + IdText(kLength.id) + "\""));
  EXPECT_THAT(html, HasSubstr("<tr id=\"f-" + IdText(kAdded.id) + "\""));
}

TEST(HtmlReviewTest, TheFilterSaysWhatMayBeChosen) {
  const std::string html = Html(test::FullReview());
  EXPECT_THAT(html, HasSubstr("<label class=\"hear\" for=\"filter-kind\">Kind</label>"
                              "<select name=\"kind\" id=\"filter-kind\"><option value=\"\">Any kind</option>"
                              "<option value=\"class\">Classes</option><option value=\"link\">Links</option>"
                              "<option value=\"behavior\">Behaviors</option></select>"));
  EXPECT_THAT(html, HasSubstr("<label class=\"hear\" for=\"filter-risk\">Risk</label>"
                              "<select name=\"risk\" id=\"filter-risk\"><option value=\"\">Any risk</option>"
                              "<option value=\"loss\">Loss</option><option value=\"block\">Block</option>"
                              "<option value=\"attention\">Attention</option><option value=\"safe\">Safe</option>"
                              "</select>"));
  EXPECT_THAT(html, HasSubstr("<label class=\"hear\" for=\"filter-since\">Since the last review</label>"
                              "<select name=\"since\" id=\"filter-since\"><option value=\"\">New or known</option>"
                              "<option value=\"new\">New</option><option value=\"changed\">Changed</option>"
                              "<option value=\"known\">Known</option></select>"));
}

TEST(HtmlReviewTest, ThePartsAreListedInTheirOrder) {
  EXPECT_THAT(Html(test::FullReview()), HasSubstr("<ul><li><a href=\"#decide\">Decide first</a></li> "
                                                  "<li><a href=\"#all\">All differences</a></li> "
                                                  "<li><a href=\"#decisions\">"));
}

TEST(HtmlReviewTest, AnElementSaysHowManyOfEachRiskItHas) {
  EXPECT_THAT(Html(MadeReview({kLength})),
              HasSubstr("<span class=\"tally\"><span class=\"risk loss\">1<span class=\"hear\"> Loss</span></span> "
                        "</span>"));
}

TEST(HtmlReviewTest, EachRuleIsExplainedUnderItsName) {
  EXPECT_THAT(Html(MadeReview({kAdded})),
              HasSubstr("<tr id=\"r-class-inserted\"><th scope=\"row\"><b>Class only here</b> "
                        "<code class=\"quiet\">class-inserted</code></th>"));
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

TEST(HtmlReviewTest, TheLastRowOfTheTotalsIsTheirSum) {
  EXPECT_THAT(
      Html(test::FullReview()),
      testing::ContainsRegex("<th scope=\"row\">All</th><td><a data-cell href=\"[^\"]*\" aria-label=\"[^\"]*\">2<"));
}

TEST(HtmlReviewTest, LinksLeadToWhatTheyCount) {
  const std::string html = Html(MadeReview({kLength, kAdded}));
  EXPECT_THAT(html, HasSubstr("href=\"#kind=class&amp;risk=loss&amp;decision=open\" aria-label=\"Classes, Loss: 1\""));
  EXPECT_EQ(Count(html, " id=\"kind=class&amp;risk=loss&amp;decision=open\""), 1U);
  EXPECT_EQ(Count(html, " id=\"kind=class\""), 1U);
}

TEST(HtmlReviewTest, WithoutABaseNobodyIsSaidToHaveChangedIt) {
  SReview review = MadeReview({MadeChange("class/A/table_name", "table-moved", "T_A", "T_B", EOrigin::kUnknown)});
  review.base.reset();
  const std::string html = Html(review);
  EXPECT_THAT(html, HasSubstr("Without a base nobody can tell who made a difference."));
  EXPECT_THAT(html, Not(HasSubstr("data-label=\"Base\"")));
  EXPECT_THAT(html, Not(HasSubstr("name=\"origin\"")));
  EXPECT_THAT(html, HasSubstr("<body class=\"no-base\">"));
}

TEST(HtmlReviewTest, DecisionsSayWhoDecidedWhatAndWhy) {
  SReview review = MadeReview({Accepted(kAdded, {"add-on, stays", "m.keller", "2027-06-30"})});
  const std::string html = Html(review);
  EXPECT_THAT(html, HasSubstr("<h3>Accepted: 1</h3>"));
  EXPECT_THAT(html, HasSubstr("<bdi class=\"text\">add-on, stays</bdi>"));
  EXPECT_THAT(html, HasSubstr("<bdi class=\"text\">m.keller</bdi>"));
  EXPECT_THAT(html, HasSubstr("2027-06-30"));
}

TEST(HtmlReviewTest, DecisionsThatNoLongerHoldAreListed) {
  SReview review = MadeReview({kLength});
  const SDecision decision{kLength.path, EChange::kChanged, Value(32U), Value(40U), {"31 is the longest", {}, {}}};
  review.outdated = {{decision, Value(32U), Value(48U)}};
  review.expired = {{kLength.path, EChange::kChanged, {}, {}, {"for now", {}, "2026-01-31"}}};
  review.stale = {{"class/Old", EChange::kInserted, {}, {}, {"was there", {}, {}}}};
  const std::string html = Html(review);
  EXPECT_THAT(html, HasSubstr("<h3>Outdated: 1</h3>"));
  EXPECT_THAT(html, HasSubstr("<bdi>40</bdi> <span class=\"arrow\">→</span> <bdi>32</bdi>"));
  EXPECT_THAT(html, HasSubstr("<h3>Expired: 1</h3>"));
  EXPECT_THAT(html, HasSubstr("<h3>Stale: 1</h3>"));
  EXPECT_THAT(html, HasSubstr("<bdi>upgradesrv decide --prune upgrade</bdi>"));
  EXPECT_THAT(html, HasSubstr("data-decision=\"outdated\""));
}

TEST(HtmlReviewTest, WhatIsGoneIsListed) {
  SReview review = MadeReview({});
  review.against = "yesterday.json";
  review.gone = {{1, "class/Old", EChange::kDeleted}};
  EXPECT_THAT(Html(review), HasSubstr("<bdi>class/Old</bdi></th><td data-label=\"Change\">only in the upgrade</td>"));
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
  EXPECT_EQ(Count(html, "<tr id=\"f-"), 20000U);
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
  EXPECT_EQ(Count(html, "<article "), 1000U);
  EXPECT_EQ(Count(html, "<th scope=\"rowgroup\""), 25U);
  EXPECT_THAT(html, HasSubstr("One more place is not shown here."));
  EXPECT_THAT(html, HasSubstr("976 more places"));
  // One link for each that has an article.
  EXPECT_EQ(Count(html, ">to the decision</a>"), 1000U);
}

TEST(HtmlReviewTest, FewElementsAreUnfoldedAtFirstAndManyAreFolded) {
  std::vector<SFinding> findings;
  for (int i = 0; i < 500; ++i) {
    findings.push_back(Made("class/C" + std::to_string(i), EChange::kInserted, "class-inserted"));
  }
  EXPECT_EQ(Count(Html(MadeReview(findings)), "<details class=\"element\" open"), 500U);
  findings.push_back(kLength);
  EXPECT_EQ(Count(Html(MadeReview(findings)), "<details class=\"element\" open"), 0U);
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
