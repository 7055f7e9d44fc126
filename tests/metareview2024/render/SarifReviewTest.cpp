#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "kvxsptjson/JsonObject.h"
#include "metareview2024/MadeReview.h"
#include "metareview2024/render/GeneratedReview.h"
#include "metareview2024/render/RenderedReview.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace metareview {
namespace {

using testing::ElementsAre;

/// As published by the format's committee, without its descriptions.
constexpr const char* kSchema = UPGRADESRV_SOURCE_DIR "/tests/metareview2024/render/sarif-2.1.0.schema.json";

constexpr const char* kValidator = R"(
import json, sys
import jsonschema
for error in jsonschema.Draft4Validator(json.load(open(sys.argv[1]))).iter_errors(json.load(open(sys.argv[2], encoding="utf-8"))):
    print("/".join(map(str, error.absolute_path)), error.message)
)";

std::string FaultsOf(const std::string& sarif) {
  const test::CTemporaryDirectory directory;
  const test::SProcessResult result =
      test::Run({PYTHON3, "-c", kValidator, kSchema, directory.Write("review.sarif", sarif)});
  EXPECT_EQ(result.status, 0) << result.errors;
  return result.output;
}

using Object = std::shared_ptr<CJsonObject>;

std::vector<Object> Objects(const CJsonObject& object, const std::string& key) {
  const auto list = object.GetPropertyObjectArrayValue(key).second;
  return {list.begin(), list.end()};
}

Object SarifRun(const SReview& review, const SRenderOptions& options = {}) {
  CJsonObject document;
  document.CreateFromText(test::Rendered("sarif", review, options), "review.sarif");
  return Objects(document, "runs").at(0);
}

std::vector<Object> Results(const SReview& review) {
  return Objects(*SarifRun(review), "results");
}

Object Result(const SFinding& finding) {
  return Results(test::MadeReview({finding})).at(0);
}

SFinding Own() {
  return test::Made("class/Own", EChange::kInserted, "class-inserted");
}

TEST(SarifReviewTest, IsValidAgainstThePublishedSchema) {
  EXPECT_EQ(FaultsOf(test::Rendered("sarif", test::FullReview())), "");
  EXPECT_EQ(FaultsOf(test::Rendered("sarif", test::MadeReview({}))), "");
  EXPECT_EQ(FaultsOf(test::Rendered("sarif", test::HostileReview())), "");
  SReview failed;
  failed.complete = false;
  failed.problem = "base.json is not there";
  EXPECT_EQ(FaultsOf(test::Rendered("sarif", failed)), "");
  EXPECT_NE(FaultsOf("{\"version\": \"2.1.0\", \"runs\": [{}]}"), "");
}

