#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/page/PageHtml.h"

namespace metareview::page {
namespace {

using test::Accepted;
using test::Between;
using test::Made;
using test::MadeChange;
using test::MadeReview;
using test::PageHtml;
using testing::HasSubstr;
using testing::Not;

const SFinding kLength = MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
const SFinding kOwn = Made("class/Own", EChange::kInserted, "class-inserted");

std::string Contents(const SReview& review) {
  return Between(PageHtml(review), "<nav aria-label=\"On this page\"><ul>", "</ul></nav>");
}

TEST(PageNotesTest, TheContentsListThePartsThatThereAre) {
  const std::string all = "<li><a href=\"#all\">All differences</a></li> ";
  const std::string limits = "<li><a href=\"#limits\">What is not compared</a></li> ";
  const std::string rules = "<li><a href=\"#rules\">Rules</a></li> ";
  EXPECT_EQ(Contents(MadeReview({})), limits);
  EXPECT_EQ(Contents(MadeReview({kOwn})), all + limits + rules);
  SReview review = MadeReview({kLength, Accepted(kOwn, {"ours", {}, {}})});
  review.gone = {{1, "class/Old", EChange::kDeleted}};
  EXPECT_EQ(Contents(review), "<li><a href=\"#decide\">Decide first</a></li> " + all +
                                  "<li><a href=\"#decisions\">Decisions</a></li> "
                                  "<li><a href=\"#gone\">Gone</a></li> " +
                                  limits + rules);
}

TEST(PageNotesTest, TheLegendSaysWhatIsMarked) {
  SReview review = MadeReview({kOwn});
  EXPECT_EQ(Between(PageHtml(review), "<p class=\"intro legend\">", "</p>"),
            "Base is what was shipped with the version in use, original what the upgrade ships, client what is "
            "installed. What a side changed since the base is <bdi>marked</bdi> on that side. The upgrade sets the "
            "client to the original.");
  review.base.reset();
  EXPECT_EQ(Between(PageHtml(review), "<p class=\"intro legend\">", "</p>"),
            "Original is what the upgrade ships, client what is installed. What differs is <bdi>marked</bdi>. The "
            "upgrade sets the client to the original.");
}

TEST(PageNotesTest, StaleDecisionsHaveTheCommandThatDropsThem) {
  SReview review = MadeReview({});
  review.directory = "my upgrade";
  SDecision decision;
  decision.path = "class/Old";
  decision.change = EChange::kInserted;
  review.stale = {decision};
  EXPECT_THAT(PageHtml(review), HasSubstr("<p class=\"intro\">They match no difference. <bdi>upgradesrv decide --prune "
                                          "&apos;my upgrade&apos;</bdi> drops them.</p>"));
}

TEST(PageNotesTest, ItSaysWhatIsNotComparedAndWhatIsAssumed) {
  SFinding hidden = kOwn;
  hidden.reported = false;
  const std::string notCompared =
      "<li>Anything that is not in a metamodel: programs, scripts, forms, rights, settings, and stored values except "
      "where they were counted.</li>\n"
      "<li>The order of elements, properties, methods and listed behaviors.</li>\n"
      "<li>The spelling of the behaviors that a class or link lists.</li>\n"
      "<li>What is inside an element, method or property that only one side has.</li>\n"
      "<li>Names match whatever the case of the letters A to Z. A name that is spelled differently is a difference of "
      "its own.</li>\n";
  const std::string assumed =
      "<li>The upgrade sets everything that it ships to the definition that it ships.</li>\n"
      "<li>What only this installation has stays.</li>\n"
      "<li><bdi>table_name</bdi> is the table of a class or link, and <bdi>field</bdi> the column of a property in it. "
      "A property of a behavior has its column in the table of every class and link that lists the behavior.</li>\n";
  const std::string all = PageHtml(MadeReview({kOwn, kLength}));
  EXPECT_EQ(Between(all, "<h3>Not compared</h3><ul>\n", "</ul>"), notCompared);
  EXPECT_EQ(Between(all, "<h3>Assumed</h3><ul>\n", "</ul>"), assumed);
  EXPECT_EQ(Between(PageHtml(MadeReview({hidden, kLength})), "<h3>Not compared</h3><ul>\n", "</ul>"),
            notCompared +
                "<li>The report of <bdi>upgradesrv run</bdi> shows less: one of these 2 differences is not "
                "in it.</li>\n");
  SFinding other = kLength;
  other.reported = false;
  EXPECT_THAT(PageHtml(MadeReview({hidden, other})), HasSubstr("shows less: 2 of these 2 differences are not in it."));
}

TEST(PageNotesTest, TheRulesOfThePageAreExplainedTheWorstFirst) {
  // A decision gave the second of its findings another risk.
  SFinding safe = MadeChange("class/Part/property/Name/length", "length-shrinks", 9U, 8U);
  safe.risk = ERisk::kSafe;
  const std::string html = PageHtml(MadeReview({kOwn, safe, kLength}));
  const std::string part = Between(html, "<section class=\"part\" id=\"rules\"", "</section>");
  EXPECT_THAT(part, HasSubstr("<p class=\"intro\">Why each has its risk, and what to do. <bdi>upgradesrv explain</bdi> "
                              "lists all 56.</p>"));
  EXPECT_EQ(Between(part, "<tbody>\n", "</tbody>"),
            "<tr id=\"r-length-shrinks\"><th scope=\"row\"><b>Length shrinks</b> "
            "<code class=\"quiet\">length-shrinks</code></th>"
            "<td><span class=\"risk loss\">Loss</span> <span class=\"risk safe\">Safe</span> </td>"
            "<td data-label=\"Why\">A value that is longer than its column is cut off, or the upgrade stops at it.</td>"
            "<td data-label=\"What to do\">Shorten the longer values, or set your own length again before anybody "
            "works with it. Accept it if no value is longer and none will be.</td></tr>\n"
            "<tr id=\"r-class-inserted\"><th scope=\"row\"><b>Class only here</b> "
            "<code class=\"quiet\">class-inserted</code></th>"
            "<td><span class=\"risk safe\">Safe</span> </td>"
            "<td data-label=\"Why\">The upgrade sets what it ships, and it does not ship this class.</td>"
            "<td data-label=\"What to do\">Nothing. Accept it with a reason if it need not be looked at again.</td>"
            "</tr>\n");
}

TEST(PageNotesTest, RulesThatAreEquallyBadAreInTheOrderInWhichTheyAreTried) {
  const std::string html =
      PageHtml(MadeReview({MadeChange("class/A/display_name", "display-name", "a", "b"),
                           Made("class/B", EChange::kDeleted, "class-new", EOrigin::kVendor), kOwn}));
  const std::size_t inserted = html.find("<tr id=\"r-class-inserted\"");
  const std::size_t added = html.find("<tr id=\"r-class-new\"");
  const std::size_t renamed = html.find("<tr id=\"r-display-name\"");
  EXPECT_LT(inserted, added);
  EXPECT_LT(added, renamed);
  EXPECT_LT(renamed, html.size());
}

TEST(PageNotesTest, EqualMetamodelsNeedNoRules) {
  EXPECT_THAT(PageHtml(MadeReview({})), Not(HasSubstr("id=\"rules\"")));
}

}  // namespace
}  // namespace metareview::page
