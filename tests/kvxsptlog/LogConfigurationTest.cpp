#include <gtest/gtest.h>
#include <log4cplus/hierarchy.h>
#include <log4cplus/logger.h>

#include <cstddef>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptlog/Log.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace std::string_literals;
using test::ErrorOf;
using test::SError;

class LogConfigurationTest : public testing::Test {
 protected:
  ~LogConfigurationTest() override { CLog::Configure(directory_.File("none.properties")); }

  /// A properties file that sends ERROR and worse to `destination` as "LEVEL|LOGGER|FILE|LINE|FUNCTION|MESSAGE".
  std::string WriteProperties(const std::string& name, const std::string& destination) const {
    return directory_.Write(name,
                            "log4cplus.rootLogger=ERROR, FILE\n"
                            "log4cplus.appender.FILE=log4cplus::FileAppender\n"
                            "log4cplus.appender.FILE.File=" +
                                destination +
                                "\n"
                                "log4cplus.appender.FILE.ImmediateFlush=true\n"
                                "log4cplus.appender.FILE.layout=log4cplus::PatternLayout\n"
                                "log4cplus.appender.FILE.layout.ConversionPattern=%p|%c|%F|%L|%M|%m%n\n");
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

TEST_F(LogConfigurationTest, DefaultShowsWarningsAndWorseWithTheirLevel) {
  CLog::Configure(directory_.File("log4cplus.properties"));
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 30000, "m"), "WARN a.cpp:12 A - m\n");
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 50000, "m"), "FATAL a.cpp:12 A - m\n");
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
  log4cplus::Logger::getDefaultHierarchy().resetConfiguration();
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

TEST_F(LogConfigurationTest, DirectoryInPlaceOfTheFileThrows) {
  EXPECT_EQ(ConfigurationError(directory_.Path()), NoDestination(directory_.Path()));
}

TEST_F(LogConfigurationTest, EventAfterAFailedConfigurationIsNotLost) {
  const std::string path = directory_.Write("log4cplus.properties", "");
  EXPECT_EQ(ConfigurationError(path), NoDestination(path));
  EXPECT_EQ(PrintedToStandardError("a.cpp", "A", 40000, "m"), "ERROR a.cpp:12 A - m\n");
}

}  // namespace
