// --timeout of every command that loads metamodels.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <string>
#include <vector>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::HasSubstr;

class TimeoutTest : public testing::Test {
 protected:
  TimeoutTest() { EXPECT_EQ(mkfifo(pipe_.c_str(), 0600), 0); }

  test::CUpgradeDirectory upgrade_;
  /// Nobody writes to it.
  const std::string pipe_ = upgrade_.File("pipe.json");
};

TEST_F(TimeoutTest, EndsTheLoadingOfEveryCommand) {
  upgrade_.WriteUpgrade({{"client_metamodel", R"("pipe.json")"}});
  const std::vector<std::vector<std::string>> commands = {
      {"run", upgrade_.Path()},
      {"review", upgrade_.Path()},
      {"decide", "--prune", upgrade_.Path()},
      {"metamodel", "show", pipe_},
      {"metamodel", "copy", pipe_, upgrade_.File("copy.json")},
  };
  upgrade_.Write("decisions.json", "{}");
  for (std::vector<std::string> command : commands) {
    command.insert(command.end(), {"--timeout", "0.2"});
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(test::TroubleOf(test::RunTool(command)),
                HasSubstr("pipe.json: cannot be read: the time allowed for loading is over"))
        << command.front();
    // Without it a pipe is waited for ten seconds.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(8));
  }
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_F(TimeoutTest, FailsTheFilesOfAReview) {
  upgrade_.WriteUpgrade({{"client_metamodel", R"("pipe.json")"}});
  upgrade_.Write("r.json", "of an earlier call");
  test::TroubleOf(
      test::RunTool({"review", "--timeout", "0.2", "-o", "json=" + upgrade_.File("r.json"), upgrade_.Path()}));
  EXPECT_THAT(test::ReadFile(upgrade_.File("r.json")), HasSubstr("\"complete\": false"));
  EXPECT_THAT(test::ReadFile(upgrade_.File("r.json")), HasSubstr("the time allowed for loading is over"));
}

TEST_F(TimeoutTest, IsForEverythingThatIsLoadedTogether) {
  upgrade_.WriteUpgrade({{"original_metamodel", R"("pipe.json")"}});
  // Half of the time is gone when the second metamodel is waited for; each alone would have had its turn.
  const auto begin = std::chrono::steady_clock::now();
  const test::SProcessResult result = test::RunInShell(
      "mkfifo \"$1/client.json\"; { sleep 1; cat \"$1/installation.json\"; } >\"$1/client.json\" & "
      "\"$0\" run --client \"$1/client.json\" --timeout 2 \"$1\"",
      upgrade_.Path());
  EXPECT_THAT(test::TroubleOf(result), HasSubstr("the time allowed for loading is over"));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(2900));
}

TEST_F(TimeoutTest, DoesNothingToWhatIsQuickEnough) {
  EXPECT_EQ(upgrade_.Run({"--timeout", "600"}).output, test::kFullReport);
  EXPECT_EQ(test::RunTool({"--timeout", "600", "run", upgrade_.Path()}).output, test::kFullReport);
}

TEST_F(TimeoutTest, IsANumberAboveZero) {
  for (const std::string seconds : {"0", "-1", "abc", "1s", "nan", "inf", "1e10", "0.0001", "0x10", " 1"}) {
    EXPECT_EQ(
        upgrade_.Trouble({"--timeout=" + seconds}),
        "--timeout: must be a number of seconds above 0, for example 60 or 0.5; run \"upgradesrv run --help\" for "
        "details");
  }
}

}  // namespace
