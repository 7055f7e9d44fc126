#include "kvxsptfile/ReadFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptfile/FileDescriptor.h"
#include "kvxsptfile/LoadDeadline.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using test::ErrorOf;
using test::SError;

SError CannotBeRead(const std::string& path, const std::string& reason) {
  return {kvx::kFileError, path + ": cannot be read: " + reason};
}

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
      kvx::SReading reading;
      reading.padding = padding;
      const std::string text = kvx::ReadFile(path, reading);
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
  kvx::SReading reading;
  reading.padding = 64;
  const std::string text = kvx::ReadFile(path, reading);
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

TEST(ReadFileTest, NamesWhatCannotBeRead) {
  const test::CTemporaryDirectory directory;
  const std::string absent = directory.File("absent");
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(absent); }), CannotBeRead(absent, "No such file or directory"));
  const std::string below = directory.Write("file", "") + "/below";
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(below); }), CannotBeRead(below, "Not a directory"));
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(""); }), CannotBeRead("", "No such file or directory"));
}

TEST(ReadFileTest, CallsALinkThatLeadsNowhereALink) {
  const test::CTemporaryDirectory directory;
  const std::string link = directory.File("link");
  std::filesystem::create_symlink("absent\n", link);
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(link); }),
            CannotBeRead(link, "is a symbolic link to absent\\n, which leads nowhere"));
  directory.Write("absent\n", "text");
  EXPECT_EQ(kvx::ReadFile(link), "text");
}

TEST(ReadFileTest, RefusesWhatIsNoRegularFile) {
  const test::CTemporaryDirectory directory;
  const std::string& path = directory.Path();
  kvx::SReading reading;
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(path, reading); }), CannotBeRead(path, "is a directory, not a regular file"));
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile("/dev/zero", reading); }),
            CannotBeRead("/dev/zero", "is a device, not a regular file"));
  reading.mayBePipe = true;
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(path, reading); }),
            CannotBeRead(path, "is a directory, not a regular file or a pipe"));
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile("/dev/zero", reading); }),
            CannotBeRead("/dev/zero", "is a device, not a regular file or a pipe"));
}

TEST(ReadFileTest, RefusesASocket) {
  const test::CTemporaryDirectory directory;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = directory.File("socket");
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const kvx::CFileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
  ASSERT_EQ(bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(ErrorOf([&] { kvx::ReadFile(path); }), CannotBeRead(path, "is not a regular file"));
}

TEST(RequireRegularFileTest, AcceptsARegularFileAndALinkToOne) {
  const test::CTemporaryDirectory directory;
  const std::string path = directory.Write("file", "");
  EXPECT_EQ(symlink("file", directory.File("link").c_str()), 0);
  EXPECT_EQ(ErrorOf([&] { kvx::RequireRegularFile(path); }).code, 0U);
  EXPECT_EQ(ErrorOf([&] { kvx::RequireRegularFile(directory.File("link")); }).code, 0U);
}

TEST(RequireRegularFileTest, RefusesWhatReadFileRefuses) {
  const test::CTemporaryDirectory directory;
  EXPECT_EQ(ErrorOf([&] { kvx::RequireRegularFile(directory.File("absent")); }),
            CannotBeRead(directory.File("absent"), "No such file or directory"));
  EXPECT_EQ(ErrorOf([&] { kvx::RequireRegularFile("/dev/null"); }),
            CannotBeRead("/dev/null", "is a device, not a regular file"));
}

class ReadPipeTest : public testing::Test {
 protected:
  ReadPipeTest() {
    reading_.mayBePipe = true;
    EXPECT_EQ(mkfifo(path_.c_str(), 0600), 0);
  }
  ~ReadPipeTest() override { kvx::CLoadDeadline::Set(std::nullopt); }

  std::string Read() const { return kvx::ReadFile(path_, reading_); }
  SError ReadError() const {
    return ErrorOf([this] { Read(); });
  }
  /// Opens the pipe, so that it has a writer. It must have a reader.
  kvx::CFileDescriptor OpenToWrite() const { return kvx::CFileDescriptor(open(path_.c_str(), O_RDWR | O_CLOEXEC)); }

  test::CTemporaryDirectory directory_;
  std::string path_ = directory_.File("pipe");
  kvx::SReading reading_;
};

TEST_F(ReadPipeTest, GivesAllThatIsWritten) {
  reading_.padding = 64;
  const std::string content(300000, 'x');
  std::thread writer([&] { std::ofstream(path_, std::ios::binary) << content; });
  const std::string text = Read();
  writer.join();
  EXPECT_TRUE(text == content);
  EXPECT_GE(text.capacity(), text.size() + 64);
}

TEST_F(ReadPipeTest, WithoutANameGivesAllThatIsWritten) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const kvx::CFileDescriptor reader(ends[0]);
  kvx::CFileDescriptor writer(ends[1]);
  ASSERT_EQ(write(writer.Get(), "text", 4), 4);
  writer.Close();
  EXPECT_EQ(kvx::ReadFile("/dev/fd/" + std::to_string(reader.Get()), reading_), "text");
}

