// Committing where nothing may be replaced, on file systems that can and cannot rename so.

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptfile/TemporaryFile.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;

/// What a file system says that cannot rename without replacing; 0 for the one that the tests run on.
int theRenameError = 0;

}  // namespace

// Takes the place of the C library's.
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
  RenameToNewTest() {
    fs::create_directory(directory_.File("inner"));
    file_ = std::make_unique<kvx::CTemporaryFile>(to_);
    std::ofstream(file_->GetPath()) << "new";
    theRenameError = GetParam();
  }
  ~RenameToNewTest() override { theRenameError = 0; }

  test::CTemporaryDirectory directory_;
  std::string to_ = directory_.File("inner/to");
  std::unique_ptr<kvx::CTemporaryFile> file_;
};

TEST_P(RenameToNewTest, MovesToANameThatNothingHas) {
  const std::string from = file_->GetPath();
  EXPECT_TRUE(file_->CommitNew());
  EXPECT_EQ(test::ReadFile(to_), "new");
  EXPECT_FALSE(fs::exists(from));
  EXPECT_EQ(fs::hard_link_count(to_), 1U);
}

TEST_P(RenameToNewTest, LeavesAFileAsItIs) {
  directory_.Write("inner/to", "old");
  EXPECT_FALSE(file_->CommitNew());
  EXPECT_EQ(test::ReadFile(to_), "old");
  EXPECT_EQ(test::ReadFile(file_->GetPath()), "new");
}

TEST_P(RenameToNewTest, LeavesADirectoryAsItIs) {
  fs::create_directory(to_);
  EXPECT_FALSE(file_->CommitNew());
  EXPECT_TRUE(fs::is_empty(to_));
}

TEST_P(RenameToNewTest, LeavesASymbolicLinkToNothingAsItIs) {
  fs::create_symlink("absent", to_);
  EXPECT_FALSE(file_->CommitNew());
  EXPECT_TRUE(fs::is_symlink(to_));
  EXPECT_FALSE(fs::exists(to_));
}

TEST_P(RenameToNewTest, SaysWhyItCannot) {
  fs::remove_all(directory_.File("inner"));
  EXPECT_EQ(test::ErrorOf([this] { file_->CommitNew(); }),
            (test::SError{kvx::kFileError, to_ + ": cannot be saved: No such file or directory; nothing was changed"}));
}

INSTANTIATE_TEST_SUITE_P(FileSystem, RenameToNewTest, testing::Values(0, EINVAL, ENOSYS), [](const auto& test) {
  return test.param == 0 ? "Here" : test.param == EINVAL ? "WithoutTheFlag" : "WithoutTheCall";
});

}  // namespace
