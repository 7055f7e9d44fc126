// Links to a file that is saved, as CTemporaryFile follows them. Whom a link belongs to only an administrator can
// choose.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "kvxsptfile/TemporaryFile.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr uid_t kStranger = 65534;
constexpr mode_t kPrivate = 0755;
constexpr mode_t kShared = 01777;

class FollowLinksTest : public testing::Test {
 protected:
  void SetUp() override {
    if (geteuid() != 0) {
      GTEST_SKIP() << "NOT TESTED: only an administrator can make links of other users";
    }
    fs::create_directory(directory_.File("shared"));
    target_ = directory_.Write("data/target", "earlier");
  }

  /// A link in the directory "shared", which has these permissions and these owners.
  std::string MakeLink(const std::string& to, mode_t permissions, uid_t directoryOwner, uid_t linkOwner) const {
    const std::string directory = directory_.File("shared");
    const std::string link = directory + "/link";
    fs::create_symlink(to, link);
    EXPECT_EQ(lchown(link.c_str(), linkOwner, linkOwner), 0);
    EXPECT_EQ(chown(directory.c_str(), directoryOwner, directoryOwner), 0);
    EXPECT_EQ(chmod(directory.c_str(), permissions), 0);
    return link;
  }

  static std::string Save(const std::string& path) {
    return test::ErrorOf([&] { kvx::CTemporaryFile(path).Commit(); }).message;
  }
  std::string Target() const { return test::ReadFile(target_); }

  test::CTemporaryDirectory directory_;
  std::string target_;
};

TEST_F(FollowLinksTest, OfAnotherUserInADirectoryThatAllMayWriteToIsRefused) {
  const std::string link = MakeLink(target_, kShared, 0, kStranger);
  EXPECT_EQ(Save(link), link + ": cannot be saved: " + link +
                            " is a symbolic link of another user in a directory that all may write to; nothing was "
                            "changed");
  EXPECT_EQ(Target(), "earlier");
  EXPECT_TRUE(fs::is_symlink(link));
}

TEST_F(FollowLinksTest, OfAnotherUserIsRefusedWithoutTheStickyBitToo) {
  EXPECT_THAT(Save(MakeLink(target_, 0777, 0, kStranger)), HasSubstr("of another user"));
  EXPECT_EQ(Target(), "earlier");
}

TEST_F(FollowLinksTest, OfAnotherUserToNothingYetIsRefused) {
  EXPECT_THAT(Save(MakeLink(directory_.File("absent"), kShared, 0, kStranger)), HasSubstr("of another user"));
  EXPECT_FALSE(fs::exists(directory_.File("absent")));
}

TEST_F(FollowLinksTest, OfAnotherUserIsRefusedOnTheWayToTheFileToo) {
  const std::string link = MakeLink(directory_.File("data"), kShared, 0, kStranger);
  EXPECT_THAT(Save(link + "/target"), HasSubstr(": cannot be saved: " + link + " is a symbolic link of another user"));
  EXPECT_EQ(Target(), "earlier");
}

TEST_F(FollowLinksTest, OfAnotherUserIsRefusedBehindALinkOfOnesOwn) {
  const std::string link = MakeLink(target_, kShared, 0, kStranger);
  fs::create_symlink(link, directory_.File("own"));
  EXPECT_THAT(Save(directory_.File("own")), HasSubstr(link + " is a symbolic link of another user"));
  EXPECT_EQ(Target(), "earlier");
}

TEST_F(FollowLinksTest, OfOnesOwnIsFollowedInADirectoryThatAllMayWriteTo) {
  EXPECT_EQ(Save(MakeLink(target_, kShared, kStranger, 0)), "nothing was thrown");
  EXPECT_EQ(Target(), "");
}

TEST_F(FollowLinksTest, OfTheDirectorysOwnerIsFollowedInADirectoryThatAllMayWriteTo) {
  EXPECT_EQ(Save(MakeLink(target_, kShared, kStranger, kStranger)), "nothing was thrown");
  EXPECT_EQ(Target(), "");
}

TEST_F(FollowLinksTest, OfAnotherUserIsFollowedInADirectoryOfHis) {
  EXPECT_EQ(Save(MakeLink(target_, kPrivate, 0, kStranger)), "nothing was thrown");
  EXPECT_EQ(Target(), "");
}

}  // namespace
