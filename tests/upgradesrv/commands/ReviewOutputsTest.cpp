#include "upgradesrv/commands/ReviewedUpgrade.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ReviewOutputsTest : public test::CReviewedUpgrade {};

TEST_F(ReviewOutputsTest, OneCallWritesSeveralOutputs) {
  const test::SProcessResult result =
      Review({"-o", Into("json", "review.json"), "-o", Into("csv", "review.csv"), "-o", "text", "--stat"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("loss"));
  EXPECT_THAT(result.output, Not(HasSubstr("shortens")));
  EXPECT_THAT(Output("review.json"), HasSubstr("\"complete\": true"));
  EXPECT_THAT(Output("review.csv"), HasSubstr("class/Part/property/Code/length"));
}

TEST_F(ReviewOutputsTest, HasColourOnATerminalOnlyAndNotWithNoColor) {
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

TEST_F(ReviewOutputsTest, FileAloneLeavesStandardOutputEmpty) {
  EXPECT_EQ(Review({"-o", Into("json", "review.json")}).output, "");
}

TEST_F(ReviewOutputsTest, OutputsThatCannotBeGrantedAreRefusedBeforeAnythingIsRead) {
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

TEST_F(ReviewOutputsTest, OutputNeverReplacesAMetamodel) {
  std::filesystem::create_symlink(upgrade_.File("installation.json"), upgrade_.File("link.json"));
  for (const char* file : {"installation.json", "2024/metamodel.json", "link.json"}) {
    EXPECT_THAT(Trouble({"-o", Into("json", file)}), HasSubstr("is one that the review is made from"));
  }
  EXPECT_EQ(Output("installation.json"), test::kReviewedClient);
  EXPECT_EQ(Output("2024/metamodel.json"), test::kReviewedOriginal);
}

TEST_F(ReviewOutputsTest, NamesOfFilesThatAreNotThereYetAreComparedFromTheCurrentDirectory) {
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

TEST_F(ReviewOutputsTest, ADirectoryThatIsNotUtf8IsInADocumentThatIs) {
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

TEST_F(ReviewOutputsTest, OutputNeverReplacesAnEarlierReviewABaseOrDecisions) {
  upgrade_.Write("base.json", test::kReviewedOriginal);
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
  EXPECT_EQ(Output("base.json"), test::kReviewedOriginal);
  EXPECT_EQ(Output("own.json"), "{}");
}

TEST_F(ReviewOutputsTest, TroubleReplacesEveryFileByOneThatSaysSo) {
  ASSERT_EQ(Review({"-o", Into("json", "r.json"), "-o", Into("text", "r.txt")}).status, 1);
  upgrade_.Write("installation.json", "{");
  Trouble({"-o", Into("json", "r.json"), "-o", Into("text", "r.txt")});
  EXPECT_THAT(Output("r.json"), HasSubstr("\"complete\": false"));
  EXPECT_THAT(Output("r.json"), HasSubstr("client metamodel: " + upgrade_.File("installation.json")));
  EXPECT_THAT(Output("r.txt"), StartsWith("No answer."));
  EXPECT_THAT(Output("r.txt"), HasSubstr("\nReason: client metamodel: "));
}

TEST_F(ReviewOutputsTest, ARefusedCommandLineReplacesEveryFileByOneThatSaysSo) {
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

TEST_F(ReviewOutputsTest, ARefusedCommandLineReplacesNothingThatItMayNameAsInput) {
  upgrade_.Write("earlier.json", "earlier");
  upgrade_.Write("own.db", "database");
  Trouble({"--agianst", upgrade_.File("earlier.json"), "-o", Into("json", "earlier.json")});
  Trouble({"--against=" + upgrade_.File("earlier.json"), "--bogus", "-o", Into("json", "earlier.json")});
  Trouble({"--cleint", "sqlite3://" + upgrade_.File("own.db"), "-o", Into("json", "own.db")});
  Trouble({"--bogus", "-o", Into("json", "installation.json")});
  Trouble({"--bogus", "-o", Into("json", "upgrade.json")});
  EXPECT_EQ(Output("earlier.json"), "earlier");
  EXPECT_EQ(Output("own.db"), "database");
  EXPECT_EQ(Output("installation.json"), test::kReviewedClient);
  EXPECT_THAT(Output("upgrade.json"), HasSubstr("client_metamodel"));
}

TEST_F(ReviewOutputsTest, FileThatCannotBeWrittenFailsTheOthers) {
  const std::string problem = Trouble({"-o", Into("json", "r.json"), "-o", Into("csv", "none/r.csv")});
  EXPECT_EQ(problem, upgrade_.File("none/r.csv") + ": cannot be saved: No such file or directory; there is no review");
  EXPECT_THAT(Output("r.json"), HasSubstr("\"complete\": false"));
}

TEST_F(ReviewOutputsTest, AFullStandardOutputFailsTheFiles) {
  if (!std::filesystem::exists("/dev/full")) {
    GTEST_SKIP() << "NOT TESTED: there is no /dev/full";
  }
  upgrade_.Write("r.json", "of an earlier call");
  const test::SProcessResult result =
      test::RunInShell("exec \"$0\" review -o text -o json=\"$1/r.json\" \"$1\" >/dev/full", upgrade_.Path());
  EXPECT_THAT(test::TroubleOf(result), StartsWith("standard output cannot be written: "));
  EXPECT_THAT(Output("r.json"), HasSubstr("\"complete\": false"));
}

TEST_F(ReviewOutputsTest, StandardOutputIsNeverReplacedByAFile) {
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

TEST_F(ReviewOutputsTest, ADashIsRefusedAsAFile) {
  const auto trouble = [this](const std::vector<std::string>& arguments) {
    return test::TroubleOf(test::RunTool(arguments, upgrade_.Path()));
  };
  const std::string refused =
      ": \"-\" is not taken for a name; write ./- for a file of this name, or leave out \"=-\" for standard output";
  EXPECT_EQ(trouble({"review", "-o", "html=-", "-o", "json=r.json", "."}), "-o html=-" + refused);
  EXPECT_THAT(Output("r.json"), HasSubstr("\"complete\": false"));
  EXPECT_EQ(trouble({"run", "--review", "json=-", "."}), "--review json=-" + refused);
  EXPECT_FALSE(std::filesystem::exists(upgrade_.File("-")));
  EXPECT_EQ(test::RunTool({"review", "-o", "json=./-", "."}, upgrade_.Path()).status, 1);
  EXPECT_THAT(Output("-"), HasSubstr("\"complete\": true"));
}

TEST_F(ReviewOutputsTest, AFileOfAnUnknownFormatSaysThatTheReviewFailed) {
  upgrade_.Write("a.json", "of an earlier call");
  EXPECT_THAT(Trouble({"-o", Into("jsn", "a.json")}), HasSubstr("unknown format"));
  EXPECT_THAT(Output("a.json"), StartsWith("No answer."));
  EXPECT_THAT(Output("a.json"), HasSubstr("unknown format"));
}

TEST_F(ReviewOutputsTest, TroubleThatComesEarlyReplacesNoInput) {
  Trouble({"-o", "xml", "-o", Into("json", "installation.json")});
  Trouble({"-o", Into("jsn", "installation.json")});
  Trouble({"--today", "1.7.2026", "-o", Into("json", "2024/metamodel.json")});
  upgrade_.Write("own.json", test::kReviewedClient);
  Trouble({"--client", upgrade_.File("own.json"), "-o", Into("jsn", "own.json")});
  EXPECT_EQ(Output("own.json"), test::kReviewedClient);
  upgrade_.WriteUpgrade({{"version", "\"2025\""}});
  Trouble({"-o", Into("json", "installation.json")});
  EXPECT_EQ(Output("installation.json"), test::kReviewedClient);
  EXPECT_EQ(Output("2024/metamodel.json"), test::kReviewedOriginal);
}

TEST_F(ReviewOutputsTest, AnUpgradeFileThatCannotBeUnderstoodCostsNoMetamodel) {
  const std::string names = R"("client_metamodel": "installation.json", "original_metamodel": "2024/metamodel.json")";
  const std::vector<std::string> broken = {"{" + names + ",}", "{" + names, "{" + names + R"(, "version": 2024x})",
                                           R"({"client_metamodel": "other.json", )" + names + "}"};
  for (const std::string& text : broken) {
    upgrade_.Write("upgrade.json", text);
    Trouble({"-o", Into("json", "installation.json"), "-o", Into("json", "r.json")});
    Trouble({"-o", Into("json", "2024/metamodel.json")});
    Trouble({"--bogus", "-o", Into("json", "installation.json")});
    EXPECT_EQ(Output("installation.json"), test::kReviewedClient) << text;
    EXPECT_EQ(Output("2024/metamodel.json"), test::kReviewedOriginal) << text;
    EXPECT_THAT(Output("r.json"), HasSubstr("\"complete\": false"));
  }
}

}  // namespace
