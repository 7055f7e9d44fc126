#include <gtest/gtest.h>

#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/RenderedReview.h"

namespace metareview {
namespace {

TEST(NdjsonReviewTest, HasTheDocumentOnTheFirstLineAndThenAFindingALine) {
  SFinding own = test::Made("class/Own", EChange::kInserted, "class-inserted");
  SReview review = test::MadeReview({own, test::Made("link/Uses", EChange::kInserted, "link-inserted")});
  review.gone.push_back({FindingId("behavior/Rated", EChange::kDeleted), "behavior/Rated", EChange::kDeleted});
  SDecision decision;
  decision.path = "class/A";
  decision.change = EChange::kDeleted;
  decision.acceptance.reason = "a";
  review.stale = {decision, decision};
  EXPECT_EQ(
      test::Rendered("ndjson", review),
      R"({"format":"upgradesrv-review","version":1,"complete":true,"client":"client.json","original":"original.json","base":"base.json","directory":"upgrade","elements":["class","link","behavior"],"totals":{"class":{"loss":0,"block":0,"attention":0,"safe":1,"accepted":0},"link":{"loss":0,"block":0,"attention":0,"safe":1,"accepted":0},"behavior":{"loss":0,"block":0,"attention":0,"safe":0,"accepted":0}},"stale":[{"path":"class/A","change":"deleted","reason":"a"},{"path":"class/A","change":"deleted","reason":"a"}],"gone":[{"id":"6cecdcdccd7c7a40","path":"behavior/Rated","change":"deleted"}]}
{"id":"0c35d5ff0b330cde","path":"class/Own","change":"inserted","rule":"class-inserted","risk":"safe","origin":"customer","reported":true}
{"id":")" +
          IdText(FindingId("link/Uses", EChange::kInserted)) +
          R"(","path":"link/Uses","change":"inserted","rule":"link-inserted","risk":"safe","origin":"customer","reported":true}
)");
}

TEST(NdjsonReviewTest, HasTheFindingsOfTheJsonDocument) {
  const std::string json = test::Rendered("json", test::FullReview());
  const std::string ndjson = test::Rendered("ndjson", test::FullReview());
  std::size_t findings = 0;
  std::size_t begin = ndjson.find('\n') + 1;
  for (std::size_t end = ndjson.find('\n', begin); end != std::string::npos; end = ndjson.find('\n', begin)) {
    EXPECT_NE(json.find("    " + ndjson.substr(begin, end - begin)), std::string::npos);
    begin = end + 1;
    ++findings;
  }
  EXPECT_EQ(findings, 5U);
}

TEST(NdjsonReviewTest, OfAFailedReviewIsOneLine) {
  SReview review = test::FullReview();
  review.complete = false;
  review.problem = "why";
  EXPECT_EQ(test::Rendered("ndjson", review),
            "{\"format\":\"upgradesrv-review\",\"version\":1,\"complete\":false,\"problem\":\"why\",\"directory\":"
            "\"upgrade\"}\n");
}

}  // namespace
}  // namespace metareview
