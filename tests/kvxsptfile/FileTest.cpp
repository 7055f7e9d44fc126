#include "kvxsptfile/File.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/stat.h>

#include <cstddef>
#include <fstream>
#include <string>
#include <thread>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace std::string_literals;
using test::ErrorOf;
using test::SError;

TEST(ReadFileTest, GivesEveryByte) {
  const test::CTemporaryDirectory directory;
  const std::string content = "\xEF\xBB\xBF a\0b\r\n\xFF"s;
  EXPECT_EQ(kvx::ReadFile(directory.Write("file", content)), content);
}

TEST(ReadFileTest, EmptyFileGivesAnEmptyText) {
  const test::CTemporaryDirectory directory;
  EXPECT_EQ(kvx::ReadFile(directory.Write("file", "")), "");
}

TEST(ReadFileTest, LeavesRoomForThePaddingBehindTheText) {
  const test::CTemporaryDirectory directory;
  for (const std::size_t size : {0U, 1U, 100U, 65536U, 1048576U, 3000000U}) {
    const std::string path = directory.Write("file", std::string(size, 'x'));
    for (const std::size_t padding : {0U, 1U, 64U, 100000U}) {
      const std::string text = kvx::ReadFile(path, padding);
      EXPECT_EQ(text.size(), size);
      EXPECT_GE(text.capacity(), size + padding) << size << " " << padding;
    }
  }
}

TEST(ReadFileTest, FillsThePaddingWithZeros) {
  const test::CTemporaryDirectory directory;
  const std::string path = directory.Write("file", "text");
  // New memory is then filled with something else.
  if (mallopt(M_PERTURB, 0x5A) != 1) {
    GTEST_SKIP() << "NOT TESTED: the allocator of this build cannot be told to fill new memory";
  }
  const std::string text = kvx::ReadFile(path, 64);
  mallopt(M_PERTURB, 0);
  ASSERT_GE(text.capacity(), text.size() + 64);
  EXPECT_EQ(std::string(text.data() + text.size(), 64), std::string(64, '\0'));
}

TEST(ReadFileTest, ReadsALargeFileWhole) {
  const test::CTemporaryDirectory directory;
  std::string content;
  for (int i = 0; content.size() < 5000000; ++i) {
    content += std::to_string(i) + "\n";
  }
  EXPECT_TRUE(kvx::ReadFile(directory.Write("file", content)) == content);
}

TEST(ReadFileTest, ReadsAPipeWhichHasNoSize) {
  const test::CTemporaryDirectory directory;
  const std::string path = directory.File("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const std::string content(300000, 'x');
  std::thread writer([&] { std::ofstream(path, std::ios::binary) << content; });
  const std::string text = kvx::ReadFile(path, 64);
  writer.join();
  EXPECT_TRUE(text == content);
  EXPECT_GE(text.capacity(), text.size() + 64);
}

TEST(ReadFileTest, NamesWhatCannotBeRead) {
  const test::CTemporaryDirectory directory;
  const std::string absent = directory.File("absent");
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(absent); }),
            (SError{kvx::kFileError, absent + ": cannot be read: No such file or directory"}));
  const std::string below = directory.Write("file", "") + "/below";
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(below); }),
            (SError{kvx::kFileError, below + ": cannot be read: Not a directory"}));
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(directory.Path()); }),
            (SError{kvx::kFileError, directory.Path() + ": cannot be read: Is a directory"}));
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(""); }),
            (SError{kvx::kFileError, ": cannot be read: No such file or directory"}));
}

std::string PlaceOf(const std::string& text, std::size_t offset) {
  return kvx::LineAndColumn(text.data(), offset);
}

TEST(LineAndColumnTest, BothCountFromOne) {
  EXPECT_EQ(PlaceOf("abc", 0), "1:1");
  EXPECT_EQ(PlaceOf("abc", 2), "1:3");
  EXPECT_EQ(PlaceOf("abc", 3), "1:4");
  EXPECT_EQ(PlaceOf("", 0), "1:1");
}

TEST(LineAndColumnTest, LineEndBelongsToItsLine) {
  EXPECT_EQ(PlaceOf("a\nb\n\nc", 1), "1:2");
  EXPECT_EQ(PlaceOf("a\nb\n\nc", 2), "2:1");
  EXPECT_EQ(PlaceOf("a\nb\n\nc", 4), "3:1");
  EXPECT_EQ(PlaceOf("a\nb\n\nc", 5), "4:1");
}

TEST(LineAndColumnTest, ColumnsCountCharacters) {
  // One, two, three and four bytes.
  const std::string text = "a\u00E9\u96F6\U0001F600b";
  EXPECT_EQ(PlaceOf(text, 1), "1:2");
  EXPECT_EQ(PlaceOf(text, 3), "1:3");
  EXPECT_EQ(PlaceOf(text, 6), "1:4");
  EXPECT_EQ(PlaceOf(text, 10), "1:5");
}

}  // namespace
