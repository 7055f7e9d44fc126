// "upgradesrv run --review": the review after the run.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class RunReviewTest : public testing::Test {
 protected:
  /// "FORMAT=FILE" below the directory.
  std::string Into(const std::string& format, const std::string& file) const {
    return format + "=" + upgrade_.File(file);
  }
  std::string Output(const std::string& file) const { return test::ReadFile(upgrade_.File(file)); }
  std::string ReviewCommand(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), "review");
    options.insert(options.end(), {"-o", "json", upgrade_.Path()});
    return test::RunTool(options).output;
  }

  /// Has the module "recorder" run after what `first` is; it appends to the file that `record` names.
  void UseRecorder(const std::string& first, const std::string& record) const {
    upgrade_.WriteUpgrade({{"strategies", "[" + first + R"({"module": "recorder", "class": "CRecorder",
      "parameter": {"name": "recorded", "record": ")" +
                                              upgrade_.File(record) + "\"}}]"}});
  }
  test::SProcessResult RunRecorder(std::vector<std::string> options) const {
    options.insert(options.end(), {"--module-dir", UPGRADESRV_TEST_MODULE_DIRECTORY});
    return upgrade_.Run(options);
  }

  test::CUpgradeDirectory upgrade_;
};

constexpr const char* kCheck = R"({"module": "checkmeta2024", "class": "CCheckMetaStrategy2024",
                                   "parameter": {"execute_elements": ["class", "link", "behavior"]}}, )";

TEST_F(RunReviewTest, IsWhatTheReviewCommandWrites) {
  upgrade_.Write("decisions.json", R"({"accepted": [{"path": "class/Document", "change": "deleted", "reason": "r"}]})");
  upgrade_.Write("base.json", Output("installation.json"));
  upgrade_.WriteUpgrade({{"base_metamodel", "\"base.json\""}});
  const test::SProcessResult result = upgrade_.Run({"--review", Into("json", "review.json")});
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_EQ(Output("review.json"), ReviewCommand());
  EXPECT_THAT(Output("review.json"), HasSubstr("\"accepted\":{"));
  EXPECT_THAT(Output("review.json"), HasSubstr("\"origin\":\"vendor\""));
}

TEST_F(RunReviewTest, TakesTheLanguageTheKindsAndTheMetamodelsOfTheRun) {
  const std::vector<std::string> options = {"--lang", "de",         "--elements",
                                            "link",   "--original", upgrade_.File("installation.json")};
  std::vector<std::string> run = options;
  run.insert(run.end(), {"--review", Into("json", "review.json"), "--review", Into("text", "review.txt")});
  EXPECT_EQ(upgrade_.Run(run).status, 0);
  EXPECT_EQ(Output("review.json"), ReviewCommand(options));
  EXPECT_THAT(Output("review.json"), HasSubstr("\"elements\": [\"link\"]"));
  EXPECT_THAT(Output("review.txt"), StartsWith("Ja. "));
}

TEST_F(RunReviewTest, ChangesNeitherStatusNorOutputNorDocument) {
  const test::SProcessResult alone = upgrade_.Run();
  const std::string document = upgrade_.Document();
  const test::SProcessResult result = upgrade_.Run({"--review", Into("html", "review.html")});
  EXPECT_EQ(result.status, alone.status);
  EXPECT_EQ(result.output, alone.output);
  EXPECT_EQ(result.errors, alone.errors);
  EXPECT_EQ(upgrade_.Document(), document);
  EXPECT_THAT(Output("review.html"), HasSubstr("class/Document"));
}

TEST_F(RunReviewTest, FindingsOfTheReviewAloneDoNotCount) {
  upgrade_.Write("installation.json", R"({"generation": 2024, "classes": [{"internal_name": "Own"}]})");
  upgrade_.Write("2024/metamodel.json", R"({"generation": 2024})");
  EXPECT_EQ(upgrade_.Run({"--review", Into("json", "review.json")}).status, 0);
  EXPECT_THAT(Output("review.json"), HasSubstr("class/Own"));
}

TEST_F(RunReviewTest, GoesToStandardOutputAfterTheReports) {
  const test::SProcessResult result = upgrade_.Run({"--review", "json"});
  EXPECT_EQ(result.output, test::kFullReport + ReviewCommand());
}

