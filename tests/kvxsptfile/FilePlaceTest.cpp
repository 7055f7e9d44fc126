#include "kvxsptfile/FilePlace.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>

#include "support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;

/// What a file system says that cannot rename without replacing; 0 for the one that the tests run on.
int theRenameError = 0;

}  // namespace

// Stands in place of the C library's.
extern "C" __attribute__((visibility("default"))) int renameat2(int fromDirectory, const char* from, int toDirectory,
                                                                const char* to, unsigned flags) noexcept {
  if (theRenameError != 0) {
    errno = theRenameError;
    return -1;
  }
  return static_cast<int>(syscall(SYS_renameat2, fromDirectory, from, toDirectory, to, flags));
}

namespace {

class RenameToNewTest : public testing::TestWithParam<int> {
 protected:
  RenameToNewTest() { theRenameError = GetParam(); }
  ~RenameToNewTest() override { theRenameError = 0; }

  int Rename() const { return kvx::RenameToNew(from_, to_); }

  test::CTemporaryDirectory directory_;
  std::string from_ = directory_.Write("from", "new");
  std::string to_ = directory_.File("to");
};

TEST_P(RenameToNewTest, MovesToANameThatNothingHas) {
  EXPECT_EQ(Rename(), 0);
  EXPECT_EQ(test::ReadFile(to_), "new");
  EXPECT_FALSE(fs::exists(from_));
  EXPECT_EQ(fs::hard_link_count(to_), 1U);
}

TEST_P(RenameToNewTest, LeavesAFileAsItIs) {
  directory_.Write("to", "old");
  EXPECT_EQ(Rename(), EEXIST);
  EXPECT_EQ(test::ReadFile(to_), "old");
  EXPECT_EQ(test::ReadFile(from_), "new");
}

TEST_P(RenameToNewTest, LeavesADirectoryAsItIs) {
  fs::create_directory(to_);
  EXPECT_EQ(Rename(), EEXIST);
  EXPECT_TRUE(fs::is_empty(to_));
}

TEST_P(RenameToNewTest, LeavesASymbolicLinkToNothingAsItIs) {
  fs::create_symlink("absent", to_);
  EXPECT_EQ(Rename(), EEXIST);
  EXPECT_TRUE(fs::is_symlink(to_));
  EXPECT_FALSE(fs::exists(to_));
}

TEST_P(RenameToNewTest, SaysWhyItCannot) {
  EXPECT_EQ(kvx::RenameToNew(from_, directory_.File("absent/to")), ENOENT);
  EXPECT_EQ(test::ReadFile(from_), "new");
}

INSTANTIATE_TEST_SUITE_P(FileSystem, RenameToNewTest, testing::Values(0, EINVAL, ENOSYS), [](const auto& test) {
  return test.param == 0 ? "Here" : test.param == EINVAL ? "WithoutTheFlag" : "WithoutTheCall";
});

}  // namespace
