#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// Part.Code is longer here than shipped, and Part has a property of its own.
constexpr const char* kClient = R"({"generation": 2024, "classes": [{"internal_name": "Part", "properties": [
  {"internal_name": "Code", "type": "string", "length": 48}, {"internal_name": "Own", "type": "string"}]}]})";
constexpr const char* kOriginal = R"({"generation": 2024, "classes": [{"internal_name": "Part", "properties": [
  {"internal_name": "Code", "type": "string", "length": 32}]}]})";
constexpr const char* kBoth =
    R"({"accepted": [{"path": "class/Part/property/Code/length", "change": "changed", "original": 32, "client": 48,
        "reason": "r"}, {"path": "class/Part/property/Own", "change": "inserted", "reason": "r"}]})";

class ReviewCommandTest : public testing::Test {
 protected:
  ReviewCommandTest() {
    upgrade_.Write("installation.json", kClient);
    upgrade_.Write("2024/metamodel.json", kOriginal);
  }

  test::SProcessResult Review(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), "review");
    options.push_back(upgrade_.Path());
    return test::RunTool(options);
  }
  std::string Trouble(const std::vector<std::string>& options) const { return test::TroubleOf(Review(options)); }
  /// "FORMAT=FILE" below the directory.
  std::string Into(const std::string& format, const std::string& file) const {
    return format + "=" + upgrade_.File(file);
  }
  std::string Output(const std::string& file) const { return test::ReadFile(upgrade_.File(file)); }

  test::CUpgradeDirectory upgrade_;
};

TEST_F(ReviewCommandTest, SaysWhatEachDifferenceMeansAndEndsWithOne) {
  const test::SProcessResult result = Review();
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output, StartsWith("Not yet. One difference has to be decided first.\n"));
  EXPECT_THAT(result.output, HasSubstr("The upgrade shortens Code from 48 to 32 characters."));
}

TEST_F(ReviewCommandTest, EndsWithZeroWhereNothingDiffers) {
  EXPECT_EQ(Review({"--client", upgrade_.File("2024/metamodel.json")}).status, 0);
}

TEST_F(ReviewCommandTest, FailOnChoosesTheLeastBadRiskThatCounts) {
  EXPECT_EQ(Review({"--fail-on", "loss"}).status, 1);
  EXPECT_EQ(Review({"--fail-on", "never"}).status, 0);
  upgrade_.Write("2024/metamodel.json", test::Replaced(kOriginal, "32", "64"));
  EXPECT_EQ(Review({"--fail-on", "attention"}).status, 0);
  EXPECT_EQ(Review({"--fail-on", "safe"}).status, 1);
  EXPECT_EQ(Review().status, 1);
}

TEST_F(ReviewCommandTest, WhatFailsATestServerIsWhatCounts) {
  EXPECT_THAT(Review({"--fail-on", "loss", "-o", "junit"}).output, HasSubstr(" failures=\"1\" "));
  EXPECT_THAT(Review({"--fail-on", "never", "-o", "junit"}).output, HasSubstr(" failures=\"0\" "));
}

TEST_F(ReviewCommandTest, AcceptedFindingsNeverCount) {
  upgrade_.Write("decisions.json", kBoth);
  EXPECT_EQ(Review().status, 0);
}

TEST_F(ReviewCommandTest, DecisionsCanBeInAnotherFile) {
  const std::string file = upgrade_.Write("other.json", kBoth);
  EXPECT_EQ(Review({"--decisions", file}).status, 0);
  EXPECT_THAT(Trouble({"--decisions", upgrade_.File("none.json")}), HasSubstr("none.json: cannot be read: "));
}

TEST_F(ReviewCommandTest, TodayDecidesWhatHasExpired) {
  upgrade_.Write("decisions.json",
                 test::Replaced(kBoth, "\"reason\": \"r\"", R"("reason": "r", "until": "2026-06-30")"));
  EXPECT_EQ(Review({"--today", "2026-06-30"}).status, 0);
  EXPECT_EQ(Review({"--today", "2026-07-01"}).status, 1);
  EXPECT_EQ(Trouble({"--today", "1.7.2026"}), "--today: \"1.7.2026\" is not a day; write YYYY-MM-DD");
}

