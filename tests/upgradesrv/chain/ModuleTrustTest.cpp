#include "upgradesrv/chain/ModuleTrust.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "support/MessageInChild.h"
#include "support/OtherUser.h"
#include "support/TemporaryDirectory.h"
#include "upgradesrv/Trouble.h"

namespace {

using upgradesrv::LookWhoMayWriteModule;

constexpr gid_t kOtherGroup = 4321;

class ModuleTrustTest : public testing::Test {
 protected:
  ModuleTrustTest() {
    Permit(module_, 0644);
    Permit(Directory(), 0755);
  }

  std::string Directory() const { return directory_.Path(); }

  static void Permit(const std::string& path, mode_t mode) { ASSERT_EQ(chmod(path.c_str(), mode), 0); }

  /// What this user is told of the module: the trouble, the notes, or nothing.
  static std::string Told(const std::string& path) {
    std::string told;
    kvx::CFileNotes::SetReceiver([&told](const std::string& note) { told += note + "\n"; });
    try {
      LookWhoMayWriteModule(path);
    } catch (const upgradesrv::CTrouble& trouble) {
      told += std::string("trouble: ") + trouble.what() + "\n";
    }
    kvx::CFileNotes::SetReceiver({});
    return told;
  }

  /// What root is told, or any other user who runs the test.
  static std::string Expected(const std::string& who, const std::string& place) {
    return geteuid() == 0 ? "trouble: the module is not loaded: " + who + " may write to " + place +
                                ", and would decide what root does; take that permission away or run as another user\n"
                          : Note(who, place);
  }

  static std::string Note(const std::string& who, const std::string& place) {
    return who + " may write to " + place + ", and so decide what this run does\n";
  }

  /// What a user is told who is not root.
  std::string ToldToOtherUser() const {
    return test::MessageInChild(test::BecomeOtherUser, [this] { throw CKVXException(1, Told(module_)); });
  }

  test::CTemporaryDirectory directory_;
  std::string module_ = directory_.Write("libtest.so", "");
};

TEST_F(ModuleTrustTest, NothingIsSaidWhereNobodyElseMayWrite) {
  EXPECT_EQ(Told(module_), "");
  EXPECT_EQ(ToldToOtherUser(), "");
}

TEST_F(ModuleTrustTest, FileThatEveryoneMayWriteIsRefusedToRootAndNotedOtherwise) {
  Permit(module_, 0646);
  EXPECT_EQ(Told(module_), Expected("everyone", module_));
  EXPECT_EQ(ToldToOtherUser(), Note("everyone", module_));
}

TEST_F(ModuleTrustTest, DirectoryThatEveryoneMayWriteIsRefusedToRootAndNotedOtherwise) {
  // Nobody may replace another's file in such a directory, but anybody may be the first to put one there.
  for (const mode_t mode : {0777U, 01777U}) {
    Permit(Directory(), mode);
    EXPECT_EQ(Told(module_), Expected("everyone", Directory()));
    EXPECT_EQ(ToldToOtherUser(), Note("everyone", Directory()));
  }
}

TEST_F(ModuleTrustTest, FileAndDirectoryOfAnotherUserAreRefusedToRoot) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "NOT TESTED: only root can give files away";
  }
  ASSERT_TRUE(test::GiveToOtherUser(module_));
  EXPECT_EQ(Told(module_), Expected("another user, its owner,", module_));
  EXPECT_EQ(ToldToOtherUser(), "") << "they are its own";
  ASSERT_EQ(chown(module_.c_str(), 0, 0), 0);
  ASSERT_TRUE(test::GiveToOtherUser(Directory()));
  EXPECT_EQ(Told(module_), Expected("another user, its owner,", Directory()));
}

TEST_F(ModuleTrustTest, GroupThatMayWriteCountsUnlessItIsTheUsersOwn) {
  Permit(module_, 0664);
  EXPECT_EQ(Told(module_), "");
  if (chown(module_.c_str(), geteuid(), kOtherGroup) != 0) {
    GTEST_SKIP() << "NOT TESTED: only root can give files away";
  }
  EXPECT_EQ(Told(module_), Expected("its group", module_));
  EXPECT_EQ(ToldToOtherUser(), Note("its group", module_));
}

TEST_F(ModuleTrustTest, DirectoryThatALinkLeadsToCounts) {
  const std::filesystem::path linked = directory_.File("stored");
  std::filesystem::create_directory(linked);
  std::filesystem::rename(module_, linked / "libtest.so");
  std::filesystem::create_symlink("stored/libtest.so", module_);
  EXPECT_EQ(Told(module_), "");
  Permit(linked, 0757);
  EXPECT_EQ(Told(module_), Expected("everyone", linked));
}

}  // namespace
