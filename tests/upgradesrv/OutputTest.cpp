#include "upgradesrv/Output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "UpgradeDirectory.h"
#include "upgradesrv/modules/Bytes.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using upgradesrv::TerminalText;

TEST(TerminalTextTest, KeepsPlainTextAndLineEnds) {
  const std::string text = "\n\nA line, \xE4\xB8\xAD\xE6\x96\x87 and \xC3\xA9 \xC2\xA0.\n no end";
  EXPECT_EQ(TerminalText(text), text);
  EXPECT_EQ(TerminalText(""), "");
  EXPECT_EQ(TerminalText("\n"), "\n");
}

TEST(TerminalTextTest, ShowsAsciiControlCharacters) {
  EXPECT_EQ(TerminalText("a\x1B[2Jb\x07"
                         "c\x7F"
                         "d\re\tf\x08g\n"),
            "a\\x1B[2Jb\\x07c\\x7Fd\\x0De\\tf\\x08g\n");
  EXPECT_EQ(TerminalText(std::string("a\0b", 3)), "a\\x00b");
}

TEST(TerminalTextTest, ShowsC1ControlCharacters) {
  EXPECT_EQ(TerminalText("a\xC2\x9B"
                         "2J\xC2\x80\n\xC2\x9F"),
            "a\\u009B2J\\u0080\n\\u009F");
}

TEST(TerminalTextTest, KeepsTheNeighboursOfC1ControlCharacters) {
  const std::string text = "\xC2\xA0 \xC3\x9B";
  EXPECT_EQ(TerminalText(text), text);
}

TEST(NotesTest, OfNotesIsOneLineEachWithoutControlCharacters) {
  testing::internal::CaptureStderr();
  upgradesrv::WriteNote(
      "a\nb\x1B[2J\xC2\x9B"
      "c");
  upgradesrv::WriteError("d\r");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "upgradesrv: a\\nb\\x1B[2J\\u009Bc\nupgradesrv: error: d\\x0D\n");
}

class OutputTest : public testing::Test {
 protected:
  /// Runs the executable with standard output to a pipe that its reader has closed.
  test::SProcessResult RunIntoAbandonedPipe(const std::string& arguments) {
    const std::string fifo = upgrade_.File("fifo");
    std::filesystem::remove(fifo);
    // Opened for both directions first, since opening one alone waits for the other.
    return test::RunInShell(
        "mkfifo '" + fifo + "' && exec 4<>'" + fifo + "' 5>'" + fifo + "' 4<&- && exec \"$0\" " + arguments + " >&5",
        upgrade_.Path());
  }

  test::CUpgradeDirectory upgrade_;
};

TEST_F(OutputTest, ToATerminalShowsControlCharactersAndToAPipeIsExact) {
  upgrade_.UseStranger("CSetsBytes");
  const std::string run = " run --module-dir '" UPGRADESRV_TEST_MODULE_DIRECTORY "' '" + upgrade_.Path() + "'";
  EXPECT_EQ(test::RunInShell("\"$0\"" + run + " | cat", "").output, kBytes);

  if (!std::filesystem::exists("/usr/bin/script")) {
    GTEST_SKIP() << "NOT TESTED: output to a terminal needs /usr/bin/script";
  }
  const test::SProcessResult terminal =
      test::Run({"/usr/bin/script", "-qec", UPGRADESRV_EXECUTABLE + run + " 2>/dev/null", "/dev/null"});
  EXPECT_EQ(terminal.status, 1);
  // The terminal itself turns each line end into two characters.
  EXPECT_EQ(terminal.output, "\\x1B[1m\\x0D\r\n\\x00\\t\\u009B2J\xE4\xB8\xAD\r\n end");
}

TEST_F(OutputTest, ToAFullDeviceIsTrouble) {
  EXPECT_EQ(test::TroubleOf(test::RunInShell("exec \"$0\" run \"$1\" >/dev/full", upgrade_.Path())),
            "standard output cannot be written: No space left on device");
  EXPECT_EQ(test::TroubleOf(test::RunInShell("exec \"$0\" --version >/dev/full", "")),
            "standard output cannot be written: No space left on device");
}

TEST_F(OutputTest, ToAClosedStreamIsTrouble) {
  EXPECT_EQ(test::TroubleOf(test::RunInShell("exec \"$0\" run \"$1\" >&-", upgrade_.Path())),
            "standard output cannot be written: Bad file descriptor");
  EXPECT_EQ(test::TroubleOf(test::RunInShell("exec \"$0\" --help >&-", "")),
            "standard output cannot be written: Bad file descriptor");
}

TEST_F(OutputTest, ToAPipeThatNobodyReadsEndsQuietlyWithTheStatusOfTheRun) {
  const test::SProcessResult run = RunIntoAbandonedPipe("run \"$1\"");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors, upgrade_.Notes() + upgrade_.CheckNotes("differences reported"));
  EXPECT_THAT(upgrade_.Document(), HasSubstr("deleted_classes"));

  const test::SProcessResult help = RunIntoAbandonedPipe("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.errors, "");

  const test::SProcessResult review = RunIntoAbandonedPipe("review \"$1\"");
  EXPECT_EQ(review.status, 1);
  EXPECT_EQ(review.errors, "");
}

TEST_F(OutputTest, ToAPipeThatNobodyReadsDoesNotStopTheChain) {
  const std::string record = upgrade_.File("record");
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "strangers", "class": "CTellsContext"},
      {"module": "recorder", "class": "C", "parameter": {"name": "next", "record": ")" +
                                            record + R"("}}])"}});
  EXPECT_EQ(RunIntoAbandonedPipe("run --module-dir '" UPGRADESRV_TEST_MODULE_DIRECTORY "' \"$1\"").status, 1);
  EXPECT_THAT(test::ReadFile(record), HasSubstr("invoked next"));
}

TEST_F(OutputTest, ToAClosedStreamDoesNotEndInAFileOfTheRun) {
  const std::string log = upgrade_.File("run.log");
  upgrade_.Write("log4cplus.properties",
                 "log4cplus.rootLogger=INFO, F\nlog4cplus.appender.F=log4cplus::FileAppender\n"
                 "log4cplus.appender.F.File=" +
                     log + "\nlog4cplus.appender.F.layout=log4cplus::SimpleLayout\n");
  EXPECT_EQ(test::RunInShell("exec \"$0\" run \"$1\" >&-", upgrade_.Path()).status, 2);
  EXPECT_EQ(test::ReadFile(log), "");
  const test::SProcessResult result = test::RunInShell("exec \"$0\" run \"$1\" 2>&-", upgrade_.Path());
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_EQ(test::ReadFile(log), "");
}

TEST_F(OutputTest, StopsTheChainWhenItFails) {
  const std::string record = upgrade_.File("record");
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "strangers", "class": "CTellsContext"},
      {"module": "recorder", "class": "C", "parameter": {"name": "never", "record": ")" +
                                            record + R"("}}])"}});
  EXPECT_EQ(
      test::TroubleOf(test::RunInShell(
          "exec \"$0\" run --module-dir '" UPGRADESRV_TEST_MODULE_DIRECTORY "' \"$1\" >/dev/full", upgrade_.Path())),
      "standard output cannot be written: No space left on device");
  EXPECT_FALSE(std::filesystem::exists(record));
}

}  // namespace
