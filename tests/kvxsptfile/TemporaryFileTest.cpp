#include "kvxsptfile/TemporaryFile.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/Error.h"
#include "support/MessageInChild.h"
#include "support/OtherUser.h"
#include "support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;
using kvx::CTemporaryFile;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

void WriteByName(const CTemporaryFile& file, const std::string& content) {
  std::ofstream(file.GetPath(), std::ios::binary) << content;
}

class TemporaryFileTest : public testing::Test {
 protected:
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory_.Path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  /// What a process leaves that is killed before it commits.
  void LeaveUnfinished() const {
    const pid_t child = fork();
    if (child == 0) {
      const CTemporaryFile file(target_);
      WriteByName(file, "part");
      raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
  }

  test::CTemporaryDirectory directory_;
  std::string target_ = directory_.File("out");
};

TEST_F(TemporaryFileTest, IsBesideItsTargetUnderANameOfItsOwn) {
  const CTemporaryFile file(target_);
  EXPECT_THAT(file.GetPath(), MatchesRegex(target_ + R"(\.unfinished-[A-Za-z0-9]{6})"));
  EXPECT_THAT(Names(), ElementsAre(fs::path(file.GetPath()).filename().string()));
  EXPECT_TRUE(fs::is_empty(file.GetPath()));
}

TEST_F(TemporaryFileTest, CommitsWhatAnotherLibraryHasWrittenByName) {
  CTemporaryFile file(target_);
  WriteByName(file, "content");
  EXPECT_FALSE(fs::exists(target_));
  file.Commit();
  EXPECT_EQ(test::ReadFile(target_), "content");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(TemporaryFileTest, CommitNewKeepsWhatHasComeToTheTargetsPlace) {
  {
    CTemporaryFile file(target_);
    WriteByName(file, "content");
    directory_.Write("out", "earlier");
    EXPECT_FALSE(file.CommitNew());
  }
  EXPECT_EQ(test::ReadFile(target_), "earlier");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(TemporaryFileTest, InPlaceOfAFileIsNobodyElsesBusinessUntilCommit) {
  directory_.Write("out", "earlier");
  ASSERT_EQ(chmod(target_.c_str(), 0666), 0);
  const CTemporaryFile file(target_);
  struct stat status {};
  ASSERT_EQ(stat(file.GetPath().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST_F(TemporaryFileTest, OfAKilledProcessIsRemovedByTheNextOne) {
  LeaveUnfinished();
  LeaveUnfinished();
  ASSERT_EQ(Names().size(), 1U);
  CTemporaryFile(target_).Commit();
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(TemporaryFileTest, OfAKilledProcessIsRemovedThroughALinkToItsTarget) {
  LeaveUnfinished();
  fs::create_symlink("out", directory_.File("link"));
  CTemporaryFile(directory_.File("link")).Commit();
  EXPECT_THAT(Names(), UnorderedElementsAre("out", "link"));
}

TEST_F(TemporaryFileTest, OfAProcessThatWorksStays) {
  CTemporaryFile first(target_);
  CTemporaryFile second(target_);
  WriteByName(first, "first");
  WriteByName(second, "second");
  EXPECT_EQ(Names().size(), 2U);
  second.Commit();
  EXPECT_EQ(test::ReadFile(target_), "second");
  CTemporaryFile(target_).Commit();
  first.Commit();
  EXPECT_EQ(test::ReadFile(target_), "first");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(TemporaryFileTest, StaysThoughItsLibraryOpensAndClosesIt) {
  CTemporaryFile file(target_);
  WriteByName(file, "content");
  CTemporaryFile(target_).Commit();
  file.Commit();
  EXPECT_EQ(test::ReadFile(target_), "content");
}

TEST_F(TemporaryFileTest, LeavesWhatIsNoLeftoverOfItsTarget) {
  const std::vector<std::string> names = {"out.backup",
                                          "out.unfinished-",
                                          "out.unfinished-short",
                                          "out.unfinished-toolong",
                                          "out.unfinished-abc_12",
                                          "out.unfinished-abc.1",
                                          "other.unfinished-abc123",
                                          ".out.unfinished-abc123",
                                          "out.unfinished-abc123~",
                                          "xout.unfinished-abc123"};
  for (const std::string& name : names) {
    directory_.Write(name, "mine");
  }
  fs::create_directory(directory_.File("out.unfinished-direct"));
  ASSERT_EQ(mkfifo(directory_.File("out.unfinished-a0pipe").c_str(), 0600), 0);
  fs::create_symlink("out.backup", directory_.File("out.unfinished-a0link"));
  CTemporaryFile(target_).Commit();
  EXPECT_EQ(Names().size(), names.size() + 4);
  EXPECT_EQ(test::ReadFile(directory_.File("out.backup")), "mine");
}

TEST_F(TemporaryFileTest, LeavesAFileThatSomebodyHasLocked) {
  const std::string name = directory_.Write("out.unfinished-abc123", "");
  const kvx::CFileDescriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
  ASSERT_EQ(flock(file.Get(), LOCK_EX), 0);
  CTemporaryFile(target_).Commit();
  EXPECT_TRUE(fs::exists(name));
}

TEST_F(TemporaryFileTest, OfManyProcessesAtOnceAreAllCommitted) {
  std::vector<pid_t> children;
  for (int i = 0; i < 4; ++i) {
    children.push_back(fork());
    if (children.back() == 0) {
      const test::SError failure = test::ErrorOf([&] {
        for (int round = 0; round < 100; ++round) {
          CTemporaryFile file(target_);
          WriteByName(file, "whole");
          file.Commit();
        }
      });
      _exit(failure.code == 0 ? 0 : 1);
    }
  }
  for (const pid_t child : children) {
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(test::ReadFile(target_), "whole");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(TemporaryFileTest, IsCommittedInADirectoryThatMayBeWrittenToButNotRead) {
  directory_.Write("out", "earlier");
  ASSERT_TRUE(test::GiveToOtherUser(directory_.Path()));
  ASSERT_EQ(chmod(directory_.Path().c_str(), 0300), 0);
  EXPECT_EQ(test::MessageInChild(test::BecomeOtherUser,
                                 [&] {
                                   CTemporaryFile file(target_);
                                   WriteByName(file, "content");
                                   file.Commit();
                                 }),
            "nothing was thrown");
  ASSERT_EQ(chmod(directory_.Path().c_str(), 0700), 0);
  EXPECT_EQ(test::ReadFile(target_), "content");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

}  // namespace
