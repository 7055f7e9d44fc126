#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/page/FindingRow.h"
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
const SFinding kMax = MadeChange("class/Part/property/Code/max", "max-tightens", "99", "50");
const SFinding kLink = Made("link/Uses", EChange::kInserted, "link-withdrawn", EOrigin::kVendor);
const SFinding kOwn = Made("class/Own", EChange::kInserted, "class-inserted");

/// The place that has the finding's name, with its mark-up.
std::string Place(const std::string& html, const SFinding& finding) {
  const std::string id = " id=\"d-" + IdText(finding.id) + "\"";
  const std::size_t found = html.find(id);
  if (found == std::string::npos) {
    return "";
  }
  const std::size_t begin = html.rfind("<article", found);
  return html.substr(begin, html.find("</article>", found) - begin);
}

const std::string kHeads =
    "<thead><tr><th scope=\"col\" class=\"a\">Risk</th><th scope=\"col\" class=\"w\">Difference</th>"
    "<th scope=\"col\" class=\"e\">What the upgrade does</th><th scope=\"col\" class=\"x\">Base</th>"
    "<th scope=\"col\" class=\"x\">Original</th><th scope=\"col\" class=\"x\">Client</th>"
    "<th scope=\"col\" class=\"by\">Changed by</th></tr></thead>";

TEST(PageFindingsTest, APlaceSaysWhatToDoAboutAllThatIsThere) {
  SFinding length = kLength;
  length.displayName = "Part <number>";
  const SReview review = MadeReview({length, kMax});
  const CPage page(review, CWords::English());
  const CFindingRow row(page);
  const std::string id = IdText(kLength.id);
  EXPECT_EQ(Place(PageHtml(review), length),
            "<article class=\"place\" id=\"d-" + id + "\" data-kind=\"class\" aria-labelledby=\"h-" + id +
                "\">\n"
                "<h3 id=\"h-" +
                id +
                "\"><span class=\"quiet\">class</span> <bdi>Part</bdi> <span class=\"quiet\">› property</span> "
                "<bdi>Code</bdi> <bdi class=\"text\">Part &lt;number&gt;</bdi></h3>\n"
                "<table class=\"diff\" aria-labelledby=\"h-" +
                id + "\">" + kHeads + "<tbody>\n" + row.InPlace(review.findings[0]) + "\n" +
                row.InPlace(review.findings[1]) +
                "\n</tbody></table>\n"
                "<div class=\"act\"><div><h4>What to do</h4>\n\n"
                "<dl><dt>Length shrinks</dt><dd>Shorten the longer values, or set your own length again before anybody "
                "works with it. Accept it if no value is longer and none will be.</dd>"
                "<dt>Maximum tightens</dt><dd>Look at the values above the new maximum and correct them, or set your "
                "own maximum again after the upgrade.</dd></dl>\n"
                "<details><summary>Why these risks</summary><dl>"
                "<dt>Length shrinks</dt><dd>A value that is longer than its column is cut off, or the upgrade stops at "
                "it.</dd>"
                "<dt>Maximum tightens</dt><dd>An object whose value lies above the maximum cannot be saved until "
                "somebody changes the value. The upgrade itself may stop at it.</dd></dl></details>\n"
                "</div>\n"
                "<div class=\"command\"><h4>To accept all of it, put the reason between the quotes</h4>\n"
                "<pre><code>upgradesrv decide --reason &apos;&apos; \\\n  upgrade \\\n"
                "  class/Part/property/Code/length \\\n  class/Part/property/Code/max</code></pre>\n"
                "</div></div>\n");
}

