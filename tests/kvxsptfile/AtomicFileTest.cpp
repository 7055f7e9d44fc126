#include "kvxsptfile/AtomicFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptjson/JsonObject.h"
#include "support/Error.h"
#include "support/MessageInChild.h"
#include "support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;
using kvx::CAtomicFile;
using test::ErrorOf;
using test::SError;
using testing::ElementsAre;
using testing::IsEmpty;

void Save(const std::string& path, const std::string& content) {
  CAtomicFile file(path);
  file.Write(content.data(), content.size());
  file.Commit();
}

SError NotSaved(const std::string& path, const std::string& reason) {
  return {kvx::kFileError, path + ": cannot be saved: " + reason + "; nothing was changed"};
}

mode_t PermissionsOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777;
}

class CUmask {
 public:
  explicit CUmask(mode_t mask) : before_(umask(mask)) {}
  ~CUmask() { umask(before_); }
  CUmask(const CUmask&) = delete;
  CUmask& operator=(const CUmask&) = delete;

 private:
  mode_t before_;
};

class AtomicFileTest : public testing::Test {
 protected:
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory_.Path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  test::CTemporaryDirectory directory_;
};

TEST_F(AtomicFileTest, CommitCreatesTheFileAndLeavesNothingBeside) {
  Save(directory_.File("out"), "content");
  EXPECT_EQ(test::ReadFile(directory_.File("out")), "content");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(AtomicFileTest, CommitReplacesTheFileAndLeavesNothingBeside) {
  const std::string path = directory_.Write("out", "the old content, which is longer");
  Save(path, "new");
  EXPECT_EQ(test::ReadFile(path), "new");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(AtomicFileTest, CommitNewCreatesTheFileAndLeavesNothingBeside) {
  fs::create_symlink("out", directory_.File("link"));
  CAtomicFile file(directory_.File("link"));
  file.Put('x');
  EXPECT_TRUE(file.CommitNew());
  EXPECT_EQ(test::ReadFile(directory_.File("out")), "x");
  EXPECT_TRUE(fs::is_symlink(directory_.File("link")));
  EXPECT_EQ(Names().size(), 2U);
}

TEST_F(AtomicFileTest, CommitNewLeavesWhatIsThereAndNothingBeside) {
  const std::string path = directory_.File("out");
  for (const bool isEarly : {true, false}) {
    CAtomicFile file(isEarly ? directory_.Write("out", "old") : path);
    file.Put('x');
    directory_.Write("out", "old");
    EXPECT_FALSE(file.CommitNew());
    EXPECT_EQ(test::ReadFile(path), "old");
    fs::remove(path);
  }
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(AtomicFileTest, TargetIsUnchangedUntilCommit) {
  const std::string path = directory_.Write("out", "old");
  CAtomicFile file(path);
  const std::string content(200000, 'x');
  file.Write(content.data(), content.size());
  EXPECT_EQ(test::ReadFile(path), "old");
  file.Commit();
  EXPECT_EQ(test::ReadFile(path), content);
}

TEST_F(AtomicFileTest, NewTargetIsAbsentUntilCommit) {
  CAtomicFile file(directory_.File("out"));
  file.Put('x');
  EXPECT_FALSE(fs::exists(directory_.File("out")));
  file.Commit();
  EXPECT_EQ(test::ReadFile(directory_.File("out")), "x");
}

TEST_F(AtomicFileTest, ReaderOfTheOldFileKeepsReadingTheOldFile) {
  const std::string path = directory_.Write("out", "old");
  std::ifstream reader(path, std::ios::binary);
  Save(path, "new");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
}

TEST_F(AtomicFileTest, WithoutCommitTheTargetStaysAndNothingIsLeftBeside) {
  const std::string path = directory_.Write("out", "old");
  { CAtomicFile(path).Put('x'); }
  EXPECT_EQ(test::ReadFile(path), "old");
  EXPECT_THAT(Names(), ElementsAre("out"));
  { CAtomicFile(directory_.File("other")).Put('x'); }
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(AtomicFileTest, PiecesOfEverySizeAreWrittenInOrder) {
  CAtomicFile file(directory_.File("out"));
  std::string expected;
  char c = 'a';
  for (const std::size_t size : {0U, 1U, 65534U, 1U, 65536U, 3U, 65537U, 200000U, 65535U, 0U, 7U}) {
    const std::string piece(size, c);
    file.Write(piece.data(), piece.size());
    file.Put('|');
    expected += piece + '|';
    ++c;
  }
  file.Flush();
  file.Commit();
  EXPECT_TRUE(test::ReadFile(directory_.File("out")) == expected);
}

TEST_F(AtomicFileTest, FileOfManyMegabytesIsWritten) {
  std::string content;
  for (int i = 0; i < 3000000; ++i) {
    content += std::to_string(i);
  }
  CAtomicFile file(directory_.File("out"));
  for (std::size_t begin = 0; begin < content.size(); begin += 1000) {
    file.Write(content.data() + begin, std::min<std::size_t>(1000, content.size() - begin));
  }
  file.Commit();
  EXPECT_TRUE(test::ReadFile(directory_.File("out")) == content);
}

TEST_F(AtomicFileTest, RepeatedCharactersOfEveryNumberAreWrittenInOrder) {
  CAtomicFile file(directory_.File("out"));
  std::string expected;
  char c = 'a';
  for (const std::size_t count : {0U, 1U, 65534U, 2U, 65536U, 3U, 65537U, 200000U, 65535U, 0U, 7U}) {
    file.PutN(c, count);
    file.Put('|');
    expected += std::string(count, c) + '|';
    ++c;
  }
  file.Commit();
  EXPECT_TRUE(test::ReadFile(directory_.File("out")) == expected);
}

TEST_F(AtomicFileTest, EmptyFileCanBeSaved) {
  CAtomicFile(directory_.File("out")).Commit();
  EXPECT_EQ(test::ReadFile(directory_.File("out")), "");
}

TEST_F(AtomicFileTest, NameWithoutADirectoryIsSavedInTheCurrentOne) {
  const fs::path before = fs::current_path();
  fs::current_path(directory_.Path());
  Save("out", "content");
  fs::current_path(before);
  EXPECT_EQ(test::ReadFile(directory_.File("out")), "content");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(AtomicFileTest, NewFileHasThePermissionsThatTheUmaskLeaves) {
  {
    const CUmask mask(0027);
    Save(directory_.File("a"), "");
  }
  {
    const CUmask mask(0);
    Save(directory_.File("b"), "");
  }
  EXPECT_EQ(PermissionsOf(directory_.File("a")), 0640U);
  EXPECT_EQ(PermissionsOf(directory_.File("b")), 0666U);
}

TEST_F(AtomicFileTest, SymbolicLinkKeepsBeingOneAndItsTargetIsReplaced) {
  fs::create_directory(directory_.File("data"));
  const std::string target = directory_.Write("data/target", "old");
  fs::create_symlink("data/target", directory_.File("relative"));
  fs::create_symlink(target, directory_.File("absolute"));
  fs::create_symlink("relative", directory_.File("chain"));
  for (const char* name : {"relative", "absolute", "chain"}) {
    Save(directory_.File(name), name);
    EXPECT_TRUE(fs::is_symlink(directory_.File(name))) << name;
    EXPECT_FALSE(fs::is_symlink(target)) << name;
    EXPECT_EQ(test::ReadFile(target), name);
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(directory_.File("data")), {}), 1);
}

TEST_F(AtomicFileTest, SymbolicLinkToNothingYetGetsItsTarget) {
  fs::create_symlink("target", directory_.File("link"));
  Save(directory_.File("link"), "content");
  EXPECT_TRUE(fs::is_symlink(directory_.File("link")));
  EXPECT_EQ(test::ReadFile(directory_.File("target")), "content");
}

TEST_F(AtomicFileTest, SymbolicLinksInACircleAreRefused) {
  fs::create_symlink("b", directory_.File("a"));
  fs::create_symlink("a", directory_.File("b"));
  const std::string path = directory_.File("a");
  EXPECT_EQ(ErrorOf([&] { Save(path, "x"); }), NotSaved(path, "Too many levels of symbolic links"));
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(Names().size(), 2U);
}

TEST_F(AtomicFileTest, DirectoryThatDoesNotExistIsRefused) {
  const std::string path = directory_.File("absent/out");
  EXPECT_EQ(ErrorOf([&] { Save(path, "x"); }), NotSaved(path, "No such file or directory"));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(AtomicFileTest, DirectoryThatIsAFileIsRefused) {
  const std::string path = directory_.Write("file", "") + "/out";
  EXPECT_EQ(ErrorOf([&] { Save(path, "x"); }), NotSaved(path, "Not a directory"));
}

TEST_F(AtomicFileTest, EmptyPathIsRefused) {
  const fs::path before = fs::current_path();
  fs::current_path(directory_.Path());
  EXPECT_EQ(ErrorOf([] { Save("", "x"); }), NotSaved("", "No such file or directory"));
  fs::current_path(before);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(AtomicFileTest, TargetThatIsADirectoryIsRefusedAndKept) {
  const std::string path = directory_.File("dir");
  fs::create_directory(path);
  fs::create_symlink("dir", directory_.File("link"));
  EXPECT_EQ(ErrorOf([&] { Save(path, "x"); }), NotSaved(path, "Is a directory"));
  const std::string link = directory_.File("link");
  EXPECT_EQ(ErrorOf([&] { Save(link, "x"); }), NotSaved(link, "Is a directory"));
  EXPECT_TRUE(fs::is_directory(path));
  EXPECT_EQ(Names().size(), 2U);
}

TEST_F(AtomicFileTest, TargetThatIsNotARegularFileIsRefusedAndKept) {
  const std::string path = directory_.File("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_EQ(ErrorOf([&] { Save(path, "x"); }), NotSaved(path, "Not a regular file"));
  EXPECT_TRUE(fs::is_fifo(path));
  EXPECT_THAT(Names(), ElementsAre("pipe"));
}

TEST_F(AtomicFileTest, FailedRenameLeavesNothingBeside) {
  const std::string path = directory_.File("out");
  {
    CAtomicFile file(path);
    file.Put('x');
    fs::create_directory(path);
    EXPECT_EQ(ErrorOf([&] { file.Commit(); }), NotSaved(path, "Is a directory"));
  }
  EXPECT_TRUE(fs::is_directory(path));
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(AtomicFileTest, MessageShowsControlCharactersOfThePath) {
  EXPECT_EQ(ErrorOf([] { Save("absent\n/out", "x"); }), NotSaved("absent\\n/out", "No such file or directory"));
}

/// Runs `save` in a process of its own whose files cannot grow beyond `limit` bytes; answers with its error's message.
template <typename Action>
std::string MessageWithFileSizeLimit(rlim_t limit, const Action& save) {
  const auto prepare = [limit] {
    const rlimit limits{limit, limit};
    return std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && setrlimit(RLIMIT_FSIZE, &limits) == 0;
  };
  return test::MessageInChild(prepare, save);
}

TEST_F(AtomicFileTest, FailedWriteLeavesTheOldFileAndNothingBeside) {
  const std::string path = directory_.Write("out", "old");
  // What is larger than the buffer is written at once, what is smaller by Commit().
  for (const std::size_t size : {1001U, 200000U}) {
    EXPECT_EQ(MessageWithFileSizeLimit(1000, [&] { Save(path, std::string(size, 'x')); }),
              NotSaved(path, "File too large").message);
    EXPECT_EQ(test::ReadFile(path), "old");
    EXPECT_THAT(Names(), ElementsAre("out"));
  }
}

TEST_F(AtomicFileTest, FailedWriteOfANewFileLeavesNothing) {
  const std::string path = directory_.File("out");
  EXPECT_EQ(MessageWithFileSizeLimit(0, [&] { Save(path, "x"); }), NotSaved(path, "File too large").message);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(AtomicFileTest, FailedWriteOfSingleCharactersLeavesTheOldFile) {
  const std::string path = directory_.Write("out", "old");
  EXPECT_EQ(MessageWithFileSizeLimit(100000,
                                     [&] {
                                       CAtomicFile file(path);
                                       for (int i = 0; i < 200000; ++i) {
                                         file.Put('x');
                                       }
                                       file.Commit();
                                     }),
            NotSaved(path, "File too large").message);
  EXPECT_EQ(test::ReadFile(path), "old");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(AtomicFileTest, FailedSaveOfAJsonObjectLeavesTheOldFile) {
  const std::string path = directory_.Write("out", "old");
  CJsonObject object;
  object.SetStringValue("text", std::string(2000, 'x'));
  EXPECT_EQ(MessageWithFileSizeLimit(1000, [&] { object.SaveToFile(path); }), NotSaved(path, "File too large").message);
  EXPECT_EQ(test::ReadFile(path), "old");
  EXPECT_THAT(Names(), ElementsAre("out"));
}

TEST_F(AtomicFileTest, WriteThatJustFitsIsSaved) {
  const std::string path = directory_.File("out");
  EXPECT_EQ(MessageWithFileSizeLimit(1000, [&] { Save(path, std::string(1000, 'x')); }), "nothing was thrown");
  EXPECT_EQ(test::ReadFile(path), std::string(1000, 'x'));
}

}  // namespace
