#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/MetaText.h"
#include "support/Process.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/storage/LargeMetamodel.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgrademeta2024/storage/RunningProcess.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kUpgradesrv = UPGRADESRV_EXECUTABLE;

class SqliteFaultTest : public testing::Test {
 protected:
  std::string Path(const std::string& name = "metamodel.db") const { return storage_.Directory().File(name); }
  SError LoadError(const std::string& name = "metamodel.db") const {
    return ErrorOf([&] { OpenMetaStorage(Path(name))->Load(); });
  }
  void Save(const std::string& name = "metamodel.db") const { OpenMetaStorage(Path(name))->Save(*sample_); }
  std::string Loaded() const { return TextOf(*OpenMetaStorage(Path())->Load()); }

  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(storage_.Directory().Path())) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  /// Runs the tool as a user who has no rights beyond those of everyone.
  SProcessResult RunAsNobody(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), kUpgradesrv);
    if (geteuid() == 0) {
      arguments.insert(arguments.begin(), {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
    }
    return test::Run(arguments);
  }

  static void ShowEverybody(const std::string& path) {
    fs::permissions(path, fs::perms::owner_all | fs::perms::others_exec | fs::perms::others_read);
  }

  /// Copies the database as it is on disk in the midst of a write that has not fit into memory.
  void LeaveInterruptedWrite(const std::string& name) const {
    const std::unique_ptr<soci::session> writer = storage_.OpenSession();
    *writer << "PRAGMA cache_size = 1";
    *writer << "BEGIN";
    *writer << "UPDATE meta_class_properties SET display_name = 'half written'";
    fs::copy_file(Path() + "-journal", Path(name) + "-journal");
    fs::copy_file(Path(), Path(name));
    *writer << "ROLLBACK";
  }

  /// Waits for `condition`; false when it has not come true in a long time.
  template <typename Condition>
  static bool WaitFor(const Condition& condition) {
    for (int i = 0; i < 20000; ++i) {
      if (condition()) {
        return true;
      }
      std::this_thread::sleep_for(1ms);
    }
    return false;
  }

  CTestStorage storage_{EStorage::kSqlite};
  std::shared_ptr<CMetaDictionary2024> sample_ = LargeMetamodel(3);
};

void ExpectOneLineOfTrouble(const SProcessResult& result, const std::string& message) {
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, StartsWith("upgradesrv: error: "));
  EXPECT_THAT(result.errors, HasSubstr(message));
  EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
}

TEST_F(SqliteFaultTest, LinkThatLeadsNowhereIsCalledOne) {
  std::filesystem::create_symlink("absent.db", Path());
  EXPECT_EQ(LoadError(), (SError{kvx::kFileError,
                                 Path() + ": cannot be opened: is a symbolic link to absent.db, which leads nowhere; "
                                          "give the path of an SQLite database that you may read"}));
}

TEST_F(SqliteFaultTest, MissingFileIsNotCreated) {
  EXPECT_EQ(LoadError(),
            (SError{kvx::kFileError, Path() + ": cannot be opened: No such file or directory; give the path "
                                              "of an SQLite database that you may read"}));
  ExpectOneLineOfTrouble(test::Run({kUpgradesrv, "metamodel", "show", Path()}), "No such file or directory");
  EXPECT_TRUE(Files().empty());
}

TEST_F(SqliteFaultTest, DirectoryIsRefused) {
  fs::create_directory(Path());
  EXPECT_EQ(LoadError().code, kvx::kFileError);
  EXPECT_THAT(LoadError().message, HasSubstr("not a regular file"));
}

TEST_F(SqliteFaultTest, WhatIsNotADatabaseIsNeitherReadNorReplaced) {
  const std::string text = "This is a letter, not a database, and nobody wants to lose it.\n";
  storage_.Directory().Write("metamodel.db", text);
  EXPECT_EQ(LoadError().code, kvx::kMalformedDocument);
  EXPECT_THAT(LoadError().message, HasSubstr("cannot be opened: not an SQLite database; give the path"));
  Save("other.db");
  ExpectOneLineOfTrouble(test::Run({kUpgradesrv, "metamodel", "copy", "--replace", Path("other.db"), Path()}),
                         "not an SQLite database");
  EXPECT_EQ(ReadFile(Path()), text);
}