TEST_F(ReviewCommandTest, BaseTellsWhoMadeADifference) {
  upgrade_.Write("base.json", kClient);
  const std::vector<std::string> json = {"-o", "json"};
  EXPECT_THAT(Review(json).output, HasSubstr("\"origin\":\"unknown\""));
  EXPECT_THAT(Review({"-o", "json", "--base", upgrade_.File("base.json")}).output, HasSubstr("\"origin\":\"vendor\""));
  upgrade_.WriteUpgrade({{"base_metamodel", "\"base.json\""}});
  EXPECT_THAT(Review(json).output, HasSubstr("\"origin\":\"vendor\""));
}

TEST_F(ReviewCommandTest, BaseThatEqualsAnotherMetamodelIsNoted) {
  const std::string note = "Base and client are equal";
  EXPECT_THAT(Review({"--base", upgrade_.File("installation.json"), "-o", Into("json", "r.json"), "-o",
                      Into("markdown", "r.md"), "-o", Into("html", "r.html"), "-o", Into("text", "r.txt")})
                  .errors,
              StartsWith("upgradesrv: " + note));
  // Every output for people has it; a saved review has not.
  for (const char* file : {"r.md", "r.html", "r.txt"}) {
    EXPECT_THAT(Output(file), HasSubstr(note)) << file;
  }
  EXPECT_THAT(Output("r.json"), Not(HasSubstr(note)));
}

TEST_F(ReviewCommandTest, BaseThatCannotBeReadIsTrouble) {
  upgrade_.Write("base.json", R"({"generation": 2022})");
  EXPECT_THAT(Trouble({"--base", upgrade_.File("base.json")}),
              StartsWith("base metamodel: " + upgrade_.File("base.json")));
}

TEST_F(ReviewCommandTest, ElementsChoosesTheKinds) {
  EXPECT_EQ(Review({"--elements", "link,behavior"}).status, 0);
  EXPECT_THAT(Review({"--elements", "link,class", "-o", "json"}).output,
              HasSubstr("\"elements\": [\"class\",\"link\"]"));
}