TEST(SarifReviewTest, SaysEverythingWithALineForEachRuleAndResult) {
  SFinding own = test::Accepted(Own(), {"ours", "jo", "2027-06-30"});
  own.since = ESince::kKnown;
  SFinding shorter = test::MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U, EOrigin::kVendor);
  shorter.since = ESince::kChanged;
  SReview review = test::MadeReview({shorter, own});
  review.gone.push_back({FindingId("behavior/Rated", EChange::kDeleted), "behavior/Rated", EChange::kDeleted});
  EXPECT_EQ(
      test::Rendered("sarif", review),
      R"({"$schema":"https://json.schemastore.org/sarif-2.1.0.json","version":"2.1.0","runs":[{"tool":{"driver":{"name":"upgradesrv","rules":[
{"id":"class-inserted","shortDescription":{"text":"Class only here"},"fullDescription":{"text":"The upgrade sets what it ships, and it does not ship this class."},"help":{"text":"Nothing. Accept it with a reason if it need not be looked at again."},"defaultConfiguration":{"level":"note"}}
,{"id":"length-shrinks","shortDescription":{"text":"Length shrinks"},"fullDescription":{"text":"A value that is longer than its column is cut off, or the upgrade stops at it."},"help":{"text":"Shorten the longer values, or set your own length again before anybody works with it. Accept it if no value is longer and none will be."},"defaultConfiguration":{"level":"error"}}]}},"invocations":[{"executionSuccessful":true}],"language":"en","results":[
{"ruleId":"length-shrinks","ruleIndex":1,"level":"error","message":{"text":"The upgrade shortens Code from 48 to 32 characters. Stored values were not counted."},"locations":[{"physicalLocation":{"artifactLocation":{"uri":"client.json"}},"logicalLocations":[{"name":"Code","fullyQualifiedName":"class/Part/property/Code/length","kind":"member"}]}],"partialFingerprints":{"findingId/v1":"e4f333239954eb46"},"baselineState":"updated","properties":{"risk":"loss","change":"changed","origin":"vendor"}}
,{"ruleId":"class-inserted","ruleIndex":0,"level":"note","message":{"text":"Only this installation has class Own. The upgrade leaves it alone."},"locations":[{"physicalLocation":{"artifactLocation":{"uri":"client.json"}},"logicalLocations":[{"name":"Own","fullyQualifiedName":"class/Own","kind":"type"}]}],"partialFingerprints":{"findingId/v1":"0c35d5ff0b330cde"},"suppressions":[{"kind":"external","status":"accepted","justification":"ours","properties":{"by":"jo","until":"2027-06-30"}}],"baselineState":"unchanged","properties":{"risk":"safe","change":"inserted","origin":"customer"}}
,{"level":"none","message":{"text":"behavior/Rated: was only in the upgrade."},"locations":[{"physicalLocation":{"artifactLocation":{"uri":"client.json"}},"logicalLocations":[{"name":"Rated","fullyQualifiedName":"behavior/Rated","kind":"type"}]}],"partialFingerprints":{"findingId/v1":"6cecdcdccd7c7a40"},"baselineState":"absent"}]}]}
)");
}

TEST(SarifReviewTest, TheClientsFileIsAUriAndADatabaseHasNone) {
  SReview review = test::MadeReview({Own()});
  review.client = "/in stalled/Ö~1%.json";
  const Object location = Objects(*Results(review).at(0), "locations").at(0);
  EXPECT_EQ(location->GetObjectValue("physicalLocation")->GetObjectValue("artifactLocation")->GetStringValue("uri"),
            "/in%20stalled/%C3%96~1%25.json");
  review.client = "postgresql://host/database";
  EXPECT_FALSE(Objects(*Results(review).at(0), "locations").at(0)->HasMember("physicalLocation"));
}

TEST(SarifReviewTest, RisksAreLevels) {
  const std::pair<const char*, const char*> rules[] = {{"class-withdrawn", "error"},
                                                       {"max-tightens", "error"},
                                                       {"class-deleted", "warning"},
                                                       {"class-inserted", "note"}};
  for (const auto& [rule, level] : rules) {
    EXPECT_EQ(Result(test::Made("class/Own", EChange::kDeleted, rule))->GetStringValue("level"), level) << rule;
  }
}

TEST(SarifReviewTest, ARiskThatADecisionSetsIsTheResultsLevelAndNotTheRules) {
  SFinding own = Own();
  own.risk = ERisk::kAttention;
  const Object run = SarifRun(test::MadeReview({own}));
  const Object rule = Objects(*run->GetObjectValue("tool")->GetObjectValue("driver"), "rules").at(0);
  EXPECT_EQ(rule->GetStringValue("id"), "class-inserted");
  EXPECT_EQ(rule->GetObjectValue("defaultConfiguration")->GetStringValue("level"), "note");
  EXPECT_EQ(Objects(*run, "results").at(0)->GetStringValue("level"), "warning");
}

TEST(SarifReviewTest, AResultPointsAtItsRule) {
  const Object run =
      SarifRun(test::MadeReview({Own(), test::Made("link/L", EChange::kInserted, "link-inserted"), Own()}));
  const std::vector<Object> rules = Objects(*run->GetObjectValue("tool")->GetObjectValue("driver"), "rules");
  ASSERT_EQ(rules.size(), 2U);
  for (const Object& result : Objects(*run, "results")) {
    const std::size_t index = std::stoul(result->GetStringValue("ruleIndex"));
    EXPECT_EQ(rules.at(index)->GetStringValue("id"), result->GetStringValue("ruleId"));
  }
}

