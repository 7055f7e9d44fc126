#include "kvxsptlog/Log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "support/LogCapture.h"

namespace {

using namespace std::string_literals;
using test::CLogCapture;
using test::SLogLine;
using testing::ElementsAre;

TEST(LogTest, EventCarriesLocationLoggerLevelAndMessage) {
  const CLogCapture log;
  CLog::Print("src/File.cpp", 42, "CCheck::Run", "errormsg", 40000, "class [Part] differs<hr=0xA4520005>");
  EXPECT_THAT(log.Lines(), ElementsAre(SLogLine{"src/File.cpp", 42, "CCheck::Run", "errormsg", 40000,
                                                "class [Part] differs<hr=0xA4520005>"}));
}

TEST(LogTest, EventsArriveInOrder) {
  const CLogCapture log;
  CLog::Print("a.cpp", 1, "A", "errormsg", 40000, "first");
  CLog::Print("a.cpp", 2, "A", "errormsg", 40000, "second");
  CLog::Print("a.cpp", 1, "A", "errormsg", 40000, "first");
  EXPECT_THAT(log.Messages(), ElementsAre("first", "second", "first"));
}

TEST(LogTest, LogNamesArrive) {
  const CLogCapture log;
  CLog::Print("a.cpp", 1, "A", "errormsg", 40000, "m");
  CLog::Print("a.cpp", 1, "A", "upgrade.run", 40000, "m");
  ASSERT_EQ(log.Lines().size(), 2U);
  EXPECT_EQ(log.Lines()[0].logName, "errormsg");
  EXPECT_EQ(log.Lines()[1].logName, "upgrade.run");
}

TEST(LogTest, LevelsArriveAsNumbers) {
  const CLogCapture log;
  for (const int level : {10000, 20000, 30000, 40000, 50000}) {
    CLog::Print("a.cpp", 1, "A", "errormsg", level, "m");
  }
  ASSERT_EQ(log.Lines().size(), 5U);
  EXPECT_EQ(log.Lines()[0].level, 10000);
  EXPECT_EQ(log.Lines()[4].level, 50000);
}

TEST(LogTest, NullFileAndFunctionCountAsEmpty) {
  const CLogCapture log;
  CLog::Print(nullptr, 0, nullptr, "errormsg", 40000, "m");
  EXPECT_THAT(log.Lines(), ElementsAre(SLogLine{"", 0, "", "errormsg", 40000, "m"}));
}

TEST(LogTest, MessageArrivesByteForByteButForControlCharacters) {
  const CLogCapture log;
  CLog::Print("a.cpp", 1, "A", "errormsg", 40000, "\u96F6\u4EF6 %s %n\n\t\0\x1B[2J \u202E after"s);
  EXPECT_THAT(log.Messages(), ElementsAre("\u96F6\u4EF6 %s %n\\n\\t\\x00\\x1B[2J \\u202E after"));
}

TEST(LogTest, ControlCharactersOfLocationAndLogNameAreVisible) {
  const CLogCapture log;
  CLog::Print("a\n.cpp", 1, "A\rB", "error\nmsg", 40000, "m");
  EXPECT_THAT(log.Lines(), ElementsAre(SLogLine{"a\\n.cpp", 1, "A\\x0DB", "error\\nmsg", 40000, "m"}));
}

TEST(LogTest, ErrorCountCountsErrorsAndWorseOnly) {
  const CLogCapture log;
  const std::size_t before = CLog::GetErrorCount();
  CLog::Print("a.cpp", 1, "A", "errormsg", 30000, "warning");
  CLog::Print("a.cpp", 1, "A", "errormsg", 39999, "nearly an error");
  EXPECT_EQ(CLog::GetErrorCount(), before);
  CLog::Print("a.cpp", 1, "A", "errormsg", 40000, "error");
  CLog::Print("a.cpp", 1, "A", "other", 50000, "fatal");
  EXPECT_EQ(CLog::GetErrorCount(), before + 2);
}

}  // namespace
