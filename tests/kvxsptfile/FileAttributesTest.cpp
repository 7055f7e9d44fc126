// What a file that is replaced hands on to the new one.

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "kvxsptfile/TemporaryFile.h"
#include "support/MessageInChild.h"
#include "support/OtherUser.h"
#include "support/TemporaryDirectory.h"

namespace {

constexpr uid_t kOwner = 1234;
constexpr gid_t kGroup = 4321;
constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kDefaultList = "system.posix_acl_default";

/// Read and write for the owner and the user 1111, read for the group, nothing for others; as the system stores it.
std::string AccessList() {
  constexpr std::uint32_t kNobody = 0xFFFFFFFF;
  struct SEntry {
    std::uint16_t tag;
    std::uint16_t permissions;
    std::uint32_t id;
  };
  const std::uint32_t version = 2;
  const std::array<SEntry, 5> entries = {
      {{0x01, 6, kNobody}, {0x02, 6, 1111}, {0x04, 4, kNobody}, {0x10, 6, kNobody}, {0x20, 0, kNobody}}};
  std::string list(sizeof version + sizeof entries, '\0');
  std::memcpy(list.data(), &version, sizeof version);
  std::memcpy(list.data() + sizeof version, entries.data(), sizeof entries);
  return list;
}

std::string ListOf(const std::string& path) {
  std::array<char, 1024> list{};
  const ssize_t size = getxattr(path.c_str(), kAccessList, list.data(), list.size());
  return {list.data(), static_cast<std::size_t>(size > 0 ? size : 0)};
}

struct stat StatusOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status;
}

mode_t PermissionsOf(const std::string& path) {
  return StatusOf(path).st_mode & 07777;
}

class FileAttributesTest : public testing::Test {
 protected:
  ~FileAttributesTest() override { kvx::CFileNotes::SetReceiver({}); }

  /// Saves, and answers with the notes.
  std::string Save() const {
    std::string notes;
    kvx::CFileNotes::SetReceiver([&notes](const std::string& note) { notes += note + "\n"; });
    kvx::CTemporaryFile(target_).Commit();
    return notes;
  }
  /// The same in a process that is another user's.
  std::string SaveAsOtherUser(const std::function<bool()>& become = test::BecomeOtherUser) const {
    EXPECT_EQ(chmod(directory_.Path().c_str(), 0777), 0);
    return test::MessageInChild(become, [this] { throw CKVXException(1, Save()); });
  }
  std::string Note(const std::string& words) const {
    return target_ + ": was replaced, but this process may not give the new file the " + words + " of the old one\n";
  }
  bool SetList(const std::string& path, const char* name) const {
    const std::string list = AccessList();
    return setxattr(path.c_str(), name, list.data(), list.size(), 0) == 0;
  }

  test::CTemporaryDirectory directory_;
  std::string target_ = directory_.Write("out", "earlier");
};

TEST_F(FileAttributesTest, PermissionsAreKept) {
  for (const mode_t permissions : {0600U, 0644U, 0755U, 0444U}) {
    ASSERT_EQ(chmod(target_.c_str(), permissions), 0);
    EXPECT_EQ(Save(), "");
    EXPECT_EQ(PermissionsOf(target_), permissions);
  }
}

TEST_F(FileAttributesTest, RightsLentToWhoeverRunsTheFileAreNotHandedOn) {
  ASSERT_EQ(chmod(target_.c_str(), 06755), 0);
  EXPECT_EQ(Save(), "");
  EXPECT_EQ(PermissionsOf(target_), 0755U);
}

TEST_F(FileAttributesTest, AccessControlListIsKept) {
  if (!SetList(target_, kAccessList)) {
    GTEST_SKIP() << "NOT TESTED: this file system has no access control lists";
  }
  EXPECT_EQ(Save(), "");
  EXPECT_EQ(ListOf(target_), AccessList());
  EXPECT_EQ(PermissionsOf(target_), 0660U);
  EXPECT_EQ(test::ReadFile(target_), "");
}