TEST(PageFindingsTest, APlaceUnderOneRuleHasOneAdvice) {
  const SReview review = MadeReview({kLink});
  const CPage page(review, CWords::English());
  const std::string id = IdText(kLink.id);
  EXPECT_EQ(Place(PageHtml(review), kLink),
            "<article class=\"place\" id=\"d-" + id + "\" data-kind=\"link\" aria-labelledby=\"h-" + id +
                "\">\n<h3 id=\"h-" + id +
                "\"><span class=\"quiet\">link</span> <bdi>Uses</bdi></h3>\n"
                "<table class=\"diff\" aria-labelledby=\"h-" +
                id + "\">" + kHeads + "<tbody>\n" + CFindingRow(page).InPlace(review.findings[0]) +
                "\n</tbody></table>\n"
                "<div class=\"act\"><div><h4>What to do</h4>\n"
                "<p>Ask the vendor which link takes its place. Copy the connections there, or back up its table, "
                "before the upgrade. Accept it if the connections may go.</p>\n"
                "<details><summary>Why this risk</summary><p>A metamodel does not say what becomes of a link that is "
                "no longer shipped. If the link goes, the connections in its table go with it. The objects at both "
                "ends stay.</p></details>\n\n"
                "</div>\n"
                "<div class=\"command\"><h4>To accept it, put the reason between the quotes</h4>\n"
                "<pre><code>upgradesrv decide --reason &apos;&apos; \\\n  upgrade \\\n  link/Uses</code></pre>\n"
                "</div></div>\n");
}

TEST(PageFindingsTest, ARuleOfSeveralFindingsIsExplainedOnce) {
  SFinding name = MadeChange("class/Part/property/Code/display_name", "length-shrinks", "a", "b");
  const std::string place = Place(PageHtml(MadeReview({name, kLength})), name);
  EXPECT_THAT(place, HasSubstr("<p>Shorten the longer values"));
  EXPECT_THAT(place, Not(HasSubstr("<dl>")));
  EXPECT_THAT(place, HasSubstr("To accept all of it"));
}

TEST(PageFindingsTest, MoreThanTwoFindingsMakeALongPlace) {
  EXPECT_THAT(Place(PageHtml(MadeReview({kLength, kMax})), kLength), HasSubstr("<article class=\"place\" "));
  const SFinding min = MadeChange("class/Part/property/Code/min", "min-tightens", "1", "5");
  EXPECT_THAT(Place(PageHtml(MadeReview({kLength, kMax, min})), kLength), HasSubstr("<article class=\"place long\" "));
}

TEST(PageFindingsTest, AWordThatNoShellTakesIsInNoCommand) {
  // With "class/" it is one byte shorter than what no shell takes, and one byte longer.
  const std::string shorter(131065, 'x');
  const SFinding taken = Made("class/" + shorter, EChange::kInserted, "class-withdrawn", EOrigin::kVendor);
  EXPECT_THAT(Place(PageHtml(MadeReview({taken})), taken), HasSubstr("class/" + shorter + "</code></pre>"));
  const SFinding refused = Made("class/" + shorter + "x", EChange::kInserted, "class-withdrawn", EOrigin::kVendor);
  const std::string place = Place(PageHtml(MadeReview({refused})), refused);
  EXPECT_THAT(place, HasSubstr("<h4>A path here is too long for a command line. To accept it, write the entry into the "
                               "decisions file.</h4>"));
  EXPECT_THAT(place, Not(HasSubstr("<pre>")));
}

TEST(PageFindingsTest, PlacesHaveWhatHasToBeDecidedTheWorstFirst) {
  const std::string html = PageHtml(MadeReview({kOwn, kMax, kLink}));
  EXPECT_EQ(CountOf(html, "<article "), 2U);
  EXPECT_LT(html.find("id=\"d-" + IdText(kLink.id)), html.find("id=\"d-" + IdText(kMax.id)));
  EXPECT_THAT(html, Not(HasSubstr("<p class=\"left\">")));
  EXPECT_THAT(html, HasSubstr("<div class=\"overview\">"));
}

TEST(PageFindingsTest, WhereNothingHasToBeDecidedThereAreNoPlaces) {
  const std::string html = PageHtml(MadeReview({kOwn}));
  EXPECT_THAT(html, Not(HasSubstr("id=\"decide\"")));
  EXPECT_THAT(html, HasSubstr("<div class=\"overview single\">"));
  EXPECT_THAT(html, HasSubstr("id=\"all\""));
  EXPECT_THAT(PageHtml(MadeReview({})), Not(HasSubstr("id=\"all\"")));
}

