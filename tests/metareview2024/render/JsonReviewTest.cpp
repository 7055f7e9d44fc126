#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "kvxsptfile/ReadFile.h"
#include "kvxsptstring/Utf8.h"
#include "metareview2024/MadeReview.h"
#include "metareview2024/render/RenderedReview.h"
#include "metareview2024/render/ReviewReader.h"

namespace metareview {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The identifiers in the file are the first 16 digits of `printf '%s\n%s' PATH CHANGE | sha256sum`, the path in lower
/// case.
TEST(JsonReviewTest, HasEveryMemberInItsOrder) {
  EXPECT_EQ(test::Rendered("json", test::FullReview()),
            kvx::ReadFile(UPGRADESRV_SOURCE_DIR "/tests/metareview2024/render/full-review.json"));
}

TEST(JsonReviewTest, AFindingHasItsMembersInOneOrder) {
  SFinding finding = test::Counted(test::MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U), 0,
                                   20341, "T_PART");
  finding.displayName = "Part number";
  finding.type = "string";
  finding.taken = std::make_shared<const STaken>(STaken{"class/Own", 1001, "T_USES", "F_CODE"});
  finding.risk = ERisk::kAttention;
  finding.riskWithoutData = ERisk::kLoss;
  finding.since = ESince::kNew;
  EXPECT_THAT(
      test::Rendered("json", test::MadeReview({test::Accepted(finding, {"ours", "jo", "2027-06-30"})})),
      HasSubstr(
          R"("reported":true,"display_name":"Part number","type":"string","taken":{"by":"class/Own","class_id":1001,"table_name":"T_USES","field":"F_CODE"},"base":32,"original":32,"client":48,"data":{"rows":0,"of":20341,"tables":["T_PART"]},"risk_without_data":"loss","accepted":{"reason":"ours","by":"jo","until":"2027-06-30"},"since":"new"})"));
}

TEST(JsonReviewTest, LeavesOutWhatIsNotThere) {
  SReview review = test::MadeReview({});
  review.base.reset();
  review.elements = {EKind::kLink};
  EXPECT_EQ(test::Rendered("json", review), R"({
  "format": "upgradesrv-review",
  "version": 1,
  "complete": true,
  "client": "client.json",
  "original": "original.json",
  "base": null,
  "directory": "upgrade",
  "elements": ["link"],
  "totals": {"link":{"loss":0,"block":0,"attention":0,"safe":0,"accepted":0}},
  "findings": []
}
)");
}

TEST(JsonReviewTest, OfAFailedReviewHasNeitherFindingsNorTotals) {
  SReview review = test::FullReview();
  review.complete = false;
  review.problem = "base.json: \"x\"";
  EXPECT_EQ(test::Rendered("json", review), R"({
  "format": "upgradesrv-review",
  "version": 1,
  "complete": false,
  "problem": "base.json: \"x\"",
  "directory": "upgrade"
}
)");
}

TEST(JsonReviewTest, EscapesWhatMustBeAndKeepsTheRest) {
  const SFinding finding = test::MadeChange("class/Part/display_name", "display-name", "a\"b\\c\n\x1B", "图/é");
  EXPECT_THAT(test::Rendered("json", test::MadeReview({finding})),
              HasSubstr(R"("original":"图/é","client":"a\"b\\c\n\u001B")"));
}

TEST(JsonReviewTest, WritesTextsWithNulBytesWhole) {
  const SFinding finding =
      test::MadeChange("class/Part/display_name", "display-name", std::string("a\0b", 3), std::string("c"));
  EXPECT_THAT(test::Rendered("json", test::MadeReview({finding})), HasSubstr(R"("client":"a\u0000b")"));
}

TEST(JsonReviewTest, IsUtf8WhateverBytesTheNamesOfFilesHave) {
  SFinding finding = test::MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
  auto data = std::make_shared<SData>();
  data->problem = "no table \xFC";
  finding.data = data;
  SReview review = test::MadeReview({finding});
  review.directory = "ex\xFF";
  review.client = "cl\xFE.json";
  review.against = "M\xFCller\n.json";
  for (const char* format : {"json", "ndjson"}) {
    const std::string text = test::Rendered(format, review);
    EXPECT_TRUE(kvx::IsUtf8(text));
    EXPECT_THAT(text, HasSubstr(R"(no table \\xFC)"));
    EXPECT_THAT(text, HasSubstr(R"("ex\\xFF")"));
    EXPECT_THAT(text, HasSubstr(R"("cl\\xFE.json")"));
    EXPECT_THAT(text, HasSubstr(R"("M\\xFCller\\n.json")"));
  }
  const std::string text = test::Rendered("json", review);
  EXPECT_EQ(test::Rendered("json", ReadReview(text, "review.json")), text);
  review.complete = false;
  review.problem = "ex\xFF: no such directory";
  EXPECT_TRUE(kvx::IsUtf8(test::Rendered("json", review)));
  EXPECT_TRUE(kvx::IsUtf8(test::Rendered("ndjson", review)));
}

TEST(JsonReviewTest, WritesLargeNumbersExactly) {
  SFinding finding =
      test::Counted(test::MadeChange("class/Part/class_id", "class-id", 4294967295U, 0U, EOrigin::kUnknown),
                    9007199254740993U, 18446744073709551615U);
  EXPECT_THAT(
      test::Rendered("json", test::MadeReview({finding})),
      HasSubstr(R"("original":0,"client":4294967295,"data":{"rows":9007199254740993,"of":18446744073709551615)"));
}

TEST(JsonReviewTest, DoesNotDependOnTheLanguage) {
  SRenderOptions german;
  german.words = CWords::Find("de");
  EXPECT_EQ(test::Rendered("json", test::FullReview(), german), test::Rendered("json", test::FullReview()));
}

}  // namespace
}  // namespace metareview
