#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "kvxsptfile/ReadFile.h"
#include "metareview2024/MadeReview.h"
#include "metareview2024/ReviewSteps.h"
#include "metareview2024/Rule.h"
#include "metareview2024/render/ComparedReview.h"
#include "metareview2024/render/RenderedReview.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace metareview {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSchema = UPGRADESRV_SOURCE_DIR "/docs/review.schema.json";
constexpr const char* kManual = UPGRADESRV_SOURCE_DIR "/docs/review-format.md";
constexpr const char* kRules = UPGRADESRV_SOURCE_DIR "/tests/metareview2024/rules";

/// Prints what a part of the schema has against each line of a file, each a document; "" is the schema itself.
constexpr const char* kValidator = R"(
import json, sys
import jsonschema
schema = json.load(open(sys.argv[1]))
jsonschema.Draft202012Validator.check_schema(schema)
if sys.argv[2]:
    schema = {"$schema": schema["$schema"], "$defs": schema["$defs"], "$ref": "#/$defs/" + sys.argv[2]}
validator = jsonschema.Draft202012Validator(schema)
for line in open(sys.argv[3], encoding="utf-8"):
    for error in validator.iter_errors(json.loads(line)):
        print("/".join(map(str, error.absolute_path)), error.message)
)";

class ReviewSchemaTest : public testing::Test {
 protected:
  /// What the schema has against the lines, empty for nothing.
  std::string FaultsOf(const std::string& part, const std::string& lines) const {
    const test::SProcessResult result =
        test::Run({PYTHON3, "-c", kValidator, kSchema, part, directory_.Write("lines", lines)});
    EXPECT_EQ(result.status, 0) << result.errors;
    return result.output;
  }

  /// A document on one line; its strings hold no line ends.
  static std::string OneLine(std::string json) {
    std::replace(json.begin(), json.end(), '\n', ' ');
    return json + "\n";
  }

  static std::vector<SReview> Reviews() {
    SReview small = test::MadeReview({});
    small.base.reset();
    small.elements = {EKind::kLink};
    SReview failed;
    failed.complete = false;
    failed.problem = "base.json is not there";
    const SFinding moved = test::MadeChange("class/Part/property/P/field", "field-moved", "F_1", "F_2");
    return {test::FullReview(), small, failed, test::MadeReview({test::CountedInPart(moved, 2, 9, "hidden")})};
  }

  test::CTemporaryDirectory directory_;
};

TEST_F(ReviewSchemaTest, EveryDocumentIsValid) {
  std::string documents;
  for (const SReview& review : Reviews()) {
    documents += OneLine(test::Rendered("json", review));
  }
  EXPECT_EQ(FaultsOf("", documents), "");
}

TEST_F(ReviewSchemaTest, EveryDocumentOfARulesFolderIsValid) {
  std::string documents;
  for (const fs::directory_entry& entry : fs::directory_iterator(kRules)) {
    if (const fs::path& folder = entry.path(); entry.is_directory()) {
      documents += OneLine(test::Rendered(
          "json", test::Compared(folder / "client.json", folder / "original.json", folder / "base.json")));
    }
  }
  EXPECT_EQ(FaultsOf("", documents), "");
}

TEST_F(ReviewSchemaTest, TheExamplesDocumentIsValidWithDecisionsAndAnEarlierReview) {
  SReview review = test::ExampleReview();
  SReview earlier = review;
  earlier.findings.erase(earlier.findings.begin());
  review.findings.pop_back();
  CompareWithEarlier(earlier, review);
  const std::string document = test::Rendered("json", review);
  for (const char* member : {"accepted", "outdated", "expired", "stale", "gone", "since"}) {
    EXPECT_THAT(document, testing::HasSubstr("\"" + std::string(member) + "\":"));
  }
  EXPECT_EQ(FaultsOf("", OneLine(document)), "");
}

TEST_F(ReviewSchemaTest, AFindingOfEveryRuleIsValid) {
  std::string findings;
  for (const SRule* rule : Rules()) {
    const std::string ndjson = test::Rendered(
        "ndjson", test::MadeReview({test::Made("class/A", EChange::kInserted, std::string(rule->name))}));
    findings += ndjson.substr(ndjson.find('\n') + 1);
  }
  EXPECT_EQ(FaultsOf("finding", findings), "");
}