TEST_F(FileAttributesTest, ListThatADirectoryGivesToNewFilesIsNotAddedToAnOldOne) {
  ASSERT_EQ(chmod(target_.c_str(), 0640), 0);
  if (!SetList(directory_.Path(), kDefaultList)) {
    GTEST_SKIP() << "NOT TESTED: this file system has no access control lists";
  }
  EXPECT_EQ(Save(), "");
  EXPECT_EQ(ListOf(target_), "");
  EXPECT_EQ(PermissionsOf(target_), 0640U);
}

TEST_F(FileAttributesTest, NewFileHasWhatItsDirectoryGivesToAll) {
  if (!SetList(directory_.Path(), kDefaultList)) {
    GTEST_SKIP() << "NOT TESTED: this file system has no access control lists";
  }
  target_ = directory_.File("new");
  EXPECT_EQ(Save(), "");
  const std::string other = directory_.Write("other", "");
  EXPECT_FALSE(ListOf(target_).empty());
  EXPECT_EQ(ListOf(target_), ListOf(other));
  EXPECT_EQ(PermissionsOf(target_), PermissionsOf(other));
}

class FileOwnerTest : public FileAttributesTest {
 protected:
  void SetUp() override {
    if (geteuid() != 0) {
      GTEST_SKIP() << "NOT TESTED: only an administrator can make files of other users";
    }
    ASSERT_EQ(chown(target_.c_str(), kOwner, kGroup), 0);
  }
};

TEST_F(FileOwnerTest, AndGroupAreKeptByAnAdministrator) {
  ASSERT_EQ(chmod(target_.c_str(), 0640), 0);
  EXPECT_EQ(Save(), "");
  EXPECT_EQ(StatusOf(target_).st_uid, kOwner);
  EXPECT_EQ(StatusOf(target_).st_gid, kGroup);
  EXPECT_EQ(PermissionsOf(target_), 0640U);
}

TEST_F(FileOwnerTest, ThatAnotherUserCannotKeepIsNoted) {
  ASSERT_EQ(chmod(target_.c_str(), 0644), 0);
  EXPECT_EQ(SaveAsOtherUser(), Note("group 4321, owner 1234"));
  EXPECT_EQ(StatusOf(target_).st_uid, 65534U);
  EXPECT_EQ(StatusOf(target_).st_gid, 65534U);
  EXPECT_EQ(PermissionsOf(target_), 0644U);
  EXPECT_EQ(test::ReadFile(target_), "");
}

TEST_F(FileOwnerTest, GroupOfOnesOwnIsKept) {
  ASSERT_EQ(chmod(target_.c_str(), 0660), 0);
  const auto becomeMember = [] { return setgroups(1, &kGroup) == 0 && setgid(65534) == 0 && setuid(65534) == 0; };
  EXPECT_EQ(SaveAsOtherUser(becomeMember), Note("owner 1234"));
  EXPECT_EQ(StatusOf(target_).st_gid, kGroup);
  EXPECT_EQ(PermissionsOf(target_), 0660U);
}

TEST_F(FileOwnerTest, RightsOfAGroupThatIsLostGoToNoOther) {
  ASSERT_EQ(chmod(target_.c_str(), 0664), 0);
  EXPECT_EQ(SaveAsOtherUser(), Note("group 4321, permissions 0664, owner 1234"));
  EXPECT_EQ(PermissionsOf(target_), 0644U);
}

TEST_F(FileOwnerTest, ListOfAGroupThatIsLostIsLostToo) {
  if (!SetList(target_, kAccessList)) {
    GTEST_SKIP() << "NOT TESTED: this file system has no access control lists";
  }
  EXPECT_EQ(SaveAsOtherUser(), Note("group 4321, permissions 0660, access control list, owner 1234"));
  EXPECT_EQ(ListOf(target_), "");
  EXPECT_EQ(PermissionsOf(target_), 0600U);
}

}  // namespace
