#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "metareview2024/FindingText.h"
#include "metareview2024/ReviewSteps.h"
#include "metareview2024/Rule.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

// rules/README.md says what the folders hold.
namespace {

namespace fs = std::filesystem;

const fs::path kRules = fs::path(UPGRADESRV_SOURCE_DIR) / "tests/metareview2024/rules";

/// The metamodel of a document, as it comes out of the storage.
std::shared_ptr<const CMetaDictionary2024> Load(const fs::path& path, test::EStorage storage) {
  const std::shared_ptr<const CMetaDictionary2024> metamodel = OpenMetaStorage(path.string())->Load();
  if (storage == test::EStorage::kDocument) {
    return metamodel;
  }
  const test::CTestStorage place(storage);
  OpenMetaStorage(place.Location())->Save(*metamodel);
  return OpenMetaStorage(place.Location())->Load();
}

std::vector<std::string> FindingsOf(const fs::path& folder, test::EStorage storage) {
  metareview::SMetamodels metamodels;
  metamodels.client = Load(folder / "client.json", storage);
  metamodels.original = Load(folder / "original.json", storage);
  if (fs::exists(folder / "base.json")) {
    metamodels.base = Load(folder / "base.json", storage);
  }
  const std::vector<metareview::EKind> kinds(metareview::kKinds.begin(), metareview::kKinds.end());
  return test::TextsOf(CompareMetamodels(metamodels, kinds).findings);
}

std::vector<std::string> RuleNames() {
  std::vector<std::string> names;
  for (const metareview::SRule* rule : metareview::Rules()) {
    names.emplace_back(rule->name);
  }
  return names;
}

using Parameters = std::tuple<test::EStorage, std::string>;

std::string TestName(const testing::TestParamInfo<Parameters>& info) {
  std::string name = std::get<std::string>(info.param);
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

class RuleFixturesTest : public testing::TestWithParam<Parameters> {};

auto AllRulesFrom(test::EStorage storage) {
  return testing::Combine(testing::Values(storage), testing::ValuesIn(RuleNames()));
}

INSTANTIATE_TEST_SUITE_P(Document, RuleFixturesTest, AllRulesFrom(test::EStorage::kDocument), TestName);
INSTANTIATE_TEST_SUITE_P(Sqlite, RuleFixturesTest, AllRulesFrom(test::EStorage::kSqlite), TestName);
INSTANTIATE_TEST_SUITE_P(Postgresql, RuleFixturesTest, AllRulesFrom(test::EStorage::kPostgresql), TestName);

TEST_P(RuleFixturesTest, GivesTheFindingsOfItsFolderAndIsAmongThem) {
  const auto& [storage, rule] = GetParam();
  const fs::path folder = kRules / rule;
  ASSERT_TRUE(fs::is_directory(folder)) << "the rule has no folder " << folder;
  const std::vector<std::string> expected = test::ItemsOf((folder / "expected.json").string());
  EXPECT_THAT(expected, testing::Contains(testing::HasSubstr("\"rule\":\"" + rule + "\"")));
  EXPECT_EQ(FindingsOf(folder, storage), expected);
}

TEST(RuleFoldersTest, EachFolderIsARule) {
  std::vector<std::string> folders;
  for (const fs::directory_entry& entry : fs::directory_iterator(kRules)) {
    if (entry.is_directory()) {
      folders.push_back(entry.path().filename().string());
    }
  }
  EXPECT_THAT(folders, testing::UnorderedElementsAreArray(RuleNames()));
}

}  // namespace
