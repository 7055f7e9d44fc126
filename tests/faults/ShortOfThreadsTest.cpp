// No thread can be had, as where a limit of processes is reached.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::HasSubstr;

constexpr const char* kToFile =
    "log4cplus.rootLogger=INFO, F\n"
    "log4cplus.appender.F=log4cplus::FileAppender\n"
    "log4cplus.appender.F.File=LOG\n"
    "log4cplus.appender.F.layout=log4cplus::SimpleLayout\n";

class CShortOfThreadsTest : public testing::Test {
 protected:
  /// Runs a command that begins after the executable's name. Which calls fail: "1+" for all, "" for none.
  test::SProcessResult Run(const std::string& which, const std::string& command) {
    std::filesystem::remove(report_.File("report"));
    return test::RunInShell("LD_PRELOAD='" UPGRADESRV_SHORTAGE_PRELOAD "' UPGRADESRV_SHORTAGE=thread:" + which +
                                ":0 UPGRADESRV_SHORTAGE_REPORT='" + report_.File("report") + "' exec \"$0\" " + command,
                            upgrade_.Path());
  }
  bool ThreadWasAskedFor() const { return std::filesystem::exists(report_.File("report")); }

  void LogToFile() const {
    upgrade_.Write("log4cplus.properties", test::Replaced(kToFile, "LOG", upgrade_.File("run.log")));
  }

  test::CUpgradeDirectory upgrade_;
  test::CTemporaryDirectory report_;
};

TEST_F(CShortOfThreadsTest, NoCommandAsksForOneThatItDoesNotNeed) {
  for (const std::string command :
       {"--version", "--help", "metamodel show \"$1/installation.json\"",
        "metamodel copy \"$1/installation.json\" \"$1/copy.json\"",
        "metamodel copy \"$1/installation.json\" \"$1/copy.db\"", "metamodel show \"$1/copy.db\""}) {
    const test::SProcessResult result = Run("1+", command);
    EXPECT_EQ(result.status, 0) << command << ": " << result.errors;
    EXPECT_EQ(result.errors, "");
    EXPECT_FALSE(ThreadWasAskedFor()) << command;
  }
}

TEST_F(CShortOfThreadsTest, RunReadsTheMetamodelsOneAfterTheOther) {
  const test::SProcessResult result = Run("1+", "run \"$1\"");
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_TRUE(ThreadWasAskedFor());
}

TEST_F(CShortOfThreadsTest, TerminalGetsNoProgress) {
  const test::SProcessResult result =
      test::Run({"/usr/bin/script", "-qec",
                 "LD_PRELOAD='" UPGRADESRV_SHORTAGE_PRELOAD
                 "' UPGRADESRV_SHORTAGE=thread:1+:0 TERM=xterm " UPGRADESRV_EXECUTABLE " metamodel show '" +
                     upgrade_.File("installation.json") + "'",
                 "/dev/null"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr("classes:    1 with 0 properties"));
}

TEST_F(CShortOfThreadsTest, LogThatNeedsThemIsRefusedByName) {
  LogToFile();
  // All of the four that log4cplus starts, or one of them.
  for (const char* which : {"1+", "3"}) {
    EXPECT_EQ(
        test::TroubleOf(Run(which, "run \"$1\"")),
        upgrade_.File("log4cplus.properties") +
            ": log4cplus, which the file configures, cannot be started; it needs 4 threads and some memory: allow "
            "more, or remove the file to log on standard error");
    EXPECT_TRUE(upgrade_.HasEarlierDocument());
  }
}

TEST_F(CShortOfThreadsTest, LogNeedsFour) {
  LogToFile();
  EXPECT_EQ(Run("5+", "run \"$1\"").status, 1);
  EXPECT_TRUE(ThreadWasAskedFor());
}

}  // namespace
