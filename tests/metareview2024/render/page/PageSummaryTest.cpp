#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/RenderedReview.h"
#include "metareview2024/render/page/PageHtml.h"

namespace metareview::page {
namespace {

using test::Accepted;
using test::Between;
using test::Counted;
using test::CountOf;
using test::Made;
using test::MadeChange;
using test::MadeReview;
using test::PageHtml;
using testing::HasSubstr;
using testing::Not;

const SFinding kLength = MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
const SFinding kMax = MadeChange("class/Part/property/Code/max", "max-tightens", "", "50", EOrigin::kVendor);
const SFinding kConflict = Made("link/Uses", EChange::kDeleted, "link-deleted", EOrigin::kBoth);
const SFinding kOwn = Made("class/Own", EChange::kInserted, "class-inserted");
const SFinding kName = MadeChange("behavior/Rated/display_name", "display-name", "a", "b");

std::string Verdict(const std::string& html) {
  return Between(html, "<h1>", "</h1>");
}

std::string Title(const std::string& html) {
  return Between(html, "<title>", "</title>");
}

TEST(PageSummaryTest, TheVerdictIsAnAnswerAndItsGrounds) {
  const std::string html = PageHtml(MadeReview({kLength, kMax}));
  EXPECT_EQ(Verdict(html), "<strong>Not yet.</strong> 2 differences have to be decided first.");
  EXPECT_EQ(Title(html), "Not yet. 2 differences have to be decided first. Upgrade review");
  SRenderOptions options;
  options.words = CWords::Find("ja");
  const std::string japanese = test::Rendered("html", MadeReview({}), options);
  // The answer ends with its full stop.
  EXPECT_EQ(CountOf(Between(japanese, "<strong>", "</strong>"), "。"), 1U);
  EXPECT_THAT(Between(japanese, "</strong>", "</h1>"), HasSubstr("。"));
}

TEST(PageSummaryTest, TheVerdictsCountsAreTheWorstFirst) {
  EXPECT_EQ(Between(PageHtml(MadeReview({kConflict, kMax, kLength, kOwn})), "<ul class=\"counts\">", "</ul>"),
            "<li><span class=\"risk loss\">Loss</span> <span><bdi>1</bdi> may lose or alter stored values</span></li>"
            "<li><span class=\"risk block\">Block</span> <span><bdi>1</bdi> may be refused, now or at the next save"
            "</span></li>"
            "<li><span class=\"risk both\">Conflict</span> <span><bdi>1</bdi> more was changed on both sides</span>"
            "</li>");
  EXPECT_EQ(Between(PageHtml(MadeReview({kMax})), "<ul class=\"counts\">", "</ul>"),
            "<li><span class=\"risk block\">Block</span> <span><bdi>1</bdi> may be refused, now or at the next save"
            "</span></li>");
  EXPECT_THAT(PageHtml(MadeReview({kOwn})), Not(HasSubstr("<ul class=\"counts\">")));
}

TEST(PageSummaryTest, TheSubjectAndWhatIsPeculiarFollowTheVerdict) {
  SReview review = MadeReview({kOwn});
  EXPECT_THAT(PageHtml(review), Not(HasSubstr("<p class=\"remark\">")));
  review.notes = {ENote::kBaseEqualsClient, ENote::kClientHasVendorChanges};
  EXPECT_EQ(Between(PageHtml(review), "<p class=\"subject\">", "</div>"),
            "<bdi>client.json</bdi> (client) was compared with <bdi>original.json</bdi> "
            "(original) and <bdi>base.json</bdi> (base). The review is complete: classes, links, behaviors.</p>\n"
            "<p class=\"remark\">Base and client are equal: every difference is the vendor&apos;s.</p>\n"
            "<p class=\"remark\">The client already has most of what the vendor changed since the base. The "
            "installation seems to be upgraded already, or the base is not its own.</p>\n");
}

TEST(PageSummaryTest, AReviewThatFailedSaysWhyAndNothingElse) {
  SReview review = MadeReview({kLength});
  review.complete = false;
  review.problem = "client.json:3:1: <no> metamodel";
  const std::string html = PageHtml(review);
  EXPECT_EQ(Title(html),
            "No answer. The review did not finish, so nothing on this page may be taken for a result. "
            "Upgrade review");
  EXPECT_THAT(html, HasSubstr("<div class=\"verdict failed\">\n<h1><strong>No answer.</strong> The review did not "
                              "finish, so nothing on this page may be taken for a result.</h1>\n"));
  EXPECT_EQ(Between(html, "<p class=", "</div>"),
            "\"remark\">Reason: <bdi>client.json:3:1: &lt;no&gt; metamodel</bdi></p>\n");
  EXPECT_THAT(html, Not(HasSubstr("<nav")));
}

/// What is to be decided, at a glance.
std::string Glance(const std::string& html) {
  return Between(html, "<table class=\"glance\">", "</table>");
}

constexpr const char* kArrow = " <span class=\"arrow\">→</span> ";

TEST(PageSummaryTest, WhatHasToBeDecidedIsTakenInAtAGlance) {
  const std::string html = PageHtml(MadeReview({kMax, Counted(kLength, 137, 20341), kOwn, kConflict}));
  EXPECT_EQ(Between(Glance(html), "</thead>\n", "<end>"),
            "<tbody>\n"
            "<tr><th scope=\"rowgroup\" class=\"where\" rowspan=\"2\"><a href=\"#d-" +
                IdText(kLength.id) +
                "\"><bdi>Part</bdi> <span class=\"quiet\">›</span> <bdi>Code</bdi></a></th>"
                "<td><span class=\"risk loss\">Loss</span></td><td class=\"what\">Length shrinks</td>"
                "<td class=\"becomes\"><bdi>48</bdi>" +
                kArrow +
                "<bdi>32</bdi></td><td class=\"number\"><span>137 of 20,341</span></td></tr>\n"
                "<tr><td><span class=\"risk block\">Block</span></td><td class=\"what\">Maximum tightens</td>"
                "<td class=\"becomes\">(empty)" +
                kArrow +
                "<bdi>50</bdi></td><td class=\"number\"><span class=\"quiet\">not counted</span></td></tr>\n"
                "</tbody>\n"
                "<tbody>\n"
                "<tr><th scope=\"rowgroup\" class=\"where\" rowspan=\"1\"><a href=\"#d-" +
                IdText(kConflict.id) +
                "\"><bdi>Uses</bdi></a></th><td><span class=\"risk attention\">Attention</span></td>"
                "<td class=\"what\">Link comes back&#160;<span class=\"risk both alone\"><span class=\"hear\">conflict"
                "</span></span></td><td class=\"becomes\"></td><td class=\"number\"></td></tr>\n"
                "</tbody>\n");
}

TEST(PageSummaryTest, NothingThatCanBeCountedNeedsNoColumnForCounts) {
  EXPECT_THAT(PageHtml(MadeReview({kMax, kConflict})), HasSubstr("<th scope=\"col\" class=\"number\">Values touched"));
  const std::string html = PageHtml(MadeReview({kConflict}));
  EXPECT_THAT(html, Not(HasSubstr("Values touched")));
  EXPECT_THAT(html, HasSubstr("<td class=\"becomes\"></td></tr>\n"));
}

TEST(PageSummaryTest, OfManyPlacesTheFirstAreTakenInAtAGlance) {
  std::vector<SFinding> findings;
  for (int i = 0; i < 25; ++i) {
    findings.push_back(Made("class/C" + std::to_string(i), EChange::kInserted, "class-withdrawn", EOrigin::kVendor));
  }
  std::string html = PageHtml(MadeReview(findings));
  EXPECT_EQ(CountOf(Glance(html), "<tbody>"), 25U);
  EXPECT_THAT(html, Not(HasSubstr("<p class=\"more\">")));
  findings.push_back(kLength);
  html = PageHtml(MadeReview(findings));
  EXPECT_EQ(CountOf(Glance(html), "<tbody>"), 25U);
  EXPECT_THAT(html, HasSubstr("<p class=\"more\"><a href=\"#decide\">One more place</a></p>"));
}

/// A number of the totals: what it leads to, and as what it is read out.
struct SCell {
  int number = 0;
  std::string link{};
  std::string label{};
};

/// A row of the totals. 0 leads nowhere.
std::string TotalsRow(const std::string& name, const std::vector<SCell>& cells) {
  std::string html = "<tr><th scope=\"row\">" + name + "</th>";
  for (const SCell& cell : cells) {
    std::string text = std::to_string(cell.number);
    if (!cell.link.empty()) {
      text =
          "<a data-cell href=\"#" + cell.link + "\" aria-label=\"" + cell.label + ": " + text + "\">" + text + "</a>";
    }
    html += (cell.number == 0 ? "<td class=\"quiet\">" : "<td>") + text + "</td>";
  }
  return html + "</tr>\n";
}

TEST(PageSummaryTest, TheTotalsLeadToWhatTheyCount) {
  const std::string html = PageHtml(
      MadeReview({kLength, kMax, kOwn, MadeChange("class/A/display_name", "display-name", "a", "b"),
                  Accepted(Made("class/B", EChange::kInserted, "class-inserted"), {"ours", {}, {}}), kConflict}));
  EXPECT_THAT(html, HasSubstr("<h2 id=\"totals-h\">All 6 differences</h2>"));
  EXPECT_EQ(Between(Between(html, "<table class=\"totals\">", "</table>"), "<tbody>\n", "</tbody>"),
            TotalsRow("Classes", {{1, "kind=class&amp;risk=loss&amp;decision=open", "Classes, Loss"},
                                  {1, "kind=class&amp;risk=block&amp;decision=open", "Classes, Block"},
                                  {},
                                  {2, "kind=class&amp;risk=safe&amp;decision=open", "Classes, Safe"},
                                  {1, "kind=class&amp;decision=accepted", "Classes, Accepted"},
                                  {5, "kind=class", "Classes"}}) +
                TotalsRow("Links", {{},
                                    {},
                                    {1, "kind=link&amp;risk=attention&amp;decision=open", "Links, Attention"},
                                    {},
                                    {},
                                    {1, "kind=link", "Links"}}) +
                TotalsRow("Behaviors", {{}, {}, {}, {}, {}, {}}) +
                TotalsRow("All", {{1, "risk=loss&amp;decision=open", "All, Loss"},
                                  {1, "risk=block&amp;decision=open", "All, Block"},
                                  {1, "risk=attention&amp;decision=open", "All, Attention"},
                                  {2, "risk=safe&amp;decision=open", "All, Safe"},
                                  {1, "decision=accepted", "All, Accepted"},
                                  {6}}));
}

TEST(PageSummaryTest, TheTotalsHaveTheKindsThatWereCompared) {
  SReview review = MadeReview({kName, kName});
  review.elements = {EKind::kBehavior};
  const std::string html = PageHtml(review);
  EXPECT_EQ(Between(Between(html, "<table class=\"totals\">", "</table>"), "<tbody>\n", "</tbody>"),
            TotalsRow("Behaviors", {{},
                                    {},
                                    {},
                                    {2, "kind=behavior&amp;risk=safe&amp;decision=open", "Behaviors, Safe"},
                                    {},
                                    {2, "kind=behavior", "Behaviors"}}) +
                TotalsRow("All", {{}, {}, {}, {2, "risk=safe&amp;decision=open", "All, Safe"}, {}, {2}}));
}

std::string Facts(const SReview& review) {
  return Between(PageHtml(review), "<dl class=\"facts\">", "</dl>");
}

/// A fact whose text leads somewhere.
std::string Fact(const std::string& name, const std::string& text, const std::string& link) {
  return "<div><dt>" + name + "</dt><dd><a data-cell href=\"#" + link + "\">" + text + "</a></dd></div>";
}

TEST(PageSummaryTest, FactsAreThereWhereThereAreAny) {
  EXPECT_EQ(Facts(MadeReview({kOwn})), "");
  SFinding hidden = kOwn;
  hidden.reported = false;
  EXPECT_EQ(Facts(MadeReview({hidden})), Fact("Not in the check’s report", "1", "report=no"));
}

TEST(PageSummaryTest, FactsSayWhatElseHasToBeKnown) {
  SFinding counted = Counted(kLength, 3, 9);
  counted.since = ESince::kNew;
  counted.reported = false;
  SFinding hidden = kOwn;
  hidden.reported = false;
  hidden.since = ESince::kNew;
  SFinding changed = kMax;
  changed.since = ESince::kChanged;
  SFinding known = kConflict;
  known.since = ESince::kKnown;
  SReview review = MadeReview({counted, changed, hidden, known});
  review.against = "yesterday.json";
  for (const char* const path : {"class/X", "class/Y", "class/Z"}) {
    review.gone.push_back({1, path, EChange::kDeleted});
  }
  SDecision decision;
  decision.path = "class/Old";
  review.outdated = {{decision, "a", "b"}, {decision, "a", "b"}};
  review.stale = {decision};
  EXPECT_EQ(Facts(review), Fact("Not in the check’s report, 1 of them to decide", "2", "report=no") +
                               Fact("Changed on both sides", "1", "origin=both") +
                               Fact("New since the last review", "2", "since=new") +
                               Fact("Changed since the last review", "1", "since=changed") +
                               Fact("Gone since the last review", "3", "gone") +
                               "<div><dt>Stored values counted</dt><dd>1 of 2</dd></div>" +
                               Fact("Decisions that no longer hold", "2 outdated, 1 stale", "decisions"));
  review.expired = {decision};
  EXPECT_THAT(Facts(review), HasSubstr(">2 outdated, 1 expired, 1 stale</a>"));
}

}  // namespace
}  // namespace metareview::page
