// The result of a run never takes the place of what the run reads, whatever checkMetaError.json is a link to.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

const std::string kModules = UPGRADESRV_MODULE_DIRECTORY;

class RunInputsTest : public testing::TestWithParam<const char*> {
 protected:
  RunInputsTest() {
    upgrade_.Write("log4cplus.properties",
                   "log4cplus.rootLogger=INFO, A\nlog4cplus.appender.A=log4cplus::ConsoleAppender\n"
                   "log4cplus.appender.A.logToStdErr=true\n");
    fs::create_directory(upgrade_.File("modules"));
    fs::copy(kModules + "/libcheckmeta2024.so", upgrade_.File("modules"));
    const test::SProcessResult copy =
        test::RunTool({"metamodel", "copy", upgrade_.File("installation.json"), upgrade_.File("client.db")});
    EXPECT_EQ(copy.status, 0) << copy.errors;
    fs::remove(result_);
  }

  test::SProcessResult Run() const {
    return upgrade_.Run({"--module-dir", upgrade_.File("modules"), "--client", upgrade_.File(Client())});
  }
  std::string Client() const { return GetParam() == std::string("client.db") ? "client.db" : "installation.json"; }
  std::string Input() const { return upgrade_.File(GetParam()); }
  void ExpectRefused() const {
    const std::string before = test::ReadFile(Input());
    EXPECT_THAT(test::TroubleOf(Run()), HasSubstr(result_ + ": cannot be saved: it is the same file as " + Input() +
                                                  ", which is read here; nothing was changed"));
    EXPECT_TRUE(test::ReadFile(Input()) == before);
  }

  test::CUpgradeDirectory upgrade_;
  std::string result_ = upgrade_.File("2024/checkMetaError.json");
};

TEST_P(RunInputsTest, IsNotReplacedThroughASymbolicLink) {
  fs::create_symlink(Input(), result_);
  ExpectRefused();
  EXPECT_TRUE(fs::is_symlink(result_));
}

TEST_P(RunInputsTest, IsNotReplacedThroughASecondName) {
  fs::create_hard_link(Input(), result_);
  ExpectRefused();
  EXPECT_EQ(fs::hard_link_count(result_), 2U);
}

TEST_P(RunInputsTest, DoesNotHinderARunWhoseResultIsElsewhere) {
  const test::SProcessResult result = Run();
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_TRUE(fs::is_regular_file(result_));
}

INSTANTIATE_TEST_SUITE_P(Files, RunInputsTest,
                         testing::Values("upgrade.json", "multilanguage/strings/info.json", "log4cplus.properties",
                                         "2024/metamodel.json", "installation.json", "client.db",
                                         "modules/libcheckmeta2024.so"),
                         [](const auto& test) {
                           std::string name;
                           for (const char c : std::string(test.param)) {
                             if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
                               name += c;
                             }
                           }
                           return name;
                         });

}  // namespace
