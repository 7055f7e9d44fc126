#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/RenderedReview.h"

namespace metareview {
namespace {

using testing::HasSubstr;

constexpr const char* kHeader =
    "id,path,change,rule,risk,origin,reported,display_name,type,taken_by,taken_class_id,taken_table_name,taken_field,"
    "base,original,client,rows,of,tables,problem,risk_without_data,accepted,accepted_by,accepted_until,since,"
    "meaning\r\n";

/// The row of one display name that changes from a text.
std::string RowOf(const std::string& client) {
  const SFinding finding = test::MadeChange("class/Part/display_name", "display-name", client, "Part");
  return test::Rendered("csv", test::MadeReview({finding}));
}

TEST(CsvReviewTest, HasARowPerFinding) {
  EXPECT_EQ(
      test::Rendered("csv", test::FullReview()),
      std::string(kHeader) +
          "e4f333239954eb46,class/Part/property/Code/length,changed,length-shrinks,loss,customer,true,Part "
          "number,string,"
          ",,,,32,32,48,137,20341,T_PART,,,,,,changed,\"The upgrade shortens Code from 48 to 32 characters. 137 of "
          "20,341 "
          "stored values are longer and would be cut or refused. The decision on record is about 40 here and 32 "
          "shipped, "
          "so it no longer applies. The decision on record expired on 2026-10-31.\"\r\n"
          "c1b8a6fddcbb64b5,class/Part/property/Weight/precision,changed,precision-shrinks,safe,customer,true,,,"
          ",,,,3,3,6,0,884,T,,loss,,,,known,The upgrade keeps 3 instead of 6 decimal places of Weight. None of 884 "
          "stored "
          "values has more. Without the count it would be judged loss.\r\n"
          "a8cb528c4e04956f,class/Part/property/Sum/field,changed,field-moved,loss,customer,false,,,"
          ",,,,F_SUM,F_SUM,F_SHA,,,,no column F_SHA in T_PART,,,,,new,The upgrade keeps Sum in column F_SUM instead of "
          "F_SHA. The values in F_SHA would be left behind. Stored values could not be counted: no column F_SHA in "
          "T_PART.\r\n"
          "0c35d5ff0b330cde,class/Own,inserted,class-inserted,safe,customer,true,\"\",,"
          ",,,,,,,,,,,,ours,jo,2027-06-30,known,Only this installation has class Own. The upgrade leaves it alone.\r\n"
          "c54eaf5ea02f2a02,link/Uses,deleted,link-identity-taken,block,vendor,true,,,"
          "class/Own,1001,T_USES,,,,,,,,,,,,,new,\"The upgrade adds link Uses with class id 1001 and table T_USES, "
          "which "
          "class Own already has here.\"\r\n");
}

TEST(CsvReviewTest, HasOnlyTheHeaderWithoutFindings) {
  EXPECT_EQ(test::Rendered("csv", test::MadeReview({})), kHeader);
}

TEST(CsvReviewTest, QuotesWhatWouldEndAField) {
  EXPECT_THAT(RowOf("a,b"), HasSubstr(",Part,\"a,b\","));
  EXPECT_THAT(RowOf("a\"b"), HasSubstr(",Part,\"a\"\"b\","));
  EXPECT_THAT(RowOf("a\nb"), HasSubstr(",Part,\"a\nb\","));
  EXPECT_THAT(RowOf("a\rb"), HasSubstr(",Part,\"a\rb\","));
}

TEST(CsvReviewTest, TellsAnEmptyTextFromNone) {
  EXPECT_THAT(RowOf(""), HasSubstr(",Part,\"\",,,"));
}

TEST(CsvReviewTest, KeepsASpreadsheetFromRunningATextAsAFormula) {
  EXPECT_THAT(RowOf("=1+1"), HasSubstr(",Part,'=1+1,"));
  EXPECT_THAT(RowOf("+1"), HasSubstr(",Part,'+1,"));
  EXPECT_THAT(RowOf("-1"), HasSubstr(",Part,'-1,"));
  EXPECT_THAT(RowOf("@SUM(A1)"), HasSubstr(",Part,'@SUM(A1),"));
  EXPECT_THAT(RowOf("\tx"), HasSubstr(",Part,'\tx,"));
  EXPECT_THAT(RowOf("\rx"), HasSubstr(",Part,\"'\rx\","));
  EXPECT_THAT(RowOf("=a,\"b\""), HasSubstr(",Part,\"'=a,\"\"b\"\"\","));
}

TEST(CsvReviewTest, LeavesOtherTextsAsTheyAre) {
  EXPECT_THAT(RowOf("a=1"), HasSubstr(",Part,a=1,"));
  EXPECT_THAT(RowOf(" =1"), HasSubstr(",Part, =1,"));
  EXPECT_THAT(RowOf("~1"), HasSubstr(",Part,~1,"));
  EXPECT_THAT(RowOf("图"), HasSubstr(",Part,图,"));
}

TEST(CsvReviewTest, SeparatesTables) {
  SFinding finding = test::MadeChange("behavior/Rated/property/P/field", "field-moved", "F_1", "F_2");
  finding.data = std::make_shared<const SData>(SData{2, 9, {"T_A", "T_B"}, {}});
  EXPECT_THAT(test::Rendered("csv", test::MadeReview({finding})), HasSubstr(",2,9,T_A;T_B,,"));
}

TEST(CsvReviewTest, HasBothACountThatMayBeTooLowAndWhy) {
  const SFinding moved = test::MadeChange("class/Part/property/P/field", "field-moved", "F_1", "F_2");
  EXPECT_THAT(test::Rendered("csv", test::MadeReview({test::CountedInPart(moved, 2, 9, "hidden")})),
              HasSubstr(",2,9,T,hidden,,"));
}

TEST(CsvReviewTest, SaysWhatAFindingMeansInTheLanguage) {
  SRenderOptions german;
  german.words = CWords::Find("de");
  const SReview review = test::MadeReview({test::Made("class/Own", EChange::kInserted, "class-inserted")});
  EXPECT_THAT(test::Rendered("csv", review, german),
              HasSubstr(",Nur diese Installation hat die Klasse Own. Das Upgrade lässt sie unberührt.\r\n"));
}

TEST(CsvReviewTest, OfAFailedReviewHasOtherColumns) {
  SReview review = test::FullReview();
  review.complete = false;
  review.problem = "a, \"b\"";
  EXPECT_EQ(test::Rendered("csv", review), "complete,problem\r\nfalse,\"a, \"\"b\"\"\"\r\n");
}

}  // namespace
}  // namespace metareview
