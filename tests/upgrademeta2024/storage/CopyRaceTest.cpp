// A copy that may not replace a metamodel meets one that comes while it works.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <future>
#include <string>
#include <vector>

#include "support/MetaText.h"
#include "support/Process.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/storage/LargeMetamodel.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {
namespace {

namespace fs = std::filesystem;

const std::string kUpgradesrv = UPGRADESRV_EXECUTABLE;

class CopyRaceTest : public testing::TestWithParam<EStorage> {
 protected:
  std::string Path(const std::string& name) const { return storage_.Directory().File(name); }
  std::string Pipe(const std::string& name) const {
    EXPECT_EQ(mkfifo(Path(name).c_str(), 0600), 0);
    return Path(name);
  }

  std::string Document(const CMetaDictionary2024& dictionary) const {
    OpenMetaStorage(Path("source.json"))->Save(dictionary);
    const std::string text = ReadFile(Path("source.json"));
    fs::remove(Path("source.json"));
    return text;
  }

  void Save(const CMetaDictionary2024& dictionary) const { OpenMetaStorage(storage_.Location())->Save(dictionary); }
  std::string Loaded() const { return TextOf(*OpenMetaStorage(storage_.Location())->Load()); }

  std::future<SProcessResult> Copy(const std::string& source, const std::string& option = "--quiet") const {
    return std::async(std::launch::async, [this, source, option] {
      return test::Run({kUpgradesrv, "metamodel", "copy", option, source, storage_.Location()});
    });
  }

  /// Copies while another metamodel is stored after the copy has found nothing in its target.
  SProcessResult CopyWhileAnotherComes(const std::string& option) const {
    const std::string text = Document(*LargeMetamodel(1));
    const std::string source = Pipe("pipe.json");
    std::future<SProcessResult> copy = Copy(source, option);
    {
      // Opens once the copy begins to read.
      std::ofstream pipe(source);
      Save(*other_);
      pipe << text;
    }
    fs::remove(source);
    return copy.get();
  }

  void ExpectExists(const SProcessResult& result) const {
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    // After the note on where a location has led.
    EXPECT_THAT(result.errors, testing::EndsWith("upgradesrv: error: " + storage_.Location() +
                                                 ": exists already; give --replace to replace it\n"));
  }

  CTestStorage storage_{GetParam()};
  std::shared_ptr<CMetaDictionary2024> other_ = LargeMetamodel(2);
};

TEST_P(CopyRaceTest, MetamodelThatComesMeanwhileIsKept) {
  ExpectExists(CopyWhileAnotherComes("--quiet"));
  EXPECT_EQ(Loaded(), TextOf(*other_));
  const auto files = std::distance(fs::directory_iterator(storage_.Directory().Path()), {});
  EXPECT_EQ(files, GetParam() == EStorage::kPostgresql ? 0 : 1) << "something was left";
}

TEST_P(CopyRaceTest, MetamodelThatComesMeanwhileIsReplacedOnRequest) {
  EXPECT_EQ(CopyWhileAnotherComes("--replace").status, 0);
  EXPECT_EQ(Loaded(), TextOf(*LargeMetamodel(1)));
}

TEST_P(CopyRaceTest, OfTwoAtOnceOneWinsAndTheOtherIsRefused) {
  const std::string text = Document(*LargeMetamodel(10));
  const std::vector<std::string> sources = {Pipe("first.json"), Pipe("second.json")};
  std::vector<std::future<SProcessResult>> copies;
  for (const std::string& source : sources) {
    copies.push_back(Copy(source));
  }
  {
    std::ofstream first(sources[0]);
    std::ofstream second(sources[1]);
    first << text;
    second << text;
  }
  std::vector<SProcessResult> results = {copies[0].get(), copies[1].get()};
  std::sort(results.begin(), results.end(), [](const auto& a, const auto& b) { return a.status < b.status; });
  EXPECT_EQ(results[0].status, 0) << results[0].errors;
  ExpectExists(results[1]);
  EXPECT_EQ(Loaded(), TextOf(*LargeMetamodel(10)));
}

class DatabaseCopyRaceTest : public CopyRaceTest {};

TEST_P(DatabaseCopyRaceTest, MetamodelThatComesIntoADatabaseOfOthersIsKept) {
  storage_.Execute({"CREATE TABLE parts (number TEXT)"});
  ExpectExists(CopyWhileAnotherComes("--quiet"));
  EXPECT_EQ(Loaded(), TextOf(*other_));
}

INSTANTIATE_TEST_SUITE_P(Document, CopyRaceTest, testing::Values(EStorage::kDocument));
INSTANTIATE_TEST_SUITE_P(Sqlite, CopyRaceTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, CopyRaceTest, testing::Values(EStorage::kPostgresql));
INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseCopyRaceTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, DatabaseCopyRaceTest, testing::Values(EStorage::kPostgresql));

}  // namespace
}  // namespace test
