// "review" of the example: what it shows, and that it is the same when the metamodels are in databases.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/TestStorage.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace {

const std::string kExample = UPGRADESRV_SOURCE_DIR "/examples/upgrade";

/// The review of the example as JSON, from where it no longer says what the metamodels are stored in.
std::string ReviewOfExample(std::vector<std::string> options) {
  options.insert(options.begin(), {"review", "--today", "2026-11-22", "-o", "json"});
  options.push_back(kExample);
  const test::SProcessResult result = test::RunTool(options);
  EXPECT_EQ(result.status, 1) << result.errors;
  const std::size_t directory = result.output.find("\n  \"directory\": ");
  EXPECT_NE(directory, std::string::npos);
  return directory == std::string::npos ? "" : result.output.substr(directory);
}

int CountOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST(ReviewExampleTest, HasEveryOriginAndADecisionInEveryState) {
  const std::string review = ReviewOfExample({});
  for (const char* part : {R"("origin":"customer")", R"("origin":"vendor")", R"("rule":"class-withdrawn")",
                           R"("accepted":{)", R"("outdated": [)", R"("expired": [)", R"("stale": [)"}) {
    EXPECT_THAT(review, testing::HasSubstr(part));
  }
  constexpr int kSeveral = 3;
  EXPECT_GE(CountOf(review, R"("origin":"both")"), kSeveral);
}

class ReviewExampleStorageTest : public testing::TestWithParam<test::EStorage> {};

INSTANTIATE_TEST_SUITE_P(Sqlite, ReviewExampleStorageTest, testing::Values(test::EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, ReviewExampleStorageTest, testing::Values(test::EStorage::kPostgresql));

TEST_P(ReviewExampleStorageTest, DatabasesGiveTheReviewThatDocumentsGive) {
  const std::string ofDocuments = ReviewOfExample({});
  const test::CTestStorage client(GetParam());
  const test::CTestStorage original(GetParam());
  const test::CTestStorage base(GetParam());
  const auto fill = [](const test::CTestStorage& storage, const std::string& document) {
    const test::SProcessResult copy =
        test::RunTool({"metamodel", "copy", kExample + "/" + document, storage.Location()});
    ASSERT_EQ(copy.status, 0) << copy.errors;
  };
  fill(client, "installation.json");
  fill(original, "2024/metamodel.json");
  fill(base, "2022/metamodel.json");
  EXPECT_EQ(ReviewOfExample({"--base", base.Location()}), ofDocuments);
  EXPECT_EQ(
      ReviewOfExample({"--client", client.Location(), "--original", original.Location(), "--base", base.Location()}),
      ofDocuments);
}

}  // namespace
