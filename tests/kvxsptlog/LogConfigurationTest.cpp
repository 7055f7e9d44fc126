#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptlog/Log.h"
#include "kvxsptlog/LogDestination.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace std::string_literals;
using test::ErrorOf;
using test::SError;
using testing::HasSubstr;

class LogConfigurationTest : public testing::Test {
 protected:
  ~LogConfigurationTest() override { CLog::Configure(directory_.File("none.properties")); }

  /// A properties file that sends ERROR and worse to `destination` as "LEVEL|LOGGER|FILE|LINE|FUNCTION|MESSAGE". A line
  /// of `more` replaces an earlier one of the same key.
  std::string WriteProperties(const std::string& name, const std::string& destination,
                              const std::string& more = "") const {
    return directory_.Write(name,
                            "log4cplus.rootLogger=ERROR, FILE\n"
                            "log4cplus.appender.FILE=log4cplus::FileAppender\n"
                            "log4cplus.appender.FILE.File=" +
                                destination +
                                "\n"
                                "log4cplus.appender.FILE.ImmediateFlush=true\n"
                                "log4cplus.appender.FILE.layout=log4cplus::PatternLayout\n"
                                "log4cplus.appender.FILE.layout.ConversionPattern=%p|%c|%F|%L|%M|%m%n\n" +
                                more);
  }

  /// What the default destination gets of one event.
  static std::string PrintedToStandardError(const char* file, const char* function, int level,
                                            const std::string& message) {
    testing::internal::CaptureStderr();
    CLog::Print(file, 12, function, "errormsg", level, message);
    return testing::internal::GetCapturedStderr();
  }

  test::CTemporaryDirectory directory_;
};

TEST_F(LogConfigurationTest, MissingFileGivesOneLinePerEventOnStandardError) {
  CLog::Configure(directory_.File("log4cplus.properties"));
  EXPECT_EQ(PrintedToStandardError("src/File.cpp", "CCheck::Run", 40000, "class [Part] differs"),
            "ERROR src/File.cpp:12 CCheck::Run - class [Part] differs\n");
}

TEST_F(LogConfigurationTest, DefaultShowsEveryLevelByItsName) {
  CLog::Configure(directory_.File("log4cplus.properties"));
  const std::pair<int, std::string> levels[] = {{0, "TRACE"},     {10000, "DEBUG"}, {20000, "INFO"}, {30000, "WARN"},
                                                {40000, "ERROR"}, {50000, "FATAL"}, {39999, "39999"}};
  for (const auto& [number, name] : levels) {
    EXPECT_EQ(PrintedToStandardError("a.cpp", "A", number, "m"), name + " a.cpp:12 A - m\n");
  }
}

TEST_F(LogConfigurationTest, DefaultLeavesStandardOutputAlone) {
  CLog::Configure(directory_.File("log4cplus.properties"));
  testing::internal::CaptureStdout();
  PrintedToStandardError("a.cpp", "A", 40000, "m");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(LogConfigurationTest, DefaultMakesControlCharactersOfTheMessageVisible) {
  CLog::Configure(directory_.File("log4cplus.properties"));
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "one\ntwo\tthree\r\x1B[31m \0 \u96F6"s),
            "ERROR a.cpp:12 A - one\\ntwo\\tthree\\x0D\\x1B[31m \\x00 \u96F6\n");
}

TEST_F(LogConfigurationTest, DefaultMakesControlCharactersOfTheLocationVisible) {
  CLog::Configure(directory_.File("log4cplus.properties"));
  EXPECT_EQ(PrintedToStandardError("a\n.cpp", "A\nERROR b.cpp:1 B - forged", 40000, "m"),
            "ERROR a\\n.cpp:12 A\\nERROR b.cpp:1 B - forged - m\n");
}

TEST_F(LogConfigurationTest, EventBeforeAnyConfigurationGoesToStandardError) {
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "m"), "ERROR a.cpp:12 A - m\n");
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "again"), "ERROR a.cpp:12 A - again\n");
}

