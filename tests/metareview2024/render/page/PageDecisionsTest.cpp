#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/page/PageHtml.h"

namespace metareview::page {
namespace {

using test::Accepted;
using test::Between;
using test::CountOf;
using test::Made;
using test::MadeChange;
using test::MadeReview;
using test::PageHtml;
using testing::HasSubstr;
using testing::Not;

const SFinding kLength = MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
const SFinding kOwn = Made("class/Own", EChange::kInserted, "class-inserted");

SDecision Decision(const std::string& path, EChange change, const SAcceptance& acceptance) {
  SDecision decision;
  decision.path = path;
  decision.change = change;
  decision.acceptance = acceptance;
  return decision;
}

/// The rows of the list with that title.
std::string Rows(const SReview& review, const std::string& title) {
  const std::string list = Between(PageHtml(review), "<h3>" + title + "</h3>", "</table>");
  return Between(list, "<tbody>\n", "</tbody>");
}

TEST(PageDecisionsTest, AnAcceptedFindingSaysWhoAcceptedItUntilWhenAndWhy) {
  const SReview review =
      MadeReview({kLength, Accepted(kOwn, {"add-on <1>", "jo & co", "2027-06-30"}),
                  Accepted(Made("link/Uses", EChange::kDeleted, "link-deleted"), {"not used", {}, {}})});
  EXPECT_EQ(Rows(review, "Accepted: 2"),
            "<tr><th scope=\"row\"><a href=\"#f-" + IdText(kOwn.id) +
                "\"><bdi>class/Own</bdi></a></th>"
                "<td data-label=\"Risk\"><span class=\"risk safe\">Safe</span></td>"
                "<td data-label=\"Reason\"><bdi class=\"text\">add-on &lt;1&gt;</bdi></td>"
                "<td data-label=\"By\"><bdi class=\"text\">jo &amp; co</bdi></td>"
                "<td data-label=\"Until\">2027-06-30</td></tr>\n"
                "<tr><th scope=\"row\"><a href=\"#f-" +
                IdText(FindingId("link/Uses", EChange::kDeleted)) +
                "\"><bdi>link/Uses</bdi></a></th>"
                "<td data-label=\"Risk\"><span class=\"risk attention\">Attention</span></td>"
                "<td data-label=\"Reason\"><bdi class=\"text\">not used</bdi></td>"
                "<td data-label=\"By\"><bdi class=\"text\"></bdi></td>"
                "<td data-label=\"Until\"></td></tr>\n");
}

TEST(PageDecisionsTest, AnOutdatedDecisionSaysWhatWasAcceptedAndWhatIsThereNow) {
  SReview review = MadeReview({kLength});
  SDecision decision = Decision(kLength.path, EChange::kChanged, {"31 is the longest", {}, {}});
  decision.client = 40U;
  decision.original = 36U;
  review.outdated = {{decision, 32U, 48U}};
  decision = Decision("class/Part/property/Unit/max", EChange::kChanged, {"no limit", {}, {}});
  decision.client = "";
  decision.original = "5";
  review.outdated.push_back({decision, "6", "7"});
  const std::string arrow = " <span class=\"arrow\">→</span> ";
  EXPECT_EQ(Rows(review, "Outdated: 2"), "<tr><th scope=\"row\"><a href=\"#f-" + IdText(kLength.id) +
                                             "\"><bdi>class/Part/property/Code/length</bdi></a></th>"
                                             "<td data-label=\"Accepted: client becomes\"><span><bdi>40</bdi>" +
                                             arrow +
                                             "<bdi>36</bdi></span></td>"
                                             "<td data-label=\"Now: client becomes\"><span><bdi>48</bdi>" +
                                             arrow +
                                             "<bdi>32</bdi></span></td>"
                                             "<td data-label=\"Reason at the time\"><bdi class=\"text\">31 is the "
                                             "longest</bdi></td></tr>\n"
                                             "<tr><th scope=\"row\"><bdi>class/Part/property/Unit/max</bdi></th>"
                                             "<td data-label=\"Accepted: client becomes\"><span>(empty)" +
                                             arrow +
                                             "<bdi>5</bdi></span></td>"
                                             "<td data-label=\"Now: client becomes\"><span><bdi>7</bdi>" +
                                             arrow +
                                             "<bdi>6</bdi></span></td>"
                                             "<td data-label=\"Reason at the time\"><bdi class=\"text\">no limit</bdi>"
                                             "</td></tr>\n");
}

TEST(PageDecisionsTest, AnExpiredDecisionLeadsToItsFindingIfThereIsOne) {
  SReview review = MadeReview({kOwn});
  review.expired = {Decision("class/Own", EChange::kInserted, {"for now", "jo", "2026-01-31"}),
                    Decision("class/*/behavior/Rated", EChange::kInserted, {"trial", {}, "2025-12-31"})};
  EXPECT_EQ(Rows(review, "Expired: 2"), "<tr><th scope=\"row\"><a href=\"#f-" + IdText(kOwn.id) +
                                            "\"><bdi>class/Own</bdi></a></th>"
                                            "<td data-label=\"Until\">2026-01-31</td>"
                                            "<td data-label=\"By\"><bdi class=\"text\">jo</bdi></td>"
                                            "<td data-label=\"Reason at the time\"><bdi class=\"text\">for now</bdi>"
                                            "</td></tr>\n"
                                            "<tr><th scope=\"row\"><bdi>class/*/behavior/Rated</bdi></th>"
                                            "<td data-label=\"Until\">2025-12-31</td>"
                                            "<td data-label=\"By\"><bdi class=\"text\"></bdi></td>"
                                            "<td data-label=\"Reason at the time\"><bdi class=\"text\">trial</bdi>"
                                            "</td></tr>\n");
}

TEST(PageDecisionsTest, AStaleDecisionSaysWhatWasAccepted) {
  SReview review = MadeReview({});
  review.stale = {Decision("class/Old", EChange::kInserted, {"was there", "jo", {}}),
                  Decision("class/New", EChange::kDeleted, {"not wanted", {}, {}}),
                  Decision("class/*/display_name", EChange::kChanged, {"our words", {}, {}})};
  const std::string by = "<td data-label=\"By\"><bdi class=\"text\">";
  const std::string reason = "</bdi></td><td data-label=\"Reason at the time\"><bdi class=\"text\">";
  EXPECT_EQ(Rows(review, "Stale: 3"),
            "<tr><th scope=\"row\"><bdi>class/Old</bdi></th><td data-label=\"Change\">only here</td>" + by + "jo" +
                reason +
                "was there</bdi></td></tr>\n"
                "<tr><th scope=\"row\"><bdi>class/New</bdi></th><td data-label=\"Change\">only in the upgrade</td>" +
                by + reason +
                "not wanted</bdi></td></tr>\n"
                "<tr><th scope=\"row\"><bdi>class/*/display_name</bdi></th><td data-label=\"Change\">differs</td>" +
                by + reason + "our words</bdi></td></tr>\n");
}

TEST(PageDecisionsTest, WhatIsGoneSaysWhatItWas) {
  SReview review = MadeReview({});
  review.against = "yesterday.json";
  review.gone = {{FindingId("behavior/Rated", EChange::kDeleted), "behavior/Rated", EChange::kDeleted}};
  const std::string html = PageHtml(review);
  EXPECT_THAT(html, HasSubstr("<h2 id=\"gone-h\">Gone since the last review: 1</h2>"));
  EXPECT_EQ(Between(Between(html, "<section class=\"part\" id=\"gone\"", "</section>"), "<tbody>\n", "</tbody>"),
            "<tr><th scope=\"row\"><bdi>behavior/Rated</bdi></th>"
            "<td data-label=\"Change\">only in the upgrade</td></tr>\n");
  // What is gone is no decision.
  EXPECT_THAT(html, Not(HasSubstr("id=\"decisions\"")));
}

TEST(PageDecisionsTest, EachListIsThereWhereItHasRows) {
  const SDecision decision = Decision("class/Own", EChange::kInserted, {"x", {}, "2026-01-31"});
  SReview accepted = MadeReview({Accepted(kOwn, {"x", {}, {}})});
  SReview outdated = MadeReview({});
  outdated.outdated = {{decision, "a", "b"}};
  SReview expired = MadeReview({});
  expired.expired = {decision};
  SReview stale = MadeReview({});
  stale.stale = {decision};
  for (const SReview* review : {&accepted, &outdated, &expired, &stale}) {
    const std::string html = PageHtml(*review);
    EXPECT_THAT(html, HasSubstr("<section class=\"part\" id=\"decisions\""));
    EXPECT_EQ(CountOf(html, "<div class=\"list\">"), 1U);
    EXPECT_THAT(html, Not(HasSubstr("JSON output has all")));
  }
  EXPECT_THAT(PageHtml(MadeReview({kOwn})), Not(HasSubstr("id=\"decisions\"")));
}

TEST(PageDecisionsTest, OfManyRowsTheFirstAreShown) {
  SReview review = MadeReview({});
  for (int i = 0; i < 1000; ++i) {
    review.gone.push_back({1, "class/C" + std::to_string(i), EChange::kDeleted});
  }
  const std::string row = "<tr><th scope=\"row\"><bdi>class/C";
  std::string html = PageHtml(review);
  EXPECT_EQ(CountOf(html, row), 1000U);
  EXPECT_THAT(html, Not(HasSubstr("<p class=\"more\">")));
  review.gone.push_back({1, "class/C1000", EChange::kDeleted});
  html = PageHtml(review);
  EXPECT_EQ(CountOf(html, row), 1000U);
  EXPECT_THAT(html, HasSubstr("<h2 id=\"gone-h\">Gone since the last review: 1,001</h2>"));
  EXPECT_THAT(html, HasSubstr("<p class=\"more\">One more; the JSON output has all.</p>"));
}

}  // namespace
}  // namespace metareview::page
