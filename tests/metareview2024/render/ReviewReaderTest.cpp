#include "metareview2024/render/ReviewReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "metareview2024/MadeReview.h"
#include "metareview2024/render/RenderedReview.h"

namespace metareview {
namespace {

using testing::HasSubstr;

/// What is wrong with a text that is called r.json.
std::string FaultOf(const std::string& text) {
  try {
    ReadReview(text, "r.json");
  } catch (const CKVXException& error) {
    EXPECT_EQ(error.GetCode(), kvx::kMalformedDocument);
    return error.what();
  }
  return "no fault";
}

class ReviewReaderTest : public testing::Test {
 protected:
  /// The saved review with the first occurrence of a text replaced.
  std::string With(const std::string& from, const std::string& to) const {
    std::string text = saved_;
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
  }

  /// Replaces a text and expects the fault where `place` occurs first.
  void ExpectFault(const std::string& from, const std::string& to, const std::string& place,
                   const std::string& fault) const {
    const std::string text = With(from, to);
    const std::string before = text.substr(0, text.find(place));
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t column = before.size() - (before.rfind('\n') + 1) + 1;
    EXPECT_EQ(FaultOf(text), "r.json:" + std::to_string(line) + ":" + std::to_string(column) + ": " + fault);
  }

  const std::string saved_ = test::Rendered("json", test::FullReview());
};

TEST_F(ReviewReaderTest, WhatIsReadIsWrittenAgainByteForByte) {
  EXPECT_EQ(test::Rendered("json", ReadReview(saved_, "r.json")), saved_);
}

TEST_F(ReviewReaderTest, EveryOutputOfWhatIsReadIsTheSame) {
  const SReview read = ReadReview(saved_, "r.json");
  for (const SFormat& format : Formats()) {
    const std::string name(format.name);
    EXPECT_EQ(test::Rendered(name, read), test::Rendered(name, test::FullReview())) << name;
  }
}

TEST_F(ReviewReaderTest, ReadsASmallReviewOfAnyKind) {
  for (const EKind kind : kKinds) {
    SReview review = test::MadeReview({});
    review.base.reset();
    review.elements = {kind};
    const std::string text = test::Rendered("json", review);
    EXPECT_EQ(test::Rendered("json", ReadReview(text, "r.json")), text);
  }
}

TEST_F(ReviewReaderTest, ReadsFindingsOfAnyRisk) {
  const std::string text =
      test::Rendered("json", test::MadeReview({test::Made("class/A", EChange::kInserted, "class-withdrawn"),
                                               test::Made("class/B", EChange::kDeleted, "class-identity-taken"),
                                               test::Made("class/C", EChange::kDeleted, "class-deleted"),
                                               test::Made("class/D", EChange::kInserted, "class-inserted")}));
  EXPECT_THAT(text, HasSubstr(R"("class":{"loss":1,"block":1,"attention":1,"safe":1,"accepted":0})"));
  EXPECT_EQ(test::Rendered("json", ReadReview(text, "r.json")), text);
}

TEST_F(ReviewReaderTest, ReadsWhoDecidedWhatIsOutdated) {
  SReview review = test::FullReview();
  review.outdated.front().decision.acceptance = {"longest has 31", "jo", "2027-06-30"};
  const SReview read = ReadReview(test::Rendered("json", review), "r.json");
  ASSERT_EQ(read.outdated.size(), 1U);
  EXPECT_EQ(read.outdated.front().decision.acceptance, review.outdated.front().decision.acceptance);
}

TEST_F(ReviewReaderTest, ReadsTextsOfAnyContent) {
  const SFinding finding =
      test::MadeChange("class/a~1~0~2\x1B/display_name", "display-name", std::string("\0\n\"\\图", 7), std::string());
  const std::string text = test::Rendered("json", test::MadeReview({finding}));
  EXPECT_EQ(test::Rendered("json", ReadReview(text, "r.json")), text);
}

TEST_F(ReviewReaderTest, TakesAnotherLayoutAndOrder) {
  EXPECT_EQ(test::Rendered("json", ReadReview(With("  \"version\": 1,\n  \"complete\": true,\n",
                                                   "\t\"complete\" :true,\"version\"\n: 1 ,"),
                                              "r.json")),
            saved_);
}

TEST_F(ReviewReaderTest, RefusesWhatIsNotJson) {
  EXPECT_EQ(FaultOf(""), "r.json:1:1: The document is empty.");
  EXPECT_THAT(FaultOf("hello"), HasSubstr("r.json:1:1: "));
}

TEST_F(ReviewReaderTest, RefusesWhatIsNotAReview) {
  const std::string fault = "r.json:1:1: /: this is not a review that was saved as JSON";
  EXPECT_EQ(FaultOf("{}"), fault);
  EXPECT_EQ(FaultOf("[]"), fault);
  EXPECT_EQ(FaultOf("1"), fault);
  EXPECT_EQ(FaultOf(R"({"format": "other"})"), fault);
  EXPECT_EQ(FaultOf(R"({"format": 1})"), fault);
}

TEST_F(ReviewReaderTest, RefusesAnotherVersion) {
  ExpectFault("\"version\": 1", "\"version\": 2", "2,\n", "/version: only reviews of version 1 can be read");
  ExpectFault("\"version\": 1", "\"version\": \"1\"", "\"1\"", "/version: only reviews of version 1 can be read");
  EXPECT_EQ(FaultOf(R"({"format": "upgradesrv-review"})"),
            "r.json:1:1: /version: only reviews of version 1 can be read");
}

TEST_F(ReviewReaderTest, ALaterVersionMayHaveMembersThatAreNotKnown) {
  ExpectFault("\"version\": 1", "\"new\": 1, \"version\": 2", "2,\n",
              "/version: only reviews of version 1 can be read");
}

TEST_F(ReviewReaderTest, RefusesAReviewThatFailed) {
  SReview failed;
  failed.complete = false;
  failed.problem = "base.json is not there";
  EXPECT_EQ(FaultOf(test::Rendered("json", failed)),
            "r.json:4:15: /complete: the review failed: base.json is not there");
  ExpectFault("\"complete\": true", "\"complete\": false", "false", "/complete: the review failed");
  ExpectFault("\"complete\": true", "\"complete\": 1", "1,\n  \"client",
              "/complete: it is not known whether the review is complete");
}

TEST_F(ReviewReaderTest, RefusesEveryReviewThatWasCutOff) {
  for (std::size_t size = 0; size + 2 < saved_.size(); ++size) {
    EXPECT_THAT(FaultOf(saved_.substr(0, size)), testing::MatchesRegex("r\\.json:[0-9]+:[0-9]+: .*")) << size;
  }
}

TEST_F(ReviewReaderTest, RefusesWhatFollowsTheDocument) {
  EXPECT_THAT(FaultOf(saved_ + "x"), HasSubstr("r.json:33:1: "));
}

TEST_F(ReviewReaderTest, RefusesWhatIsMissing) {
  ExpectFault("  \"directory\": \"upgrade\",\n", "", "{", "/: the member \"directory\" is missing");
  ExpectFault("\"risk\":\"loss\",", "", "{\"id\"", "/findings/0: the member \"risk\" is missing");
  ExpectFault("\"block\":0,", "", "{\"loss\"", "/totals/class: the member \"block\" is missing");
  ExpectFault("\"reason\":\"ours\",", "", "{\"by\":\"jo\"", "/findings/3/accepted: the member \"reason\" is missing");
}

TEST_F(ReviewReaderTest, EveryReviewHasTheSameMembersButForThoseThatDoNotApply) {
  const std::vector<std::string> members = {"client", "original", "base",   "directory", "against",
                                            "data",   "elements", "totals", "findings",  "outdated"};
  for (std::size_t i = 0; i + 1 < members.size(); ++i) {
    const std::size_t begin = saved_.find("  \"" + members[i] + "\": ");
    const std::size_t end = saved_.find("  \"" + members[i + 1] + "\": ");
    const bool isOptional = members[i] == "against" || members[i] == "data";
    EXPECT_EQ(FaultOf(saved_.substr(0, begin) + saved_.substr(end)),
              isOptional ? "no fault" : "r.json:1:1: /: the member \"" + members[i] + "\" is missing");
  }
}

TEST_F(ReviewReaderTest, TotalsHaveEveryRisk) {
  const std::string totals = R"("loss":2,"block":0,"attention":0,"safe":1,"accepted":1})";
  const std::vector<std::pair<const char*, const char*>> rows = {
      {"loss", R"("block":0,"attention":0,"safe":1,"accepted":1})"},
      {"block", R"("loss":2,"attention":0,"safe":1,"accepted":1})"},
      {"attention", R"("loss":2,"block":0,"safe":1,"accepted":1})"},
      {"safe", R"("loss":2,"block":0,"attention":0,"accepted":1})"},
      {"accepted", R"("loss":2,"block":0,"attention":0,"safe":1})"}};
  for (const auto& [name, rest] : rows) {
    ExpectFault(totals, rest, std::string("{") + rest,
                "/totals/class: the member \"" + std::string(name) + "\" is missing");
  }
}

TEST_F(ReviewReaderTest, RefusesTotalsOfWhatIsUnknown) {
  ExpectFault("\"totals\": {", "\"totals\": {\"\":1,", "1,\"class\"",
              "/totals/: unknown member; known here: class, link, behavior");
  ExpectFault("{\"loss\"", "{\"\":1,\"loss\"", "1,\"loss\"",
              "/totals/class/: unknown member; known here: loss, block, attention, safe, accepted");
}

TEST_F(ReviewReaderTest, RefusesAReviewOfNothing) {
  ExpectFault("[\"class\",\"link\",\"behavior\"]", "[]", "[]", "/elements: no kind was compared");
}

TEST_F(ReviewReaderTest, RefusesWhatIsUnknown) {
  ExpectFault(
      "\"directory\"", "\"dir\": 1, \"directory\"", "1, \"directory",
      "/dir: unknown member; known here: format, version, complete, client, original, base, directory, against, "
      "data, elements, totals, findings, outdated, expired, stale, gone");
  ExpectFault("\"risk\":\"loss\"", "\"risk\":\"loss\",\"a/b\":1", "1,\"origin",
              "/findings/0/a~1b: unknown member; known here: id, path, change, rule, risk, origin, reported, "
              "display_name, type, taken, base, original, client, data, risk_without_data, accepted, since");
  ExpectFault("\"length-shrinks\"", "\"length\"", "\"length\"", "/findings/0/rule: \"length\" is not a rule");
  ExpectFault("\"origin\":\"customer\"", "\"origin\":\"me\"", "\"me\"", "/findings/0/origin: \"me\" is not known here");
  ExpectFault("[\"class\",", "[\"klass\",", "\"klass\"", "/elements/0: \"klass\" is not known here");
}

TEST_F(ReviewReaderTest, RefusesWhatIsThereTwice) {
  ExpectFault("\"client\"", "\"client\": \"a\", \"client\"", "\"client.json\"", "/client: duplicate member");
}

TEST_F(ReviewReaderTest, RefusesWrongTypes) {
  ExpectFault("\"client.json\"", "7", "7,\n", "/client: expected a string");
  ExpectFault("\"base.json\"", "[]", "[],\n", "/base: expected a string");
  ExpectFault("[\"class\",\"link\",\"behavior\"]", "{}", "{},\n", "/elements: expected an array");
  ExpectFault("\"reported\":true", "\"reported\":1", "1,\"display_name",
              "/findings/0/reported: expected true or false");
  ExpectFault("\"rows\":137", "\"rows\":-1", "-1,",
              "/findings/0/data/rows: expected a whole number from 0 to 18446744073709551615");
  ExpectFault("\"class_id\":1001", "\"class_id\":4294967296", "4294967296",
              "/findings/4/taken/class_id: expected a whole number from 0 to 4294967295");
  ExpectFault("{\"id\":\"6cecdcdccd7c7a40\",\"path\":\"behavior/Rated\",\"change\":\"deleted\"}", "null", "null\n",
              "/gone/0: expected an object");
}

TEST_F(ReviewReaderTest, RefusesKindsInAnotherOrder) {
  ExpectFault("[\"class\",\"link\",", "[\"link\",\"class\",", "\"class\",\"behavior\"]",
              "/elements/1: the kinds are class, link, behavior, in this order");
  ExpectFault("[\"class\",\"link\",", "[\"class\",\"class\",", "\"class\",\"behavior\"]",
              "/elements/1: the kinds are class, link, behavior, in this order");
}

TEST_F(ReviewReaderTest, RefusesPathsThatAreNone) {
  ExpectFault("\"class/Part/property/Code/length\"", "\"class\"", "\"class\",\"change\"",
              "/findings/0/path: this is not a path of a difference");
  ExpectFault("\"by\":\"class/Own\"", "\"by\":\"own\"", "\"own\"", "/findings/4/taken/by: this is not a path");
}

TEST_F(ReviewReaderTest, RefusesAChangeThatDoesNotFitThePath) {
  ExpectFault("\"change\":\"changed\"", "\"change\":\"deleted\"", "\"deleted\"",
              "/findings/0/change: an attribute is changed, anything else inserted or deleted");
}

TEST_F(ReviewReaderTest, RefusesAnIdentifierOfAnotherFinding) {
  ExpectFault("e4f333239954eb46", "e4f333239954eb47", "\"e4f333239954eb47",
              "/findings/0/id: it does not belong to this path and change");
  ExpectFault("e4f333239954eb46", "E4F333239954EB46", "\"E4F3", "/findings/0/id: expected 16 hexadecimal digits");
  ExpectFault("6cecdcdccd7c7a40", "6cecdcdccd7c7a4", "\"6cecdcdccd7c7a4\"",
              "/gone/0/id: expected 16 hexadecimal digits");
}

TEST_F(ReviewReaderTest, RefusesValuesThatDoNotFitTheAttribute) {
  ExpectFault("\"client\":48", "\"client\":\"48\"", "\"48\"", "/findings/0/client: expected a number");
  ExpectFault("\"client\":48", "\"client\":4.8", "4.8",
              "/findings/0/client: expected a whole number from 0 to 4294967295");
  ExpectFault("\"client\":\"F_SHA\"", "\"client\":1", "1,\"data\"", "/findings/2/client: expected a string");
  ExpectFault("\"original\":32,\"client\":48", "\"client\":48", "{\"id\"",
              "/findings/0: the member \"original\" is missing");
  ExpectFault("\"display_name\":\"\"", "\"client\":\"a\"", "\"a\",\"accepted\"",
              "/findings/3/client: only an attribute that differs has values");
}

TEST_F(ReviewReaderTest, RefusesDaysThatAreNone) {
  const std::string fault = "expected a day, written YYYY-MM-DD";
  ExpectFault("2027-06-30", "2027-06-31", "\"2027-06-31\"", "/findings/3/accepted/until: " + fault);
  ExpectFault("2026-10-31", "later", "\"later\"", "/expired/0/until: " + fault);
  ExpectFault("\"longest has 31\"", "\"longest has 31\",\"until\":\"\"", "\"\"}\n", "/outdated/0/until: " + fault);
}

TEST_F(ReviewReaderTest, RefusesDataThatIsNotWhole) {
  const std::string fault = ": expected \"rows\", \"of\" and \"tables\", or \"problem\", or all four";
  ExpectFault("\"rows\":137,", "", "{\"of\"", "/findings/0/data" + fault);
  ExpectFault("{\"problem\":", "{\"rows\":0,\"problem\":", "{\"rows\":0,\"problem\"", "/findings/2/data" + fault);
  ExpectFault("{\"problem\":\"no column F_SHA in T_PART\"}", "{}", "{}", "/findings/2/data" + fault);
  ExpectFault("{\"problem\":\"no column F_SHA in T_PART\"}", "{\"problem\":\"\"}", "{\"problem\":\"\"}",
              "/findings/2/data" + fault);
}

TEST_F(ReviewReaderTest, RefusesCountsThatCannotBe) {
  ExpectFault("\"rows\":137,", "\"rows\":20342,", "20342", "/findings/0/data/rows: they are more than were looked at");
  ExpectFault("{\"problem\":", "{\"rows\":0,\"of\":0,\"tables\":[],\"problem\":", "[],\"problem\"",
              "/findings/2/data/tables: there is no table, but something was counted");
}

TEST_F(ReviewReaderTest, ReadsACountThatMayBeTooLow) {
  const SFinding moved = test::MadeChange("class/Part/property/Sum/field", "field-moved", "F_SHA", "F_SUM");
  const std::string text = test::Rendered("json", test::MadeReview({test::CountedInPart(moved, 0, 0, "hidden")}));
  EXPECT_THAT(text, HasSubstr(R"("data":{"rows":0,"of":0,"tables":["T"],"problem":"hidden"})"));
  EXPECT_EQ(test::Rendered("json", ReadReview(text, "r.json")), text);
}

TEST_F(ReviewReaderTest, RefusesTotalsThatAreNotThoseOfTheFindings) {
  ExpectFault("{\"class\":{\"loss\":2", "{\"class\":{\"loss\":3", "{\"loss\":3",
              "/totals/class: the findings are not as many; the document was changed or cut");
  ExpectFault("\"elements\": [\"class\",\"link\",\"behavior\"]", "\"elements\": [\"class\",\"link\"]", "{\"class\":{",
              "/totals: the kinds are not those in \"elements\"");
}

TEST_F(ReviewReaderTest, RefusesFindingsOfAKindThatWasNotCompared) {
  ExpectFault("[\"class\",\"link\",\"behavior\"]", "[\"class\",\"behavior\"]", "{\"id\":\"c54eaf5ea02f2a02\"",
              "/findings/4: its kind is not in \"elements\"");
}

TEST_F(ReviewReaderTest, RefusesAFindingThatIsThereTwice) {
  const SFinding finding = test::Made("class/Own", EChange::kInserted, "class-inserted");
  EXPECT_EQ(FaultOf(test::Rendered("json", test::MadeReview({finding, finding}))),
            "r.json:13:5: /findings/1: the finding is there twice");
}

TEST_F(ReviewReaderTest, MakesControlsInMessagesVisible) {
  ExpectFault("\"origin\":\"customer\"", "\"origin\":\"\\u001b[2J\"", "\"\\u001b[2J",
              "/findings/0/origin: \"\\x1B[2J\" is not known here");
}

}  // namespace
}  // namespace metareview
