#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/RenderedReview.h"

namespace metareview {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The identifiers are the first 16 digits of `printf '%s\n%s' PATH CHANGE | sha256sum`, the path in lower case.
TEST(JsonReviewTest, HasEveryMemberInItsOrder) {
  EXPECT_EQ(test::Rendered("json", test::FullReview()), R"({
  "format": "upgradesrv-review",
  "version": 1,
  "complete": true,
  "client": "client.json",
  "original": "original.json",
  "base": "base.json",
  "directory": "upgrade",
  "against": "yesterday.json",
  "data": "data.db",
  "elements": ["class","link","behavior"],
  "totals": {"class":{"loss":2,"block":0,"attention":0,"safe":1,"accepted":1},"link":{"loss":0,"block":1,"attention":0,"safe":0,"accepted":0},"behavior":{"loss":0,"block":0,"attention":0,"safe":0,"accepted":0}},
  "findings": [
    {"id":"e4f333239954eb46","path":"class/Part/property/Code/length","change":"changed","rule":"length-shrinks","risk":"loss","origin":"customer","reported":true,"display_name":"Part number","type":"string","base":32,"original":32,"client":48,"data":{"rows":137,"of":20341,"tables":["T_PART"]},"since":"changed"},
    {"id":"c1b8a6fddcbb64b5","path":"class/Part/property/Weight/precision","change":"changed","rule":"precision-shrinks","risk":"safe","origin":"customer","reported":true,"base":3,"original":3,"client":6,"data":{"rows":0,"of":884,"tables":["T"]},"risk_without_data":"loss","since":"known"},
    {"id":"a8cb528c4e04956f","path":"class/Part/property/Sum/field","change":"changed","rule":"field-moved","risk":"loss","origin":"customer","reported":false,"base":"F_SUM","original":"F_SUM","client":"F_SHA","data":{"problem":"no column F_SHA in T_PART"},"since":"new"},
    {"id":"0c35d5ff0b330cde","path":"class/Own","change":"inserted","rule":"class-inserted","risk":"safe","origin":"customer","reported":true,"display_name":"","accepted":{"reason":"ours","by":"jo","until":"2027-06-30"},"since":"known"},
    {"id":"c54eaf5ea02f2a02","path":"link/Uses","change":"deleted","rule":"link-identity-taken","risk":"block","origin":"vendor","reported":true,"taken":{"by":"class/Own","class_id":1001,"table_name":"T_USES"},"since":"new"}
  ],
  "outdated": [
    {"path":"class/Part/property/Code/length","change":"changed","accepted_original":32,"accepted_client":40,"original":32,"client":48,"reason":"longest has 31"}
  ],
  "expired": [
    {"path":"class/Part/property/Code/length","change":"changed","original":32,"client":40,"reason":"until later","by":"jo","until":"2026-10-31"}
  ],
  "stale": [
    {"path":"class/*/behavior/Gone","change":"inserted","reason":"add-on"}
  ],
  "gone": [
    {"id":"6cecdcdccd7c7a40","path":"behavior/Rated","change":"deleted"}
  ]
}
)");
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
