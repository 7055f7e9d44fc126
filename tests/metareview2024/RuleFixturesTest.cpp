#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "metareview2024/FindingText.h"
#include "metareview2024/ReviewSteps.h"
#include "metareview2024/Rule.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

// rules/README.md says what the folders hold.
namespace {

namespace fs = std::filesystem;

const fs::path kRules = fs::path(UPGRADESRV_SOURCE_DIR) / "tests/metareview2024/rules";

std::shared_ptr<const CMetaDictionary2024> Load(const fs::path& path) {
  return OpenMetaStorage(path.string())->Load();
}

std::vector<std::string> FindingsOf(const fs::path& folder) {
  metareview::SMetamodels metamodels;
  metamodels.client = Load(folder / "client.json");
  metamodels.original = Load(folder / "original.json");
  if (fs::exists(folder / "base.json")) {
    metamodels.base = Load(folder / "base.json");
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

std::string TestName(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

class RuleFixturesTest : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Rules, RuleFixturesTest, testing::ValuesIn(RuleNames()), TestName);

TEST_P(RuleFixturesTest, GivesTheFindingsOfItsFolderAndIsAmongThem) {
  const fs::path folder = kRules / GetParam();
  ASSERT_TRUE(fs::is_directory(folder)) << "the rule has no folder " << folder;
  const std::vector<std::string> expected = test::ItemsOf((folder / "expected.json").string());
  EXPECT_THAT(expected, testing::Contains(testing::HasSubstr("\"rule\":\"" + GetParam() + "\"")));
  EXPECT_EQ(FindingsOf(folder), expected);
}

TEST(RuleFixturesTest, EachFolderIsARule) {
  std::vector<std::string> folders;
  for (const fs::directory_entry& entry : fs::directory_iterator(kRules)) {
    if (entry.is_directory()) {
      folders.push_back(entry.path().filename().string());
    }
  }
  EXPECT_THAT(folders, testing::UnorderedElementsAreArray(RuleNames()));
}

}  // namespace