TEST_F(ReviewSchemaTest, EveryLineIsValid) {
  for (const SReview& review : Reviews()) {
    const std::string lines = test::Rendered("ndjson", review);
    const std::size_t end = lines.find('\n') + 1;
    EXPECT_EQ(FaultsOf(review.complete ? "firstLine" : "failedReview", lines.substr(0, end)), "");
    EXPECT_EQ(FaultsOf("finding", lines.substr(end)), "");
  }
}

TEST_F(ReviewSchemaTest, RefusesOtherDocuments) {
  const std::string saved = OneLine(test::Rendered("json", test::FullReview()));
  const auto with = [&](const std::string& from, const std::string& to) {
    std::string text = saved;
    return text.replace(text.find(from), from.size(), to);
  };
  EXPECT_NE(FaultsOf("", "{}\n"), "");
  EXPECT_NE(FaultsOf("", with("\"version\": 1", "\"version\": 2")), "");
  EXPECT_NE(FaultsOf("", with("\"complete\": true", "\"complete\": false")), "");
  EXPECT_NE(FaultsOf("", with("\"directory\"", "\"new\": 1, \"directory\"")), "");
  EXPECT_NE(FaultsOf("", with("length-shrinks", "length")), "");
  EXPECT_NE(FaultsOf("", with("\"original\":32,", "")), "");
  EXPECT_NE(FaultsOf("", with("\"rows\":137,", "")), "");
  EXPECT_NE(FaultsOf("", with("{\"problem\":", "{\"rows\":1,\"problem\":")), "");
  EXPECT_NE(FaultsOf("", with("{\"problem\":", "{\"rows\":0,\"of\":0,\"tables\":[],\"problem\":")), "");
  EXPECT_NE(FaultsOf("", with("\"reported\":true,", "\"reported\":true,\"new\":1,")), "");
  EXPECT_NE(FaultsOf("", with("e4f333239954eb46", "e4f333239954eb4")), "");
}

TEST_F(ReviewSchemaTest, TheManualHasEveryMemberAndColumn) {
  const std::string manual = kvx::ReadFile(kManual);
  std::string columns = test::Rendered("csv", test::MadeReview({}));
  columns.resize(columns.find("\r\n"));
  const std::string document = test::Rendered("json", test::FullReview());
  std::vector<std::string> names;
  for (std::size_t end = document.find("\":"); end != std::string::npos; end = document.find("\":", end + 1)) {
    const std::size_t begin = document.rfind('"', end - 1) + 1;
    names.push_back(document.substr(begin, end - begin));
  }
  for (std::size_t begin = 0; begin < columns.size();) {
    const std::size_t end = std::min(columns.find(',', begin), columns.size());
    names.push_back(columns.substr(begin, end - begin));
    begin = end + 1;
  }
  EXPECT_THAT(names, testing::IsSupersetOf({"version", "findings", "stale", "taken_by", "meaning"}));
  for (const std::string& name : names) {
    EXPECT_THAT(manual, testing::HasSubstr("`" + name + "`"));
  }
}

TEST_F(ReviewSchemaTest, ListsTheRulesInTheirOrderAndNoOthers) {
  const std::string schema = kvx::ReadFile(kSchema);
  std::size_t last = 0;
  for (const SRule* rule : Rules()) {
    const std::size_t place = schema.find("\"" + std::string(rule->name) + "\"");
    ASSERT_NE(place, std::string::npos) << rule->name;
    EXPECT_GT(place, last) << rule->name << " is listed in another order";
    last = place;
  }
  const std::size_t begin = schema.find("\"rule\": {\n");
  const std::string list = schema.substr(begin, schema.find('}', begin) - begin);
  // The names of the member and of "enum", and the rules.
  EXPECT_EQ(static_cast<std::size_t>(std::count(list.begin(), list.end(), '"')), 2 * (Rules().size() + 2));
}

}  // namespace
}  // namespace metareview