TEST(SarifReviewTest, TheFingerprintIsTheFindingsId) {
  EXPECT_EQ(Result(Own())->GetObjectValue("partialFingerprints")->GetStringValue("findingId/v1"), "0c35d5ff0b330cde");
}

TEST(SarifReviewTest, TheLogicalLocationIsThePath) {
  const Object result = Result(test::MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U));
  const Object location = Objects(*Objects(*result, "locations").at(0), "logicalLocations").at(0);
  EXPECT_EQ(location->GetStringValue("fullyQualifiedName"), "class/Part/property/Code/length");
}

TEST(SarifReviewTest, AnAcceptedFindingIsSuppressed) {
  EXPECT_FALSE(Result(Own())->HasMember("suppressions"));
  const Object suppression =
      Objects(*Result(test::Accepted(Own(), {"ours", "jo", "2027-06-30"})), "suppressions").at(0);
  EXPECT_EQ(suppression->GetStringValue("justification"), "ours");
  EXPECT_EQ(suppression->GetStringValue("status"), "accepted");
  EXPECT_EQ(suppression->GetObjectValue("properties")->GetStringValue("by"), "jo");
  EXPECT_EQ(suppression->GetObjectValue("properties")->GetStringValue("until"), "2027-06-30");
}

TEST(SarifReviewTest, ASuppressionSaysWhatIsKnownOfIt) {
  const Object suppression = Objects(*Result(test::Accepted(Own(), {"ours", "jo", {}})), "suppressions").at(0);
  EXPECT_EQ(suppression->GetObjectValue("properties")->GetStringValue("by"), "jo");
  const Object bare = Objects(*Result(test::Accepted(Own(), {"ours", {}, {}})), "suppressions").at(0);
  EXPECT_FALSE(bare->HasMember("properties"));
}

TEST(SarifReviewTest, ARuleHasItsNameInWords) {
  const Object run = SarifRun(test::MadeReview({Own()}));
  const Object rule = Objects(*run->GetObjectValue("tool")->GetObjectValue("driver"), "rules").at(0);
  EXPECT_EQ(rule->GetObjectValue("shortDescription")->GetStringValue("text"), "Class only here");
}

TEST(SarifReviewTest, TheBaselineStateIsSinceTheEarlierReview) {
  EXPECT_FALSE(Result(Own())->HasMember("baselineState"));
  std::vector<SFinding> findings(3, Own());
  findings[0].since = ESince::kNew;
  findings[1].since = ESince::kKnown;
  findings[2].since = ESince::kChanged;
  SReview review = test::MadeReview(findings);
  review.gone.push_back({FindingId("behavior/Rated", EChange::kDeleted), "behavior/Rated", EChange::kDeleted});
  std::vector<std::string> states;
  for (const Object& result : Results(review)) {
    states.push_back(result->GetStringValue("baselineState"));
  }
  EXPECT_THAT(states, ElementsAre("new", "unchanged", "updated", "absent"));
}

TEST(SarifReviewTest, AFailedReviewHasNoResultsButTheProblem) {
  SReview review;
  review.complete = false;
  review.problem = "base.json {0} is not there";
  EXPECT_EQ(
      test::Rendered("sarif", review),
      R"({"$schema":"https://json.schemastore.org/sarif-2.1.0.json","version":"2.1.0","runs":[{"tool":{"driver":{"name":"upgradesrv","rules":[]}},"invocations":[{"executionSuccessful":false,"toolExecutionNotifications":[{"level":"error","message":{"text":"base.json {{0}} is not there"}}]}],"language":"en"}]}
)");
}

TEST(SarifReviewTest, TextsOfNamesAreNoPlaceholdersAndNoLinks) {
  const Object result = Result(test::Made("class/[a](http:b){0}", EChange::kInserted, "class-inserted"));
  EXPECT_EQ(result->GetObjectValue("message")->GetStringValue("text"),
            "Only this installation has class \\[a\\](http:b){{0}}. The upgrade leaves it alone.");
}

}  // namespace
}  // namespace metareview