TEST_F(SqliteFaultTest, EmptyFileHoldsNoMetamodelAndTakesOne) {
  storage_.Directory().Write("metamodel.db", "");
  EXPECT_THAT(LoadError().message, HasSubstr("the database holds no metamodel; store one in it"));
  EXPECT_FALSE(OpenMetaStorage(Path())->Exists());
  Save();
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteFaultTest, OtherTablesOfTheDatabaseStay) {
  storage_.Execute({"CREATE TABLE parts (number TEXT)", "INSERT INTO parts VALUES ('A-1')"});
  EXPECT_FALSE(OpenMetaStorage(Path())->Exists());
  Save();
  Save();
  EXPECT_EQ(storage_.Query("SELECT number FROM parts"), "A-1");
}

TEST_F(SqliteFaultTest, LockedByAWriterForLong) {
  Save();
  const std::string before = ReadFile(Path());
  const std::unique_ptr<soci::session> writer = storage_.OpenSession();
  *writer << "BEGIN EXCLUSIVE";
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(LoadError(),
            (SError{kvx::kFileError, Path() + ": cannot be opened: another program has locked the database "
                                              "for more than 5 seconds; try again when that program is "
                                              "done"}));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
  const SError error = ErrorOf([&] { Save(); });
  EXPECT_EQ(error.code, kvx::kFileError);
  EXPECT_THAT(error.message, HasSubstr("what was there is unchanged: another program has locked the database"));
  *writer << "ROLLBACK";
  EXPECT_EQ(ReadFile(Path()), before);
}

TEST_F(SqliteFaultTest, LockedByAWriterForAMoment) {
  Save();
  const std::unique_ptr<soci::session> writer = storage_.OpenSession();
  *writer << "BEGIN EXCLUSIVE";
  std::thread release([&writer] {
    std::this_thread::sleep_for(1s);
    *writer << "COMMIT";
  });
  EXPECT_EQ(Loaded(), TextOf(*sample_));
  release.join();
}

TEST_F(SqliteFaultTest, NoPermission) {
  Save();
  Save("source.db");
  ShowEverybody(storage_.Directory().Path());
  const std::string before = ReadFile(Path());
  fs::permissions(Path(), fs::perms::none);
  ExpectOneLineOfTrouble(RunAsNobody({"metamodel", "show", Path()}), "Permission denied");
  ShowEverybody(Path());
  EXPECT_EQ(RunAsNobody({"metamodel", "show", Path()}).status, 0) << "reading needs no right to write";
  if (geteuid() == 0) {
    ShowEverybody(Path("source.db"));
    ExpectOneLineOfTrouble(RunAsNobody({"metamodel", "copy", "--replace", Path("source.db"), Path()}),
                           "permission denied");
    ExpectOneLineOfTrouble(RunAsNobody({"metamodel", "copy", Path("source.db"), Path("new.db")}), "Permission denied");
  }
  EXPECT_EQ(ReadFile(Path()), before);
  EXPECT_EQ(Files(), (std::vector<std::string>{"metamodel.db", "source.db"}));
}

TEST_F(SqliteFaultTest, ReadingChangesNothing) {
  Save();
  const std::string before = ReadFile(Path());
  const auto written = fs::last_write_time(Path());
  EXPECT_EQ(Loaded(), TextOf(*sample_));
  EXPECT_TRUE(OpenMetaStorage(Path())->Exists());
  EXPECT_EQ(ReadFile(Path()), before);
  EXPECT_EQ(fs::last_write_time(Path()), written);
  EXPECT_EQ(Files(), std::vector<std::string>{"metamodel.db"});
}

TEST_F(SqliteFaultTest, AnyPathCanBeGiven) {
  for (const std::string name : {"a b.db", "a=b timeout=x.db", "\"quoted\".db", "100%;'--.db", "file:x?mode=memory.db",
                                 ":memory:.db", "Stückliste.sqlite"}) {
    Save(name);
    EXPECT_EQ(TextOf(*OpenMetaStorage("sqlite3://" + Path(name))->Load()), TextOf(*sample_)) << name;
    EXPECT_TRUE(fs::exists(Path(name)));
  }
}

TEST_F(SqliteFaultTest, FailedCopyLeavesNoFile) {
  storage_.Directory().Write("source.json", R"({"generation": 2024, "classes": [{"internal_name": "A\u0000B"}]})");
  ExpectOneLineOfTrouble(test::Run({kUpgradesrv, "metamodel", "copy", Path("source.json"), Path()}), "NUL character");
  EXPECT_EQ(Files(), std::vector<std::string>{"source.json"});
}