TEST_F(ReadPipeTest, ThatIsClosedUnwrittenGivesAnEmptyText) {
  std::thread writer([&] { std::ofstream(path_, std::ios::binary).flush(); });
  EXPECT_EQ(Read(), "");
  writer.join();
}

TEST_F(ReadPipeTest, WaitsForAWriterThatComesLateAndPauses) {
  reading_.pipeWait = {5s, 5s};
  std::thread writer([&] {
    std::this_thread::sleep_for(50ms);
    std::ofstream file(path_, std::ios::binary);
    file << "te" << std::flush;
    std::this_thread::sleep_for(50ms);
    file << "xt";
  });
  EXPECT_EQ(Read(), "text");
  writer.join();
}

TEST_F(ReadPipeTest, WithoutAWriterIsGivenUp) {
  reading_.pipeWait = {20ms, 1h};
  EXPECT_EQ(ReadError(), CannotBeRead(path_, "no program has opened this pipe for writing within 20 milliseconds"));
}

TEST_F(ReadPipeTest, WithASilentWriterIsGivenUpLater) {
  constexpr std::chrono::milliseconds kSilence(60);
  reading_.pipeWait = {1ms, kSilence};
  const kvx::CFileDescriptor writer = OpenToWrite();
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(ReadError(),
            CannotBeRead(path_, "the program that writes to this pipe has been silent for 60 milliseconds"));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, kSilence);
}

TEST_F(ReadPipeTest, WhoseWriterFallsSilentIsGivenUp) {
  reading_.pipeWait = {1ms, 20ms};
  const kvx::CFileDescriptor writer = OpenToWrite();
  ASSERT_EQ(write(writer.Get(), "part", 4), 4);
  EXPECT_EQ(ReadError(),
            CannotBeRead(path_, "the program that writes to this pipe has been silent for 20 milliseconds"));
}

TEST_F(ReadPipeTest, IsGivenUpAtTheDeadline) {
  reading_.pipeWait = {1h, 1h};
  kvx::CLoadDeadline::Set(20ms);
  EXPECT_EQ(ReadError(), CannotBeRead(path_, "the time allowed for loading is over; allow more time"));
  const kvx::CFileDescriptor writer = OpenToWrite();
  ASSERT_EQ(write(writer.Get(), "part", 4), 4);
  kvx::CLoadDeadline::Set(20ms);
  EXPECT_EQ(ReadError(), CannotBeRead(path_, "the time allowed for loading is over; allow more time"));
}

TEST_F(ReadPipeTest, IsWaitedForUntilTheDeadlineAndNoLess) {
  reading_.pipeWait = {1ms, 1ms};
  kvx::CLoadDeadline::Set(10s);
  std::thread writer([&] {
    std::this_thread::sleep_for(50ms);
    std::ofstream(path_, std::ios::binary) << "text";
  });
  EXPECT_EQ(Read(), "text");
  writer.join();
}

TEST_F(ReadPipeTest, IsRefusedAtOnceWhereOnlyARegularFileIsAllowed) {
  reading_.mayBePipe = false;
  EXPECT_EQ(ReadError(), CannotBeRead(path_, "is a pipe, not a regular file"));
}

}  // namespace