TEST_F(RunReviewTest, StandardOutputIsNeverReplacedByAFile) {
  const test::SProcessResult result =
      test::RunInShell("cd \"$1\"; exec \"$0\" run --review text=/dev/stdout . >out.txt", upgrade_.Path());
  EXPECT_THAT(test::TroubleOf(result), HasSubstr("--review text=/dev/stdout: the file is the command's own standard"));
  EXPECT_EQ(Output("out.txt"), "");
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_F(RunReviewTest, MetamodelsOfTheCheckAreNotReadAgain) {
  const std::string expected = ReviewCommand();
  for (const char* metamodel : {"installation.json", "2024/metamodel.json"}) {
    const std::string before = Output(metamodel);
    // What it appends makes the metamodel malformed.
    UseRecorder(kCheck, metamodel);
    const test::SProcessResult result = RunRecorder({"--review", Into("json", "review.json")});
    EXPECT_EQ(result.status, 1) << result.errors;
    EXPECT_THAT(Output(metamodel), HasSubstr("invoked recorded"));
    EXPECT_EQ(Output("review.json"), expected);
    upgrade_.Write(metamodel, before);
  }
}

TEST_F(RunReviewTest, MetamodelsThatNoStrategyHasLoadedAreLoaded) {
  UseRecorder("", "record");
  const test::SProcessResult result = RunRecorder({"--review", Into("json", "review.json")});
  EXPECT_EQ(result.output, "recorded\n") << result.errors;
  EXPECT_THAT(Output("review.json"), HasSubstr("class/Document"));
}

TEST_F(RunReviewTest, MetamodelFromAPipeIsReadOnce) {
  const std::string command =
      R"(cd "$1" && cat installation.json | "$0" run --client /dev/stdin --review json=review.json .)";
  std::filesystem::create_symlink("/dev/stdin", upgrade_.File("stdin.json"));
  const test::SProcessResult result =
      test::RunInShell(test::Replaced(command, "/dev/stdin", "stdin.json"), upgrade_.Path());
  EXPECT_EQ(result.output, test::kFullReport) << result.errors;
  EXPECT_THAT(Output("review.json"), HasSubstr("class/Document"));
}

TEST_F(RunReviewTest, WhatCannotBeGrantedIsRefusedBeforeAnythingRuns) {
  UseRecorder("", "record");
  const auto trouble = [this](const std::string& request) {
    return test::TroubleOf(RunRecorder({"--review", request}));
  };
  EXPECT_THAT(trouble("xml"), StartsWith("--review xml: unknown format; the formats are text, "));
  for (const std::string file :
       {"upgrade.json", "decisions.json", "installation.json", "2024/metamodel.json", "2024/checkMetaError.json",
        "multilanguage/strings/info.json", "log4cplus.properties"}) {
    EXPECT_EQ(trouble(Into("json", file)),
              "--review: the file " + upgrade_.File(file) + " is one that the review is made from; give another file");
  }
  const std::string module = UPGRADESRV_TEST_MODULE_DIRECTORY "/librecorder.so";
  EXPECT_THAT(trouble("json=" + module), StartsWith("--review: the file " + module));
  upgrade_.Write("decisions.json", "not JSON");
  EXPECT_THAT(trouble(Into("json", "review.json")), HasSubstr("decisions.json:1:2: "));
  EXPECT_FALSE(std::filesystem::exists(upgrade_.File("record")));
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_F(RunReviewTest, TroubleOfTheRunIsInTheFiles) {
  upgrade_.Write("review.json", "an earlier review");
  upgrade_.UseStranger("CThrowsRuntimeError");
  const std::string trouble = test::TroubleOf(RunRecorder({"--review", Into("json", "review.json")}));
  EXPECT_EQ(trouble, "a runtime error (strategy CThrowsRuntimeError of module strangers, /strategies/0)");
  EXPECT_THAT(Output("review.json"), HasSubstr("\"complete\": false"));
  EXPECT_THAT(Output("review.json"), HasSubstr(trouble));
}

TEST_F(RunReviewTest, ErrorThatAStrategyHasLoggedIsInTheFiles) {
  upgrade_.UseStranger("CLogsError");
  const test::SProcessResult result = RunRecorder({"--review", Into("json", "review.json")});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(Output("review.json"), HasSubstr("\"complete\": false"));
}

TEST_F(RunReviewTest, StrategyThatEndsTheProcessLeavesNoEarlierReview) {
  upgrade_.Write("review.json", "an earlier review");
  upgrade_.UseStranger("CEndsTheProcess");
  EXPECT_EQ(RunRecorder({"--review", Into("json", "review.json")}).status, 2);
  EXPECT_THAT(Output("review.json"), HasSubstr("\"complete\": false"));
  EXPECT_THAT(Output("review.json"), HasSubstr("the run did not end"));
}

TEST_F(RunReviewTest, CommandLineThatIsRefusedIsInTheFiles) {
  upgrade_.Write("review.json", "an earlier review");
  test::TroubleOf(upgrade_.Run({"--review", Into("json", "review.json"), "--elements", "klass"}));
  EXPECT_THAT(Output("review.json"), HasSubstr("\"complete\": false"));
}

TEST_F(RunReviewTest, FileThatCannotBeWrittenIsTroubleAfterTheReports) {
  const test::SProcessResult result = upgrade_.Run({"--review", Into("json", "none/review.json")});
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_THAT(test::ErrorOf(result), HasSubstr("none/review.json"));
}

}  // namespace
