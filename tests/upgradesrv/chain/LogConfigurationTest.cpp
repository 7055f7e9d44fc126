// log4cplus.properties of the upgrade configuration directory.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class LogConfigurationTest : public testing::Test {
 protected:
  LogConfigurationTest() { upgrade_.UseStranger("CLogsError"); }

  void Configure(const std::string& text) const {
    upgrade_.Write("log4cplus.properties", test::Replaced(text, "LOG", upgrade_.File("run.log")));
  }

  test::CUpgradeDirectory upgrade_;
};

const std::string kToFile =
    "log4cplus.rootLogger=INFO, F\n"
    "log4cplus.appender.F=log4cplus::FileAppender\n"
    "log4cplus.appender.F.File=LOG\n"
    "log4cplus.appender.F.layout=log4cplus::PatternLayout\n"
    "log4cplus.appender.F.layout.ConversionPattern=%p [%c] %F:%L %M - %m%n\n";

TEST_F(LogConfigurationTest, SendsTheLogWhereItSays) {
  Configure(kToFile);
  const test::SProcessResult result = upgrade_.RunTestModules();
  EXPECT_EQ(test::ReadFile(upgrade_.File("run.log")),
            "ERROR [errormsg] stranger.cpp:12 CStranger::Invoke - the stranger's log line\n");
  EXPECT_THAT(result.errors, Not(HasSubstr("the stranger's log line")));
}

TEST_F(LogConfigurationTest, DoesNotHideALoggedErrorFromTheExitStatus) {
  Configure(kToFile);
  EXPECT_THAT(test::TroubleOf(upgrade_.RunTestModules()), HasSubstr("logged 1 error;"));
  Configure(test::Replaced(kToFile, "=INFO,", "=OFF,"));
  EXPECT_THAT(test::TroubleOf(upgrade_.RunTestModules()), HasSubstr("logged 1 error;"));
}

TEST_F(LogConfigurationTest, ThatConfiguresNoDestinationIsRefused) {
  for (const char* text : {"", "# nothing\n", "rootLogger=INFO, F\n"}) {
    Configure(text);
    EXPECT_EQ(upgrade_.TroubleWithTestModules(),
              upgrade_.File("log4cplus.properties") +
                  ": configures no log destination; name an appender for log4cplus.rootLogger, or remove the file to "
                  "log on standard error");
  }
}

TEST_F(LogConfigurationTest, ThatIsMissingLogsOnStandardError) {
  EXPECT_THAT(upgrade_.RunTestModules().errors, HasSubstr("ERROR stranger.cpp:12 "));
}

}  // namespace