TEST_F(ReviewCommandTest, OneCallWritesSeveralOutputs) {
  const test::SProcessResult result =
      Review({"-o", Into("json", "review.json"), "-o", Into("csv", "review.csv"), "-o", "text", "--stat"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("loss"));
  EXPECT_THAT(result.output, Not(HasSubstr("shortens")));
  EXPECT_THAT(Output("review.json"), HasSubstr("\"complete\": true"));
  EXPECT_THAT(Output("review.csv"), HasSubstr("class/Part/property/Code/length"));
}

TEST_F(ReviewCommandTest, HasColourOnATerminalOnlyAndNotWithNoColor) {
  EXPECT_THAT(Review().output, Not(HasSubstr("\x1B[")));
  if (!std::filesystem::exists("/usr/bin/script")) {
    GTEST_SKIP() << "NOT TESTED: output to a terminal needs /usr/bin/script";
  }
  const auto onTerminal = [this](const std::string& noColor) {
    const std::string command = noColor + " '" UPGRADESRV_EXECUTABLE "' review '" + upgrade_.Path() + "'";
    return test::Run({"/usr/bin/script", "-qec", command, "/dev/null"}).output;
  };
  EXPECT_THAT(onTerminal("NO_COLOR="), HasSubstr("\x1B["));
  EXPECT_THAT(onTerminal("NO_COLOR=1"), Not(HasSubstr("\x1B[")));
  EXPECT_THAT(onTerminal("NO_COLOR=1"), HasSubstr("shortens Code"));
}

TEST_F(ReviewCommandTest, FileAloneLeavesStandardOutputEmpty) {
  EXPECT_EQ(Review({"-o", Into("json", "review.json")}).output, "");
}

TEST_F(ReviewCommandTest, OutputsThatCannotBeGrantedAreRefusedBeforeAnythingIsRead) {
  upgrade_.Write("upgrade.json", "not JSON");
  EXPECT_THAT(Trouble({"-o", "xml"}), StartsWith("-o xml: unknown format; the formats are text, json, ndjson, csv"));
  EXPECT_EQ(Trouble({"-o", "json="}), "-o json=: the file's name is empty; leave out \"=\" for standard output");
  EXPECT_EQ(Trouble({"-o", "json", "-o", "csv"}),
            "-o: only one format can go to standard output; give the others a file: FORMAT=FILE");
  const std::string twice = upgrade_.File("a");
  EXPECT_EQ(Trouble({"-o", "json=" + twice, "-o", "csv=" + upgrade_.Path() + "/./a"}),
            "-o: the file " + upgrade_.Path() + "/./a is named twice; give each format a file of its own");
  EXPECT_EQ(
      Trouble({"-o", Into("json", "upgrade.json")}),
      "-o: the file " + upgrade_.File("upgrade.json") + " is one that the review is made from; give another file");
  EXPECT_EQ(Output("upgrade.json"), "not JSON");
}

TEST_F(ReviewCommandTest, OutputNeverReplacesAMetamodel) {
  std::filesystem::create_symlink(upgrade_.File("installation.json"), upgrade_.File("link.json"));
  for (const char* file : {"installation.json", "2024/metamodel.json", "link.json"}) {
    EXPECT_THAT(Trouble({"-o", Into("json", file)}), HasSubstr("is one that the review is made from"));
  }
  EXPECT_EQ(Output("installation.json"), kClient);
  EXPECT_EQ(Output("2024/metamodel.json"), kOriginal);
}

TEST_F(ReviewCommandTest, NamesOfFilesThatAreNotThereYetAreComparedFromTheCurrentDirectory) {
  const auto trouble = [this](const std::vector<std::string>& arguments) {
    return test::TroubleOf(test::RunTool(arguments, upgrade_.Path()));
  };
  const std::string twice = "the file ./a.json is named twice; give each format a file of its own";
  EXPECT_EQ(trouble({"review", "-o", "json=a.json", "-o", "csv=./a.json", "."}), "-o: " + twice);
  EXPECT_THAT(Output("a.json"), HasSubstr("\"complete\": false"));
  EXPECT_EQ(trouble({"run", "--review", "json=a.json", "--review", "csv=./a.json", "."}), "--review: " + twice);
  EXPECT_EQ(trouble({"review", "-o", "json=decisions.json", "."}),
            "-o: the file decisions.json is one that the review is made from; give another file");
  EXPECT_FALSE(std::filesystem::exists(upgrade_.File("decisions.json")));
}

TEST_F(ReviewCommandTest, ADirectoryThatIsNotUtf8IsInADocumentThatIs) {
  const std::string directory = upgrade_.File("ex\xFF");
  std::filesystem::create_directory(directory);
  for (const char* part : {"upgrade.json", "installation.json", "2024"}) {
    std::filesystem::copy(upgrade_.File(part), directory + "/" + part, std::filesystem::copy_options::recursive);
  }
  EXPECT_EQ(test::RunTool({"review", "-o", Into("json", "r.json"), directory}).status, 1);
  EXPECT_THAT(Output("r.json"), HasSubstr("ex\\\\xFF\""));
  EXPECT_EQ(test::RunTool({"review", "--from", upgrade_.File("r.json"), "-o", "json"}).output, Output("r.json"));
  EXPECT_EQ(test::RunTool({"review", "--against", upgrade_.File("r.json"), "--new", directory}).status, 0);
}

TEST_F(ReviewCommandTest, OutputNeverReplacesAnEarlierReviewABaseOrDecisions) {
  upgrade_.Write("base.json", kOriginal);
  upgrade_.Write("own.json", "{}");
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  std::filesystem::create_hard_link(upgrade_.File("r.json"), upgrade_.File("hard.json"));
  const std::string review = Output("r.json");
  const std::string refused = "is one that the review is made from";
  for (const char* file : {"r.json", "hard.json"}) {
    EXPECT_THAT(Trouble({"--against", upgrade_.File("r.json"), "-o", Into("csv", file)}), HasSubstr(refused));
    EXPECT_THAT(test::TroubleOf(test::RunTool({"review", "--from", upgrade_.File("r.json"), "-o", Into("csv", file)})),
                HasSubstr(refused));
  }
  EXPECT_THAT(Trouble({"--base", upgrade_.File("base.json"), "-o", Into("csv", "base.json")}), HasSubstr(refused));
  EXPECT_THAT(Trouble({"--decisions", upgrade_.File("own.json"), "-o", Into("csv", "own.json")}), HasSubstr(refused));
  EXPECT_EQ(Output("r.json"), review);
  EXPECT_EQ(Output("base.json"), kOriginal);
  EXPECT_EQ(Output("own.json"), "{}");
}

TEST_F(ReviewCommandTest, TroubleReplacesEveryFileByOneThatSaysSo) {
  ASSERT_EQ(Review({"-o", Into("json", "r.json"), "-o", Into("text", "r.txt")}).status, 1);
  upgrade_.Write("installation.json", "{");
  Trouble({"-o", Into("json", "r.json"), "-o", Into("text", "r.txt")});
  EXPECT_THAT(Output("r.json"), HasSubstr("\"complete\": false"));
  EXPECT_THAT(Output("r.json"), HasSubstr("client metamodel: " + upgrade_.File("installation.json")));
  EXPECT_THAT(Output("r.txt"), StartsWith("No answer."));
  EXPECT_THAT(Output("r.txt"), HasSubstr("\nReason: client metamodel: "));
}

TEST_F(ReviewCommandTest, ARefusedCommandLineReplacesEveryFileByOneThatSaysSo) {
  const std::vector<std::vector<std::string>> refused = {
      {"--bogus"}, {"--elements", "klass"}, {"--from", upgrade_.File("r.json")}, {upgrade_.Path()}};
  for (const std::vector<std::string>& options : refused) {
    upgrade_.Write("r.json", "of an earlier call");
    upgrade_.Write("r.txt", "of an earlier call");
    std::vector<std::string> all = {"-o", Into("json", "out.json"), "--output=" + Into("text", "r.txt")};
    all.insert(all.end(), options.begin(), options.end());
    const std::string problem = Trouble(all);
    EXPECT_THAT(Output("out.json"), HasSubstr("\"complete\": false"));
    EXPECT_THAT(Output("out.json"), HasSubstr("\"directory\": \"" + upgrade_.Path() + "\""));
    EXPECT_THAT(Output("r.txt"), HasSubstr("\nReason: " + problem.substr(0, problem.find(' '))));
    EXPECT_EQ(Output("r.json"), "of an earlier call");
  }
}

TEST_F(ReviewCommandTest, ARefusedCommandLineReplacesNothingThatItMayNameAsInput) {
  upgrade_.Write("earlier.json", "earlier");
  upgrade_.Write("own.db", "database");
  Trouble({"--agianst", upgrade_.File("earlier.json"), "-o", Into("json", "earlier.json")});
  Trouble({"--against=" + upgrade_.File("earlier.json"), "--bogus", "-o", Into("json", "earlier.json")});
  Trouble({"--cleint", "sqlite3://" + upgrade_.File("own.db"), "-o", Into("json", "own.db")});
  Trouble({"--bogus", "-o", Into("json", "installation.json")});
  Trouble({"--bogus", "-o", Into("json", "upgrade.json")});
  EXPECT_EQ(Output("earlier.json"), "earlier");
  EXPECT_EQ(Output("own.db"), "database");
  EXPECT_EQ(Output("installation.json"), kClient);
  EXPECT_THAT(Output("upgrade.json"), HasSubstr("client_metamodel"));
}

TEST_F(ReviewCommandTest, FileThatCannotBeWrittenFailsTheOthers) {
  const std::string problem = Trouble({"-o", Into("json", "r.json"), "-o", Into("csv", "none/r.csv")});
  EXPECT_EQ(problem, upgrade_.File("none/r.csv") + ": cannot be saved: No such file or directory; there is no review");
  EXPECT_THAT(Output("r.json"), HasSubstr("\"complete\": false"));
}

TEST_F(ReviewCommandTest, AFullStandardOutputFailsTheFiles) {
  if (!std::filesystem::exists("/dev/full")) {
    GTEST_SKIP() << "NOT TESTED: there is no /dev/full";
  }
  upgrade_.Write("r.json", "of an earlier call");
  const test::SProcessResult result =
      test::RunInShell("exec \"$0\" review -o text -o json=\"$1/r.json\" \"$1\" >/dev/full", upgrade_.Path());
  EXPECT_THAT(test::TroubleOf(result), StartsWith("standard output cannot be written: "));
  EXPECT_THAT(Output("r.json"), HasSubstr("\"complete\": false"));
}

TEST_F(ReviewCommandTest, StandardOutputIsNeverReplacedByAFile) {
  for (const std::string file : {"/dev/stdout", "out.txt", "/dev/stderr"}) {
    upgrade_.Write("out.txt", "");
    const test::SProcessResult result = test::RunInShell(
        "cd \"$1\"; echo begun >out.txt; exec \"$0\" review -o json=" + file + " . >>out.txt 2>&1", upgrade_.Path());
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(Output("out.txt"),
              "begun\nupgradesrv: error: -o json=" + file +
                  ": the file is the command's own standard output or standard error; leave out \"=" + file +
                  "\" for standard output\n");
  }
}

TEST_F(ReviewCommandTest, AFileOfAnUnknownFormatSaysThatTheReviewFailed) {
  upgrade_.Write("a.json", "of an earlier call");
  EXPECT_THAT(Trouble({"-o", Into("jsn", "a.json")}), HasSubstr("unknown format"));
  EXPECT_THAT(Output("a.json"), StartsWith("No answer."));
  EXPECT_THAT(Output("a.json"), HasSubstr("unknown format"));
}

TEST_F(ReviewCommandTest, TroubleThatComesEarlyReplacesNoInput) {
  Trouble({"-o", "xml", "-o", Into("json", "installation.json")});
  Trouble({"-o", Into("jsn", "installation.json")});
  Trouble({"--today", "1.7.2026", "-o", Into("json", "2024/metamodel.json")});
  upgrade_.Write("own.json", kClient);
  Trouble({"--client", upgrade_.File("own.json"), "-o", Into("jsn", "own.json")});
  EXPECT_EQ(Output("own.json"), kClient);
  upgrade_.WriteUpgrade({{"version", "\"2025\""}});
  Trouble({"-o", Into("json", "installation.json")});
  EXPECT_EQ(Output("installation.json"), kClient);
  EXPECT_EQ(Output("2024/metamodel.json"), kOriginal);
}

TEST_F(ReviewCommandTest, UnknownLevelIsRefused) {
  EXPECT_EQ(Trouble({"--fail-on", "Loss"}),
            "--fail-on: unknown level \"Loss\"; the levels are loss, block, attention, safe, never");
}

TEST_F(ReviewCommandTest, AgainstTellsWhatIsNew) {
  upgrade_.Write("installation.json", test::Replaced(kClient, "48", "40"));
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  upgrade_.Write("installation.json", kClient);
  const std::string against = upgrade_.File("r.json");
  const std::string output = Review({"--against", against, "-o", "json"}).output;
  EXPECT_THAT(output, HasSubstr("\"since\":\"changed\""));
  EXPECT_THAT(output, HasSubstr("\"since\":\"known\""));
  EXPECT_EQ(Review({"--against", against, "--new", "--fail-on", "loss"}).status, 1);
  upgrade_.Write("installation.json", test::Replaced(kClient, "48", "40"));
  EXPECT_EQ(Review({"--against", against, "--new"}).status, 0);
}

TEST_F(ReviewCommandTest, NewNeedsAnEarlierReview) {
  EXPECT_EQ(Trouble({"--new"}), "--new: there is no earlier review; name it with --against REVIEW.json");
}

TEST_F(ReviewCommandTest, NewWithoutAnEarlierReviewIsRefusedBeforeAnythingIsLoaded) {
  upgrade_.Write("installation.json", "not JSON");
  EXPECT_THAT(Trouble({"--new"}), StartsWith("--new: "));
}

TEST_F(ReviewCommandTest, AgainstTakesWholeReviewsOnly) {
  upgrade_.Write("r.json", "{}");
  EXPECT_THAT(Trouble({"--against", upgrade_.File("r.json")}), HasSubstr("this is not a review"));
  Review({"-o", Into("json", "r.json")});
  upgrade_.Write("r.json", Output("r.json").substr(0, 100));
  EXPECT_THAT(Trouble({"--against", upgrade_.File("r.json")}), HasSubstr("r.json:"));
}

TEST_F(ReviewCommandTest, FromWritesASavedReviewAgain) {
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  std::filesystem::remove(upgrade_.File("installation.json"));
  const test::SProcessResult again = test::RunTool({"review", "--from", upgrade_.File("r.json"), "-o", "json"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.output, Output("r.json"));
  EXPECT_THAT(test::RunTool({"review", "--from", upgrade_.File("r.json"), "--lang", "de"}).output,
              StartsWith("Noch nicht"));
}

TEST_F(ReviewCommandTest, FromGoesWithoutADirectory) {
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  EXPECT_THAT(Trouble({"--from", upgrade_.File("r.json")}), HasSubstr("--from"));
}

TEST_F(ReviewCommandTest, FromRefusesEveryOptionOfAComparison) {
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  const std::vector<std::vector<std::string>> others = {
      {"--original", "o.json"},  {"--client", "c.json"},  {"--base", "b.json"},    {"--decisions", "d.json"},
      {"--today", "2026-11-22"}, {"--elements", "class"}, {"--against", "r.json"}, {"."}};
  for (const std::vector<std::string>& other : others) {
    std::vector<std::string> arguments = {"review", "--from", "r.json"};
    arguments.insert(arguments.end(), other.begin(), other.end());
    const std::string name = other.front() == "." ? "UPGRADE_DIR" : other.front();
    EXPECT_THAT(test::TroubleOf(test::RunTool(arguments, upgrade_.Path())),
                testing::AllOf(HasSubstr("--from"), HasSubstr(name)));
  }
}

TEST_F(ReviewCommandTest, FromCountsAsTheCallWouldHave) {
  ASSERT_EQ(Review({"-o", Into("json", "first.json")}).status, 1);
  upgrade_.Write("2024/metamodel.json", test::Replaced(kOriginal, "32", "24"));
  ASSERT_EQ(Review({"--against", upgrade_.File("first.json"), "-o", Into("json", "r.json")}).status, 1);
  const auto again = [this](std::vector<std::string> options) {
    options.insert(options.begin(), {"review", "--from", upgrade_.File("r.json")});
    return test::RunTool(options).status;
  };
  // The loss has changed; what only the installation has was known.
  EXPECT_EQ(again({"--new"}), 1);
  EXPECT_EQ(again({"--new", "--fail-on", "loss"}), 1);
  EXPECT_EQ(again({"--fail-on", "never"}), 0);
  EXPECT_THAT(test::TroubleOf(test::RunTool({"review", "--new", "--from", upgrade_.File("first.json")})),
              StartsWith("--new: "));
}

TEST_F(ReviewCommandTest, LanguageIsThatOfTheUpgradeFile) {
  upgrade_.WriteUpgrade({{"lang", "\"de\""}});
  EXPECT_THAT(Review().output, StartsWith("Noch nicht"));
  EXPECT_THAT(Review({"--lang", "en"}).output, StartsWith("Not yet."));
}

TEST_F(ReviewCommandTest, UnknownLanguageIsNotedAndEnglishIsUsed) {
  const test::SProcessResult result = Review({"--lang", "xx"});
  EXPECT_EQ(result.errors, "upgradesrv: There are no words for language xx; English ones are used.\n");
  EXPECT_THAT(result.output, StartsWith("Not yet."));
}

TEST_F(ReviewCommandTest, NeverTouchesTheCheckResult) {
  Review({"-o", Into("json", "r.json")});
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

}  // namespace