/// The elements of a kind, with its title.
std::string Kind(const std::string& html, const std::string& kind) {
  return Between(html, "<div class=\"kind\" data-kind=\"" + kind + "\">", "\n</div>");
}

TEST(PageFindingsTest, AnElementHasItsNameItsTallyAndItsFindings) {
  SFinding table = MadeChange("class/Part/table_name", "table-moved", "T_FHA_PART", "T_PART");
  table.displayName = "Teil <1>";
  SFinding own = Accepted(Made("class/Part/property/Own", EChange::kInserted, "property-inserted"), {"ours", {}, {}});
  own.displayName = "Eigenes";
  const SReview review = MadeReview({table, kLength, own});
  const CPage page(review, CWords::English());
  CFindingRow row(page);
  const std::string first = row.InElement(review.findings[0]);
  const std::string second = row.InElement(review.findings[1]);
  const std::string third = row.InElement(review.findings[2]);
  EXPECT_EQ(Kind(PageHtml(review), "class"),
            "<p>Classes: 1 with differences</p>\n"
            "<details class=\"element\" open data-kind=\"class\"><summary><h3><span class=\"quiet\">class</span> "
            "<bdi>Part</bdi> <bdi class=\"text\">Teil &lt;1&gt;</bdi></h3> <span class=\"tally\">"
            "<span class=\"risk loss\">2<span class=\"hear\"> Loss</span></span> "
            "<span class=\"risk accepted\">1<span class=\"hear\"> Accepted</span></span> </span></summary>\n"
            "<table class=\"diff\">" +
                kHeads + "<tbody>\n" + first + "\n" + second + "\n" + third + "\n</tbody></table></details>");
}

TEST(PageFindingsTest, WhatIsInAnElementDoesNotTellItsDisplayName) {
  SFinding property = Made("link/Uses/property/Own", EChange::kInserted, "property-inserted");
  property.displayName = "Eigenes";
  EXPECT_THAT(PageHtml(MadeReview({property})),
              HasSubstr("<h3><span class=\"quiet\">link</span> <bdi>Uses</bdi></h3> <span class=\"tally\">"
                        "<span class=\"risk safe\">1<span class=\"hear\"> Safe</span></span> </span></summary>"));
}

TEST(PageFindingsTest, TheLastKindOfElementHasADisplayNameToo) {
  SFinding behavior = Made("behavior/Rated", EChange::kInserted, "behavior-inserted");
  behavior.displayName = "Bewertet";
  EXPECT_THAT(PageHtml(MadeReview({behavior})), HasSubstr("<h3><span class=\"quiet\">behavior</span> <bdi>Rated</bdi> "
                                                          "<bdi class=\"text\">Bewertet</bdi></h3>"));
}

TEST(PageFindingsTest, ElementsAreListedByTheirKinds) {
  const std::string html = PageHtml(MadeReview({kLength, kMax, kOwn, kLink}));
  const std::string classes = Kind(html, "class");
  EXPECT_THAT(classes, HasSubstr("<p>Classes: 2 with differences</p>\n<details "));
  EXPECT_LT(classes.find("<bdi>Part</bdi></h3>"), classes.find("<bdi>Own</bdi></h3>"));
  EXPECT_EQ(CountOf(classes, "<details "), 2U);
  EXPECT_THAT(Kind(html, "link"), HasSubstr("<p>Links: 1 with differences</p>\n<details "));
  EXPECT_EQ(CountOf(html, "<div class=\"kind\""), 2U);
}

TEST(PageFindingsTest, TheMostFindingsOnAPageThatIsUnfoldedAreFiveHundred) {
  std::vector<SFinding> findings;
  for (int i = 0; i < 500; ++i) {
    findings.push_back(Made("class/C/property/P" + std::to_string(i), EChange::kInserted, "property-inserted"));
  }
  EXPECT_THAT(PageHtml(MadeReview(findings)), HasSubstr("<details class=\"element\" open data-kind"));
  findings.push_back(Made("class/C/property/P", EChange::kInserted, "property-inserted"));
  EXPECT_THAT(PageHtml(MadeReview(findings)), HasSubstr("<details class=\"element\" data-kind"));
}

}  // namespace
}  // namespace metareview::page