TEST_F(LogConfigurationTest, PropertiesFileDecidesTheDestinationAndLayout) {
  CLog::Configure(WriteProperties("log4cplus.properties", directory_.File("out.log")));
  EXPECT_EQ(PrintedToStandardError("src/File.cpp", "CCheck::Run", 40000, "differs"), "");
  EXPECT_EQ(test::ReadFile(directory_.File("out.log")), "ERROR|errormsg|src/File.cpp|12|CCheck::Run|differs\n");
}

TEST_F(LogConfigurationTest, EventsThatThePropertiesFileHidesAreCountedAllTheSame) {
  const std::string properties = directory_.Write("log4cplus.properties",
                                                  "log4cplus.rootLogger=FATAL, FILE\n"
                                                  "log4cplus.appender.FILE=log4cplus::FileAppender\n"
                                                  "log4cplus.appender.FILE.File=" +
                                                      directory_.File("out.log") + "\n");
  CLog::Configure(properties);
  const std::size_t before = CLog::GetErrorCount();
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "m"), "");
  EXPECT_EQ(test::ReadFile(directory_.File("out.log")), "");
  EXPECT_EQ(CLog::GetErrorCount(), before + 1);
}

TEST_F(LogConfigurationTest, AppenderOfOneLoggerIsADestination) {
  const std::string properties = directory_.Write("log4cplus.properties",
                                                  "log4cplus.logger.errormsg=ERROR, FILE\n"
                                                  "log4cplus.appender.FILE=log4cplus::FileAppender\n"
                                                  "log4cplus.appender.FILE.File=" +
                                                      directory_.File("out.log") +
                                                      "\n"
                                                      "log4cplus.appender.FILE.ImmediateFlush=true\n"
                                                      "log4cplus.appender.FILE.layout=log4cplus::PatternLayout\n"
                                                      "log4cplus.appender.FILE.layout.ConversionPattern=%m%n\n");
  CLog::Configure(properties);
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "m"), "");
  EXPECT_EQ(test::ReadFile(directory_.File("out.log")), "m\n");
}

TEST_F(LogConfigurationTest, LaterConfigurationReplacesTheEarlier) {
  CLog::Configure(WriteProperties("first.properties", directory_.File("first.log")));
  CLog::Configure(WriteProperties("second.properties", directory_.File("second.log")));
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "m"), "");
  EXPECT_EQ(test::ReadFile(directory_.File("first.log")), "");
  EXPECT_EQ(test::ReadFile(directory_.File("second.log")), "ERROR|errormsg|a.cpp|12|A|m\n");

  CLog::Configure(directory_.File("none.properties"));
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "m"), "ERROR a.cpp:12 A - m\n");
  EXPECT_EQ(test::ReadFile(directory_.File("second.log")), "ERROR|errormsg|a.cpp|12|A|m\n");
}

/// The error for a properties file of that content; what the log library itself prints is swallowed.
SError ConfigurationError(const std::string& path) {
  testing::internal::CaptureStderr();
  const SError error = ErrorOf([&path] { CLog::Configure(path); });
  testing::internal::GetCapturedStderr();
  return error;
}

SError NoDestination(const std::string& path) {
  return {kvx::kFileError, path +
                               ": configures no log destination; name an appender for log4cplus.rootLogger, or remove "
                               "the file to log on standard error"};
}

TEST_F(LogConfigurationTest, EmptyFileThrows) {
  const std::string path = directory_.Write("log4cplus.properties", "");
  EXPECT_EQ(ConfigurationError(path), NoDestination(path));
}

TEST_F(LogConfigurationTest, FileThatNamesNoAppenderThrows) {
  const std::string path = directory_.Write("log4cplus.properties", "log4cplus.rootLogger=ERROR\n");
  EXPECT_EQ(ConfigurationError(path), NoDestination(path));
}

TEST_F(LogConfigurationTest, FileThatNamesAnUnknownAppenderThrows) {
  const std::string path = directory_.Write("log4cplus.properties",
                                            "log4cplus.rootLogger=ERROR, A\n"
                                            "log4cplus.appender.A=log4cplus::NoSuchAppender\n");
  EXPECT_EQ(ConfigurationError(path), NoDestination(path));
}

