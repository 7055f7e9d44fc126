#include "metareview2024/render/page/FindingRow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/page/PageHtml.h"

namespace metareview::page {
namespace {

using test::Accepted;
using test::Between;
using test::Made;
using test::MadeChange;
using test::MadeReview;
using testing::HasSubstr;
using testing::Not;

SReview WithoutBase(SFinding finding) {
  finding.origin = EOrigin::kUnknown;
  finding.base.reset();
  SReview review = MadeReview({finding});
  review.base.reset();
  return review;
}

/// The row in the element of the review's first finding.
std::string InElement(const SReview& review) {
  const CPage page(review, CWords::English());
  return CFindingRow(page).InElement(review.findings.front());
}

std::string InElement(const SFinding& finding) {
  return InElement(MadeReview({finding}));
}

/// The row in the place to decide of the review's first finding.
std::string InPlace(const SFinding& finding) {
  const SReview review = MadeReview({finding});
  const CPage page(review, CWords::English());
  return CFindingRow(page).InPlace(review.findings.front());
}

/// What the row says differs.
std::string Difference(const std::string& row) {
  return Between(row, "<th scope=\"row\" class=\"w\">", "</th>");
}

/// Who made it, and the notes.
std::string Remarks(const std::string& row) {
  return Between(row, "<td class=\"by\">", "</td>");
}

/// The findings' own marks, which the filter of the page looks at.
std::string Marks(const std::string& row) {
  return Between(row, " data-risk", " data-path");
}

TEST(FindingRowTest, ARowInItsElementSaysAllAboutTheFinding) {
  const SFinding finding = MadeChange("class/Part/table_name", "table-moved", "T_FHA_PART", "T_PART");
  const std::string id = IdText(finding.id);
  EXPECT_EQ(
      InElement(finding),
      "<tr id=\"f-" + id +
          "\" data-risk=\"loss\" data-origin=\"customer\" data-decision=\"open\" data-path=\"class/Part/table_name\">"
          "<td class=\"a\"><span id=\"kind=class\"></span>"
          "<span id=\"kind=class&amp;risk=loss&amp;decision=open\"></span>"
          "<span id=\"risk=loss&amp;decision=open\"></span>"
          "<span class=\"risk loss\">Loss</span> <a href=\"#r-table-moved\">Table moved</a></td>"
          "<th scope=\"row\" class=\"w\"><bdi>table_name</bdi> </th>"
          "<td class=\"e\">The upgrade keeps <bdi>Part</bdi> in table <bdi>T_PART</bdi> instead of "
          "<bdi>T_FHA_PART</bdi>. The rows in <bdi>T_FHA_PART</bdi> would be left behind. Stored values were not "
          "counted.</td>"
          "<td class=\"x\" data-label=\"Base\" dir=\"auto\">T_PART</td>"
          "<td class=\"x\" data-label=\"Original\" dir=\"auto\">T_PART</td>"
          "<td class=\"x\" data-label=\"Client\" dir=\"auto\">T_<mark>FHA_</mark>PART</td>"
          "<td class=\"by\">customer <a href=\"#d-" +
          id + "\">to the decision</a></td></tr>");
}

TEST(FindingRowTest, ARowInItsPlaceHasNoNameOfItsOwnAndLeadsNowhere) {
  EXPECT_EQ(InPlace(Made("link/Uses", EChange::kInserted, "link-withdrawn", EOrigin::kVendor)),
            "<tr data-risk=\"loss\" data-origin=\"vendor\" data-decision=\"open\" data-path=\"link/Uses\">"
            "<td class=\"a\"><span class=\"risk loss\">Loss</span> <a href=\"#r-link-withdrawn\">Link no longer "
            "shipped</a></td>"
            "<th scope=\"row\" class=\"w\"><small>whole link</small></th>"
            "<td class=\"e\">Link <bdi>Uses</bdi> was shipped before and is no longer shipped. If the upgrade removes "
            "it, its connections are lost. Stored values were not counted.</td>"
            "<td class=\"x no\" data-label=\"Base\" dir=\"auto\">present</td>"
            "<td class=\"x no\" data-label=\"Original\" dir=\"auto\"><mark>absent</mark></td>"
            "<td class=\"x no\" data-label=\"Client\" dir=\"auto\">present</td>"
            "<td class=\"by\">vendor</td></tr>");
}

TEST(FindingRowTest, WithoutABaseThereIsNoColumnForItAndNobodyMadeIt) {
  const std::string row =
      InElement(WithoutBase(MadeChange("class/Part/display_name", "display-name", "Teil", "Part", EOrigin::kUnknown)));
  EXPECT_THAT(row, HasSubstr("<td class=\"e\">The upgrade changes the display name of <bdi>Part</bdi> from "
                             "<bdi>Teil</bdi> to <bdi>Part</bdi>.</td>"
                             "<td class=\"x\" data-label=\"Original\" dir=\"auto\"><mark>Part</mark></td>"
                             "<td class=\"x\" data-label=\"Client\" dir=\"auto\"><mark>Teil</mark></td>"
                             "<td class=\"by\"></td></tr>"));
}

TEST(FindingRowTest, AnAcceptedFindingSaysWhoAcceptedItAndWhy) {
  const std::string row =
      InElement(Accepted(Made("class/Own", EChange::kInserted, "class-inserted"), {"add-on <1>", "jo", "2027-06-30"}));
  EXPECT_THAT(row, HasSubstr(" data-decision=\"accepted\" "));
  EXPECT_THAT(row, HasSubstr("<span id=\"decision=accepted\"></span><span class=\"risk safe\">Safe</span> "
                             "<span class=\"risk accepted\">Accepted</span> <a href=\"#r-class-inserted\">"));
  EXPECT_THAT(row, HasSubstr("The upgrade leaves it alone. <small>Accepted by <bdi>jo</bdi> until "
                             "<bdi>2027-06-30</bdi>: <bdi>add-on &lt;1&gt;</bdi></small></td>"));
}

TEST(FindingRowTest, InItsElementAPartIsNamedWithItsAttribute) {
  SFinding finding = MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
  EXPECT_EQ(Difference(InElement(finding)), "<bdi>Code</bdi> <small><bdi>length</bdi></small>");
  finding.displayName = "Part <number>";
  EXPECT_EQ(Difference(InElement(finding)),
            "<bdi>Code</bdi> <small><bdi>length</bdi> · <bdi class=\"text\">Part &lt;number&gt;</bdi></small>");
  // The place itself is named after the part.
  EXPECT_EQ(Difference(InPlace(finding)), "<bdi>length</bdi> ");
}

TEST(FindingRowTest, ADisplayNameThatSaysNoMoreIsNotRepeated) {
  SFinding finding = MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
  for (const char* const name : {"", "Code"}) {
    finding.displayName = name;
    EXPECT_EQ(Difference(InElement(finding)), "<bdi>Code</bdi> <small><bdi>length</bdi></small>");
  }
}

TEST(FindingRowTest, AWholeThingIsNamedByItsKind) {
  const SFinding behavior = Made("behavior/Rated", EChange::kInserted, "behavior-inserted");
  EXPECT_EQ(Difference(InElement(behavior)), "<small>whole behavior</small>");
  SFinding property = Made("class/Part/property/Sum", EChange::kInserted, "property-inserted");
  property.displayName = "Total";
  EXPECT_EQ(Difference(InElement(property)),
            "<bdi>Sum</bdi> <small>property · <bdi class=\"text\">Total</bdi></small>");
  EXPECT_EQ(Difference(InPlace(property)), "<small>whole property</small>");
  const SFinding listed = Made("link/Uses/behavior/Rated", EChange::kDeleted, "listed-behavior-deleted");
  EXPECT_EQ(Difference(InElement(listed)), "<bdi>Rated</bdi> <small>listed behavior</small>");
  EXPECT_EQ(Difference(InPlace(listed)), "<small>entry in the list</small>");
}

TEST(FindingRowTest, AFindingLeadsToTheFirstOfItsPlace) {
  const SFinding block = MadeChange("class/Part/property/Code/max", "max-tightens", "99", "50");
  const SFinding loss = MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
  const SFinding other = Made("link/Uses", EChange::kInserted, "link-withdrawn");
  const SReview review = MadeReview({block, loss, other});
  const CPage page(review, CWords::English());
  CFindingRow row(page);
  // The worst comes first in its place.
  for (const auto& [finding, first] : {std::pair(0U, loss), std::pair(1U, loss), std::pair(2U, other)}) {
    EXPECT_EQ(Remarks(row.InElement(review.findings[finding])),
              "customer <a href=\"#d-" + IdText(first.id) + "\">to the decision</a>");
  }
}

TEST(FindingRowTest, WhatHasNotToBeDecidedLeadsToNoDecision) {
  EXPECT_EQ(Remarks(InElement(Made("class/Own", EChange::kInserted, "class-inserted"))), "customer");
}

TEST(FindingRowTest, NotesSayWhatTheReportLacksAndWhatIsNew) {
  SFinding finding = Made("class/Own", EChange::kInserted, "class-inserted");
  EXPECT_EQ(Marks(InElement(finding)), "=\"safe\" data-origin=\"customer\" data-decision=\"open\"");
  finding.reported = false;
  finding.since = ESince::kNew;
  EXPECT_EQ(Marks(InElement(finding)),
            "=\"safe\" data-origin=\"customer\" data-decision=\"open\" data-since=\"new\" data-report=\"no\"");
  EXPECT_EQ(Remarks(InElement(finding)),
            "customer <small>not in the report</small> <small>new since the last review</small>");
  finding.reported = true;
  finding.since = ESince::kChanged;
  EXPECT_EQ(Remarks(InElement(finding)), "customer <small>changed since the last review</small>");
  finding.since = ESince::kKnown;
  EXPECT_THAT(InElement(finding), HasSubstr(" data-since=\"known\" "));
  EXPECT_EQ(Remarks(InElement(finding)), "customer");
}

TEST(FindingRowTest, NotesSayThatADecisionNoLongerHolds) {
  SReview review = MadeReview({MadeChange("class/Part/display_name", "display-name", "Teil", "Part")});
  SDecision decision;
  decision.path = "class/Part/display_name";
  decision.client = "Stück";
  decision.original = "Part";
  decision.acceptance = {"our word", {}, "2026-01-31"};
  review.expired = {decision};
  EXPECT_THAT(InElement(review), HasSubstr(" data-decision=\"expired\" "));
  EXPECT_EQ(Remarks(InElement(review)), "customer <small>decision expired</small>");
  review.outdated = {{decision, "Part", "Teil"}};
  EXPECT_THAT(InElement(review), HasSubstr(" data-decision=\"outdated\" "));
  EXPECT_EQ(Remarks(InElement(review)), "customer <small>decision outdated</small>");
  // Another decision accepts it.
  review.findings.front() = Accepted(review.findings.front(), {"fine", {}, {}});
  EXPECT_THAT(InElement(review), HasSubstr(" data-decision=\"accepted\" "));
  EXPECT_EQ(Remarks(InElement(review)), "customer");
}

TEST(FindingRowTest, OnlyTheFirstFindingHasTheNameThatLinksLeadTo) {
  const SReview review = MadeReview({Made("class/A", EChange::kInserted, "class-inserted"),
                                     Made("class/B", EChange::kInserted, "class-inserted"),
                                     Made("link/C", EChange::kInserted, "link-inserted")});
  const CPage page(review, CWords::English());
  CFindingRow row(page);
  EXPECT_THAT(row.InElement(review.findings[0]), HasSubstr("<span id=\"kind=class\"></span>"));
  EXPECT_THAT(row.InElement(review.findings[1]), Not(HasSubstr("<span id=")));
  // Safe ones have been there before.
  EXPECT_THAT(row.InElement(review.findings[2]),
              HasSubstr("<td class=\"a\"><span id=\"kind=link\"></span>"
                        "<span id=\"kind=link&amp;risk=safe&amp;decision=open\"></span><span class=\"risk safe\">"));
}

TEST(FindingRowTest, ControlsInNamesAreVisible) {
  const std::string row = InElement(Made("class/A\x1B", EChange::kInserted, "class-inserted"));
  EXPECT_THAT(row, HasSubstr(" data-path=\"class/A\\x1B\""));
}

/// The heads of the columns, as the templates write them.
std::string Heads(const SReview& review) {
  const CPage page(review, CWords::English());
  return CTemplate("{{#columns}}{{class}}: {{name}}; {{/columns}}").Render(page.Shared(), View());
}

TEST(FindingRowTest, TheColumnsAreNamedInTheirOrder) {
  EXPECT_EQ(Heads(MadeReview({})),
            "a: Risk; w: Difference; e: What the upgrade does; x: Base; x: Original; x: Client; by: Changed by; ");
  SReview review = MadeReview({});
  review.base.reset();
  EXPECT_EQ(Heads(review), "a: Risk; w: Difference; e: What the upgrade does; x: Original; x: Client; by: Notes; ");
}

}  // namespace
}  // namespace metareview::page