TEST_F(SqliteFaultTest, FailedCopyLeavesTheMetamodel) {
  Save();
  storage_.Directory().Write("source.json", R"({"generation": 2024, "links": [{"internal_name": "A\u0000B"}]})");
  ExpectOneLineOfTrouble(test::Run({kUpgradesrv, "metamodel", "copy", "--replace", Path("source.json"), Path()}),
                         "table meta_links, row ordinal 0: internal_name: the text holds a NUL character");
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteFaultTest, ExistingMetamodelIsReplacedOnlyOnRequest) {
  Save();
  const auto other = LargeMetamodel(1);
  OpenMetaStorage(Path("other.json"))->Save(*other);
  ExpectOneLineOfTrouble(test::Run({kUpgradesrv, "metamodel", "copy", Path("other.json"), Path()}), "exists already");
  EXPECT_EQ(Loaded(), TextOf(*sample_));
  EXPECT_EQ(test::Run({kUpgradesrv, "metamodel", "copy", "--replace", Path("other.json"), Path()}).status, 0);
  EXPECT_EQ(Loaded(), TextOf(*other));
}

TEST_F(SqliteFaultTest, KilledCopyLeavesTheMetamodel) {
  Save();
  OpenMetaStorage(Path("large.json"))->Save(*LargeMetamodel(300));
  CRunningProcess copy({kUpgradesrv, "metamodel", "copy", "--replace", Path("large.json"), Path()});
  ASSERT_TRUE(WaitFor([&] { return fs::exists(Path("metamodel.db-journal")); }));
  std::this_thread::sleep_for(20ms);
  ASSERT_TRUE(copy.Kill());
  ASSERT_TRUE(fs::exists(Path("metamodel.db-journal"))) << "the copy was not interrupted in its midst";
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteFaultTest, CopyThatIsAskedToEndLeavesTheMetamodelAndNothingBesideIt) {
  Save();
  OpenMetaStorage(Path("large.json"))->Save(*LargeMetamodel(300));
  for (const std::chrono::milliseconds delay : {0ms, std::chrono::milliseconds(10), 20ms}) {
    CRunningProcess copy({kUpgradesrv, "metamodel", "copy", "--replace", Path("large.json"), Path()});
    ASSERT_TRUE(WaitFor([&] { return fs::exists(Path("metamodel.db-journal")); }));
    std::this_thread::sleep_for(delay);
    ASSERT_EQ(copy.Terminate(), SIGTERM) << "the copy was not interrupted in its midst";
    EXPECT_EQ(Files(), (std::vector<std::string>{"large.json", "metamodel.db"}));
    EXPECT_EQ(Loaded(), TextOf(*sample_));
  }
}

TEST_F(SqliteFaultTest, CopyToANewFileThatIsAskedToEndLeavesNothing) {
  OpenMetaStorage(Path("large.json"))->Save(*LargeMetamodel(300));
  for (const std::chrono::milliseconds delay : {0ms, std::chrono::milliseconds(10), 20ms}) {
    CRunningProcess copy({kUpgradesrv, "metamodel", "copy", Path("large.json"), Path()});
    ASSERT_TRUE(WaitFor([&] { return Files().size() > 1; }));
    std::this_thread::sleep_for(delay);
    ASSERT_EQ(copy.Terminate(), SIGTERM) << "the copy was not interrupted in its midst";
    EXPECT_EQ(Files(), std::vector<std::string>{"large.json"});
  }
}