TEST_F(LogConfigurationTest, FileThatCannotBeReadThrows) {
  EXPECT_EQ(ConfigurationError(directory_.Path()),
            (SError{kvx::kFileError, directory_.Path() + ": cannot be read: is a directory, not a regular file"}));
  EXPECT_THAT(ConfigurationError(std::string(300, 'x')).message, HasSubstr(": cannot be read: File name too long"));
}

TEST_F(LogConfigurationTest, FilesAreAppendedTo) {
  const std::string log = directory_.File("out.log");
  for (const std::string kind : {"FileAppender", "RollingFileAppender", "DailyRollingFileAppender"}) {
    directory_.Write("out.log", "earlier\n");
    CLog::Configure(WriteProperties("log4cplus.properties", log, "log4cplus.appender.FILE=log4cplus::" + kind + "\n"));
    CLog::Print("a.cpp", 12, "A", "errormsg", 40000, "m");
    EXPECT_EQ(test::ReadFile(log), "earlier\nERROR|errormsg|a.cpp|12|A|m\n") << kind;
  }
}

TEST_F(LogConfigurationTest, FileWithinAnAsyncAppenderIsAppendedTo) {
  const std::string log = directory_.Write("out.log", "earlier\n");
  CLog::Configure(directory_.Write("log4cplus.properties",
                                   "log4cplus.rootLogger=ERROR, A\n"
                                   "log4cplus.appender.A=log4cplus::AsyncAppender\n"
                                   "log4cplus.appender.A.Appender=log4cplus::FileAppender\n"
                                   "log4cplus.appender.A.Appender.File=" +
                                       log +
                                       "\nlog4cplus.appender.A.Appender.layout=log4cplus::PatternLayout\n"
                                       "log4cplus.appender.A.Appender.layout.ConversionPattern=%m%n\n"));
  CLog::Print("a.cpp", 12, "A", "errormsg", 40000, "m");
  CLog::SetDestination(nullptr);
  EXPECT_EQ(test::ReadFile(log), "earlier\nm\n");
}

TEST_F(LogConfigurationTest, FileWhoseAppenderIsToldNotToAppendIsEmptied) {
  const std::string log = directory_.Write("out.log", "earlier\n");
  CLog::Configure(WriteProperties("log4cplus.properties", log, "log4cplus.appender.FILE.Append=false\n"));
  CLog::Print("a.cpp", 12, "A", "errormsg", 40000, "m");
  EXPECT_EQ(test::ReadFile(log), "ERROR|errormsg|a.cpp|12|A|m\n");
}

TEST_F(LogConfigurationTest, NoLayoutLetsAnEventBeginALineOfItsOwn) {
  const std::string log = directory_.File("out.log");
  CLog::Configure(
      WriteProperties("log4cplus.properties", log, "log4cplus.appender.FILE.layout.ConversionPattern=%F %M - %m%n\n"));
  CLog::Print("a\nb.cpp", 12, "A\nforged", "errormsg", 40000, "one\nERROR forged\r\x1B[2J");
  EXPECT_EQ(test::ReadFile(log), "a\\nb.cpp A\\nforged - one\\nERROR forged\\x0D\\x1B[2J\n");
}

TEST_F(LogConfigurationTest, EachLogNameIsALoggerOfItsOwn) {
  const std::string log = directory_.File("out.log");
  CLog::Configure(WriteProperties("log4cplus.properties", log, "log4cplus.logger.silent=OFF\n"));
  CLog::Print("a.cpp", 12, "A", "silent", 40000, "m");
  CLog::Print("a.cpp", 12, "A", "upgrade.run", 40000, "m");
  EXPECT_EQ(test::ReadFile(log), "ERROR|upgrade.run|a.cpp|12|A|m\n");
}

TEST_F(LogConfigurationTest, EventAfterAFailedConfigurationIsNotLost) {
  const std::string path = directory_.Write("log4cplus.properties", "");
  EXPECT_EQ(ConfigurationError(path), NoDestination(path));
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "m"), "ERROR a.cpp:12 A - m\n");
}

}  // namespace
