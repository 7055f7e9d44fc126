// SQLite databases that do not exist yet: their files are written beside their place and come there when complete.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/MessageInChild.h"
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

const std::string kUpgradesrv = UPGRADESRV_EXECUTABLE;

class NewSqliteFileTest : public testing::Test {
 protected:
  /// Copies to a new file, halted while it is written for `meanwhile`; answers with what is on standard error.
  template <typename Action>
  std::string CopyHaltedFor(const std::string& option, const Action& meanwhile) const {
    const CTemporaryDirectory aside;
    OpenMetaStorage(aside.File("large.json"))->Save(*LargeMetamodel(300));
    CRunningProcess copy({"/bin/sh", "-c", "exec \"$0\" \"$@\" 2> " + aside.File("errors"), kUpgradesrv, "metamodel",
                          "copy", option, aside.File("large.json"), storage_.File()});
    const fs::path directory = storage_.Directory().Path();
    for (int i = 0; i < 20000 && fs::is_empty(directory); ++i) {
      std::this_thread::sleep_for(1ms);
    }
    copy.Halt();
    EXPECT_FALSE(fs::is_empty(directory) || fs::exists(storage_.File())) << "the copy was not halted in its midst";
    meanwhile();
    copy.Resume();
    EXPECT_EQ(copy.Wait(), 2);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory), {}), 1) << "something was left";
    return ReadFile(aside.File("errors"));
  }

  std::string Path(const std::string& name) const { return storage_.Directory().File(name); }
  void Save(const std::string& name) const { OpenMetaStorage(Path(name))->Save(*LargeMetamodel(1)); }
  SError SaveError(const std::string& name) const {
    return ErrorOf([&] { Save(name); });
  }

  CTestStorage storage_{EStorage::kSqlite};
};

TEST_F(NewSqliteFileTest, MetamodelThatComesWhileItIsWrittenIsKept) {
  const auto other = OpenMetaStorage(storage_.Location());
  const std::string errors = CopyHaltedFor("--quiet", [&] {
    const CTemporaryDirectory aside;
    OpenMetaStorage(aside.File("other.db"))->Save(CMetaDictionary2024());
    fs::copy(aside.File("other.db"), storage_.File());
  });
  EXPECT_EQ(errors, "upgradesrv: error: " + storage_.Location() + ": exists already; give --replace to replace it\n");
  EXPECT_EQ(TextOf(*other->Load()), TextOf(CMetaDictionary2024()));
}

TEST_F(NewSqliteFileTest, FileThatComesWhileItIsWrittenIsKept) {
  for (const std::string option : {"--quiet", "--replace"}) {
    const std::string errors = CopyHaltedFor(option, [&] { storage_.Directory().Write("metamodel.db", ""); });
    EXPECT_EQ(errors, "upgradesrv: error: " + storage_.Location() +
                          ": cannot be stored, what was there is unchanged: another program has created the file "
                          "meanwhile; try again\n");
    EXPECT_EQ(fs::file_size(storage_.File()), 0U);
    fs::remove(storage_.File());
  }
}

TEST_F(NewSqliteFileTest, FileThatItsMakerMayNotOpenIsAnError) {
  fs::permissions(storage_.Directory().Path(), fs::perms::all);
  OpenMetaStorage(Path("source.json"))->Save(*LargeMetamodel(1));
  fs::permissions(Path("source.json"), fs::perms::all);
  std::vector<std::string> command = {
      "/usr/bin/timeout", "30",   "/bin/sh",           "-c",           "umask 0777; exec \"$0\" \"$@\"", kUpgradesrv,
      "metamodel",        "copy", Path("source.json"), storage_.File()};
  if (geteuid() == 0) {
    command.insert(command.begin(), {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
  }
  const SProcessResult result = test::Run(command);
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "upgradesrv: error: " + storage_.Location() +
                               ": cannot be stored, what was there is unchanged: permission denied; run as a user who "
                               "may use the file and its directory\n");
  fs::remove(Path("source.json"));
  EXPECT_TRUE(fs::is_empty(storage_.Directory().Path()));
}

/// What an action fails with in a process of its own that can open no more files.
template <typename Action>
std::string MessageWithoutDescriptors(const Action& action) {
  const auto prepare = [] {
    const int free = dup(STDERR_FILENO);
    const rlimit limits{static_cast<rlim_t>(free), static_cast<rlim_t>(free)};
    close(free);
    return setrlimit(RLIMIT_NOFILE, &limits) == 0;
  };
  return MessageInChild(prepare, action);
}

TEST_F(NewSqliteFileTest, NoMoreFilesCanBeOpened) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "NOT TESTED: the sanitizer's check of virtual calls opens files itself";
#endif
  // The library that is loaded for it needs a descriptor, too.
  static_cast<void>(OpenMetaStorage(storage_.Location()));
  EXPECT_EQ(MessageWithoutDescriptors([&] { Save("metamodel.db"); }),
            storage_.Location() + ": cannot be saved: Too many open files; nothing was changed");
  EXPECT_TRUE(fs::is_empty(storage_.Directory().Path()));
}

TEST_F(NewSqliteFileTest, SymbolicLinkToNothingYetGetsItsTarget) {
  fs::create_directory(Path("data"));
  fs::create_symlink("data/target.sqlite", Path("link.db"));
  fs::create_symlink(Path("link.db"), Path("chain.db"));
  Save("chain.db");
  EXPECT_TRUE(fs::is_symlink(Path("chain.db")));
  EXPECT_TRUE(fs::is_symlink(Path("link.db")));
  EXPECT_EQ(TextOf(*OpenMetaStorage(Path("data/target.sqlite"))->Load()), TextOf(*LargeMetamodel(1)));
  Save("chain.db");
  EXPECT_EQ(std::distance(fs::directory_iterator(Path("data")), {}), 1);
  EXPECT_EQ(std::distance(fs::directory_iterator(storage_.Directory().Path()), {}), 3);
}

TEST_F(NewSqliteFileTest, SymbolicLinksThatLeadNowhereAreRefused) {
  fs::create_symlink("b.db", Path("a.db"));
  fs::create_symlink("a.db", Path("b.db"));
  fs::create_symlink("absent/target.db", Path("link.db"));
  const std::string before = ": cannot be saved: ";
  const std::string after = "; nothing was changed";
  EXPECT_EQ(SaveError("a.db"),
            (SError{kvx::kFileError, Path("a.db") + before + "Too many levels of symbolic links" + after}));
  EXPECT_EQ(SaveError("link.db"),
            (SError{kvx::kFileError, Path("link.db") + before + "No such file or directory" + after}));
  EXPECT_EQ(std::distance(fs::directory_iterator(storage_.Directory().Path()), {}), 3);
}

}  // namespace
}  // namespace test