TEST_F(SqliteFaultTest, CopyThatWaitsForAnotherProgramEndsAtOnceWhenItIsAskedTo) {
  Save();
  OpenMetaStorage(Path("small.json"))->Save(*sample_);
  const auto session = storage_.OpenSession();
  *session << "BEGIN EXCLUSIVE";
  CRunningProcess copy({kUpgradesrv, "metamodel", "copy", "--replace", Path("small.json"), Path()});
  // It has tried and waits, for five seconds in all.
  std::this_thread::sleep_for(500ms);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(copy.Terminate(), SIGTERM);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

TEST_F(SqliteFaultTest, WhatAKilledCopyToANewFileLeavesIsRemovedByTheNext) {
  const std::vector<std::string> copy = {kUpgradesrv, "metamodel", "copy", Path("large.json"), Path()};
  OpenMetaStorage(Path("large.json"))->Save(*LargeMetamodel(300));
  for (const std::chrono::milliseconds delay : {0ms, std::chrono::milliseconds(5), 20ms, 60ms}) {
    CRunningProcess process(copy);
    ASSERT_TRUE(WaitFor([&] { return Files().size() > 1; }));
    std::this_thread::sleep_for(delay);
    ASSERT_TRUE(process.Kill());
    ASSERT_EQ(Files().size(), 2U) << "nothing of the copies before it, and of this one something";
    EXPECT_FALSE(fs::exists(Path()));
    if (delay == std::chrono::milliseconds(5)) {
      EXPECT_EQ(test::Run(copy).status, 0);
      EXPECT_EQ(Files(), (std::vector<std::string>{"large.json", "metamodel.db"}));
      EXPECT_EQ(Loaded(), TextOf(*LargeMetamodel(300)));
      fs::remove(Path());
    }
  }
  EXPECT_EQ(test::Run(copy).status, 0);
  EXPECT_EQ(Files(), (std::vector<std::string>{"large.json", "metamodel.db"}));
}

TEST_F(SqliteFaultTest, CopyAtWorkIsNotDisturbedByAnother) {
  OpenMetaStorage(Path("large.json"))->Save(*LargeMetamodel(300));
  storage_.Directory().Write("refused.json", R"({"generation": 2024, "classes": [{"internal_name": "A\u0000B"}]})");
  CRunningProcess process({kUpgradesrv, "metamodel", "copy", Path("large.json"), Path()});
  ASSERT_TRUE(WaitFor([&] { return Files().size() == 3 && fs::file_size(Path(Files()[1])) > 0; }));
  process.Halt();
  const std::vector<std::string> atWork = Files();
  ASSERT_FALSE(fs::exists(Path())) << "the copy was not halted in its midst";
  ExpectOneLineOfTrouble(test::Run({kUpgradesrv, "metamodel", "copy", Path("refused.json"), Path()}), "NUL character");
  EXPECT_EQ(Files(), atWork);
  process.Resume();
  EXPECT_EQ(process.Wait(), 0);
  EXPECT_EQ(Loaded(), TextOf(*LargeMetamodel(300)));
  EXPECT_EQ(Files(), (std::vector<std::string>{"large.json", "metamodel.db", "refused.json"}));
}

TEST_F(SqliteFaultTest, NewFileIsOneFileFromItsBeginning) {
  OpenMetaStorage(Path("large.json"))->Save(*LargeMetamodel(300));
  CRunningProcess process({kUpgradesrv, "metamodel", "copy", Path("large.json"), Path()});
  ASSERT_TRUE(WaitFor([&] { return Files().size() == 2 && fs::file_size(Path(Files()[1])) > 0; }));
  process.Halt();
  EXPECT_FALSE(fs::exists(Path()));
  EXPECT_EQ(Files().size(), 2U) << "no journal and no directory";
  ASSERT_TRUE(process.Kill());
}

TEST_F(SqliteFaultTest, InterruptedWriteIsUndoneBeforeReading) {
  Save();
  LeaveInterruptedWrite("crashed.db");
  EXPECT_NE(ReadFile(Path("crashed.db")), ReadFile(Path()));
  EXPECT_EQ(TextOf(*OpenMetaStorage(Path("crashed.db"))->Load()), TextOf(*sample_));
  EXPECT_FALSE(fs::exists(Path("crashed.db-journal")));
}

TEST_F(SqliteFaultTest, InterruptedWriteThatMayNotBeUndone) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can run the tool as a user without rights";
  }
  Save();
  LeaveInterruptedWrite("crashed.db");
  ShowEverybody(storage_.Directory().Path());
  ShowEverybody(Path("crashed.db"));
  ShowEverybody(Path("crashed.db-journal"));
  ExpectOneLineOfTrouble(RunAsNobody({"metamodel", "show", Path("crashed.db")}),
                         "permission denied; run as a user who may");
}

TEST_F(SqliteFaultTest, LinkOfAnotherUserIsNotWrittenThrough) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "NOT TESTED: only an administrator can make links of other users";
  }
  Save();
  const std::string before = test::ReadFile(Path());
  const CTemporaryDirectory shared;
  ASSERT_EQ(chmod(shared.Path().c_str(), 01777), 0);
  const std::string link = shared.File("link.db");
  fs::create_symlink(Path(), link);
  ASSERT_EQ(lchown(link.c_str(), 65534, 65534), 0);
  EXPECT_THAT(ErrorOf([&] { OpenMetaStorage(link)->Save(*LargeMetamodel(1)); }).message,
              HasSubstr(link + " is a symbolic link of another user in a directory that all may write to"));
  EXPECT_TRUE(test::ReadFile(Path()) == before);
}

}  // namespace
}  // namespace test
