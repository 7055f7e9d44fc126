#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::HasSubstr;

constexpr const char* kDocument = "class/Document";

class DecideCommandTest : public testing::Test {
 protected:
  test::SProcessResult Decide(std::vector<std::string> options, const std::vector<std::string>& paths) const {
    options.insert(options.begin(), "decide");
    options.push_back(upgrade_.Path());
    options.insert(options.end(), paths.begin(), paths.end());
    return test::RunTool(options);
  }
  std::string Decisions() const { return test::ReadFile(upgrade_.File("decisions.json")); }
  bool HasDecisions() const { return std::filesystem::exists(upgrade_.File("decisions.json")); }

  test::CUpgradeDirectory upgrade_;
};

TEST_F(DecideCommandTest, WritesOneEntryALineSortedByPath) {
  const test::SProcessResult result =
      Decide({"--reason", "not used", "--by", "me", "--until", "2099-12-31"}, {"link/Uses", kDocument});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "upgradesrv: 2 entries were written to " + upgrade_.File("decisions.json") + ".\n");
  EXPECT_EQ(Decisions(),
            "{\n"
            "  \"accepted\": [\n"
            "    { \"path\": \"class/Document\", \"change\": \"deleted\", \"reason\": \"not used\", \"by\": \"me\", "
            "\"until\": \"2099-12-31\" },\n"
            "    { \"path\": \"link/Uses\", \"change\": \"deleted\", \"reason\": \"not used\", \"by\": \"me\", "
            "\"until\": \"2099-12-31\" }\n"
            "  ]\n"
            "}\n");
}

TEST_F(DecideCommandTest, WhatItAcceptsNoLongerCounts) {
  ASSERT_EQ(test::RunTool({"review", "--fail-on", "attention", upgrade_.Path()}).status, 1);
  ASSERT_EQ(Decide({"--reason", "r"}, {kDocument, "link/Uses", "behavior/Approvable"}).status, 0);
  EXPECT_EQ(test::RunTool({"review", upgrade_.Path()}).status, 0);
}

TEST_F(DecideCommandTest, RefusesAPathWithoutAFinding) {
  EXPECT_THAT(test::TroubleOf(Decide({"--reason", "r"}, {kDocument, "class/Nothing"})), HasSubstr("class/Nothing"));
  EXPECT_FALSE(HasDecisions());
}

TEST_F(DecideCommandTest, RefusesToGoWithoutAReason) {
  // Before anything is loaded.
  upgrade_.Write("installation.json", "not JSON");
  EXPECT_EQ(test::TroubleOf(Decide({}, {kDocument})),
            "decide: no reason is given; say with --reason why it is accepted");
  EXPECT_FALSE(HasDecisions());
}

TEST_F(DecideCommandTest, RefusesABlankReasonAndALastDayThatIsNone) {
  EXPECT_THAT(test::TroubleOf(Decide({"--reason", " "}, {kDocument})), HasSubstr("the reason is empty"));
  EXPECT_EQ(test::TroubleOf(Decide({"--reason", "r", "--until", "31.12.2099"}, {kDocument})),
            "\"31.12.2099\" is not a day; write YYYY-MM-DD");
  EXPECT_FALSE(HasDecisions());
}

TEST_F(DecideCommandTest, WritesNothingThatItCouldNotReadAgain) {
  EXPECT_THAT(test::TroubleOf(Decide({"--reason", "a\xFF"}, {kDocument})), HasSubstr("not UTF-8"));
  EXPECT_THAT(test::TroubleOf(Decide({"--reason", "r", "--by", "M\xFC"}, {kDocument})), HasSubstr("not UTF-8"));
  EXPECT_FALSE(HasDecisions());
}

TEST_F(DecideCommandTest, RefusesAnEntryThatStillAccepts) {
  ASSERT_EQ(Decide({"--reason", "r"}, {kDocument}).status, 0);
  const std::string before = Decisions();
  EXPECT_THAT(test::TroubleOf(Decide({"--reason", "again"}, {kDocument})), HasSubstr(kDocument));
  EXPECT_EQ(Decisions(), before);
}

TEST_F(DecideCommandTest, NeedsAPath) {
  EXPECT_THAT(test::TroubleOf(Decide({"--reason", "r"}, {})), HasSubstr("no path is given"));
}

TEST_F(DecideCommandTest, LeavesAFileAloneThatItCannotUnderstand) {
  for (const std::string content : {"", "{\"comment\": \"x\"}", "{\"accepted\": [1]}"}) {
    upgrade_.Write("decisions.json", content);
    EXPECT_THAT(test::TroubleOf(Decide({"--reason", "r"}, {kDocument})), HasSubstr("decisions.json"));
    EXPECT_EQ(Decisions(), content);
  }
}

TEST_F(DecideCommandTest, PruneDropsWhatMatchesNothing) {
  upgrade_.Write("decisions.json",
                 R"({"accepted": [{"path": "class/Gone", "change": "deleted", "reason": "r"},
                                  {"path": "class/Document", "change": "deleted", "reason": "r"}]})");
  const test::SProcessResult result = Decide({"--prune"}, {});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "upgradesrv: One stale entry was dropped from " + upgrade_.File("decisions.json") + ".\n");
  EXPECT_EQ(Decisions(),
            "{\n  \"accepted\": [\n"
            "    { \"path\": \"class/Document\", \"change\": \"deleted\", \"reason\": \"r\" }\n  ]\n}\n");
}

TEST_F(DecideCommandTest, PruneTakesNothingOfADecision) {
  const std::string decisions = R"({"accepted": [{"path": "class/Gone", "change": "deleted", "reason": "r"}]})";
  upgrade_.Write("decisions.json", decisions);
  EXPECT_THAT(test::TroubleOf(Decide({"--prune"}, {kDocument})), HasSubstr("takes no path"));
  for (const char* option : {"--reason", "--by", "--until"}) {
    EXPECT_EQ(test::TroubleOf(Decide({"--prune", option, "2099-12-31"}, {})),
              "decide --prune: takes no " + std::string(option) + "; it drops every entry that matches nothing");
  }
  EXPECT_EQ(Decisions(), decisions);
}

TEST_F(DecideCommandTest, PruneLeavesAFileAloneThatHasNothingStale) {
  const std::string note =
      "upgradesrv: No entry of " + upgrade_.File("decisions.json") + " is stale; nothing was changed.\n";
  EXPECT_EQ(Decide({"--prune"}, {}).errors, note);
  EXPECT_FALSE(HasDecisions());
  const std::string decisions = R"({"accepted": [{"path": "class/Document", "change": "deleted", "reason": "r"}]})";
  upgrade_.Write("decisions.json", decisions);
  EXPECT_EQ(Decide({"--prune"}, {}).errors, note);
  EXPECT_EQ(Decisions(), decisions);
}

TEST_F(DecideCommandTest, SaysHowManyEntriesItHasWritten) {
  const std::string file = upgrade_.File("decisions.json");
  // A path named twice is one entry, and one that has expired is written again.
  EXPECT_EQ(Decide({"--reason", "r"}, {kDocument, "class/DOCUMENT"}).errors,
            "upgradesrv: One entry was written to " + file + ".\n");
  upgrade_.Write("decisions.json", R"({"accepted": [
      {"path": "link/Uses", "change": "deleted", "reason": "r", "until": "2020-01-01"},
      {"path": "class/Document", "change": "deleted", "reason": "r"}]})");
  EXPECT_EQ(Decide({"--reason", "r"}, {"link/Uses", "behavior/Approvable"}).errors,
            "upgradesrv: 2 entries were written to " + file + ".\n");
}

TEST_F(DecideCommandTest, TodayDecidesWhatHasExpired) {
  const std::string document =
      R"({"path": "class/Document", "change": "deleted", "reason": "r", "until": "2026-06-30"})";
  upgrade_.Write("decisions.json", "{\"accepted\": [" + document + "]}");
  const auto decide = [this](const std::string& today) {
    return Decide({"--today", today, "--reason", "again", "--until", "2026-07-15"}, {kDocument});
  };
  EXPECT_THAT(test::TroubleOf(decide("2026-06-30")), HasSubstr("is accepted already"));
  EXPECT_EQ(test::TroubleOf(decide("2026-07-16")),
            "2026-07-15: the day has passed; the last day may be today or later");
  EXPECT_EQ(decide("2026-07-01").status, 0);
  EXPECT_THAT(Decisions(), HasSubstr("\"reason\": \"again\", \"until\": \"2026-07-15\""));
}

TEST_F(DecideCommandTest, WithoutTodayTheDayIsThatOfUtc) {
  // At any hour it is another day in one of these zones.
  for (const std::string zone : {"XXX-14", "XXX+12"}) {
    std::filesystem::remove(upgrade_.File("decisions.json"));
    const test::SProcessResult result =
        test::RunInShell("decide() { TZ=" + zone +
                             " \"$0\" decide --reason r --until \"$2\" \"$1\" class/Document 2>&1; }\n"
                             "day=$(date -u +%F)\n"
                             "decide \"$1\" \"$(date -u -d yesterday +%F)\"; decide \"$1\" \"$day\"\n"
                             "test \"$day\" = \"$(date -u +%F)\" || echo midnight",
                         upgrade_.Path());
    if (result.output.find("midnight") == std::string::npos) {
      EXPECT_THAT(result.output, testing::ContainsRegex("the day has passed.*\n.*One entry was written")) << zone;
    }
  }
}

TEST_F(DecideCommandTest, MakesTheFileThatDecisionsNames) {
  const std::string file = upgrade_.File("own.json");
  EXPECT_THAT(test::TroubleOf(Decide({"--decisions", file, "--prune"}, {})), HasSubstr("own.json: cannot be read"));
  EXPECT_EQ(Decide({"--decisions", file, "--reason", "r"}, {kDocument}).status, 0);
  EXPECT_THAT(test::ReadFile(file), HasSubstr("\"path\": \"class/Document\""));
  EXPECT_FALSE(HasDecisions());
}

TEST_F(DecideCommandTest, TakesABareNameOfAFileThatIsNotThereYet) {
  const auto decide = [this](std::vector<std::string> options) {
    options.insert(options.begin(), "decide");
    return test::RunTool(options, upgrade_.Path());
  };
  EXPECT_THAT(test::TroubleOf(decide({"--decisions", "nope.json", "--prune", "."})),
              testing::StartsWith("nope.json: cannot be read: "));
  const test::SProcessResult result = decide({"--decisions", "own.json", "--reason", "r", ".", kDocument});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(test::ReadFile(upgrade_.File("own.json")), HasSubstr("\"path\": \"class/Document\""));
}

TEST_F(DecideCommandTest, SaysWhichFileItCannotMakeInADirectoryThatIsNotThere) {
  const std::string file = upgrade_.File("none/own.json");
  EXPECT_EQ(test::TroubleOf(Decide({"--decisions", file, "--reason", "r"}, {kDocument})),
            file + ": cannot be saved: No such file or directory; nothing was changed");
}

TEST_F(DecideCommandTest, RefusesADashForTheDecisionsFile) {
  const auto decide = [this](const std::string& file) {
    return test::RunTool({"decide", "--decisions", file, "--reason", "r", ".", kDocument}, upgrade_.Path());
  };
  EXPECT_EQ(test::TroubleOf(decide("-")),
            "--decisions -: \"-\" is not taken for a name; write ./- for a file of this name");
  EXPECT_FALSE(std::filesystem::exists(upgrade_.File("-")));
  EXPECT_EQ(decide("./-").status, 0);
  EXPECT_TRUE(std::filesystem::exists(upgrade_.File("-")));
}

TEST_F(DecideCommandTest, WritesNothingWhereOnePathIsWrong) {
  const std::string before = R"({"accepted": [{"path": "link/Uses", "change": "deleted", "reason": "r"}]})";
  upgrade_.Write("decisions.json", before);
  EXPECT_THAT(test::TroubleOf(Decide({"--reason", "r"}, {kDocument, "class/Nothing"})), HasSubstr("class/Nothing"));
  EXPECT_EQ(Decisions(), before);
}

TEST_F(DecideCommandTest, TwoAtOnceLoseNothing) {
  const std::string decide = "\"$0\" decide --quiet --reason r \"$1\" ";
  for (int round = 0; round < 5; ++round) {
    std::filesystem::remove(upgrade_.File("decisions.json"));
    const test::SProcessResult result =
        test::RunInShell(decide + "class/Document & " + decide + "link/Uses & " + decide + "behavior/Approvable & wait",
                         upgrade_.Path());
    EXPECT_EQ(result.status, 0) << result.errors;
    for (const char* path : {kDocument, "link/Uses", "behavior/Approvable"}) {
      EXPECT_THAT(Decisions(), HasSubstr(path));
    }
  }
}

TEST_F(DecideCommandTest, SaysThatItWaitsForAnother) {
  const test::SProcessResult result = test::RunInShell(
      "exec 9<\"$1\" && flock 9 && { \"$0\" decide --reason r \"$1\" class/Document 2>\"$1/notes\" & } && "
      "until grep -q waiting \"$1/notes\" || ! kill -0 $!; do sleep 0.05; done; "
      "test -e \"$1/decisions.json\" && echo early; flock -u 9; wait $!",
      upgrade_.Path());
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(test::ReadFile(upgrade_.File("notes")),
            "upgradesrv: " + std::filesystem::canonical(upgrade_.Path()).string() +
                ": another decide is at work there; waiting for it to end\nupgradesrv: One entry was written to " +
                upgrade_.File("decisions.json") + ".\n");
}

TEST(ExplainCommandTest, ListsAllRulesWithTheirRisk) {
  const test::SProcessResult result = test::RunTool({"explain"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, testing::ContainsRegex("length-shrinks +loss +Length shrinks"));
}

TEST(ExplainCommandTest, SaysWhatHappensWhyAndWhatToDo) {
  const test::SProcessResult result = test::RunTool({"explain", "length-shrinks"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr("What happens\n"));
  EXPECT_THAT(result.output, HasSubstr("Why\n"));
  EXPECT_THAT(result.output, HasSubstr("What to do\n"));
}

TEST(ExplainCommandTest, LangChoosesTheLanguage) {
  const std::string german = test::RunTool({"explain", "--lang", "de", "length-shrinks"}).output;
  EXPECT_NE(german, "");
  EXPECT_NE(german, test::RunTool({"explain", "length-shrinks"}).output);
  EXPECT_EQ(test::RunTool({"explain", "--lang", "DE", "length-shrinks"}).errors,
            "upgradesrv: There are no words for language DE; English ones are used; did you mean de?\n");
}

TEST(ExplainCommandTest, HelpHasExamples) {
  EXPECT_THAT(test::RunTool({"explain", "--help"}).output, HasSubstr("  upgradesrv explain length-shrinks "));
}

TEST(ExplainCommandTest, RefusesAnUnknownRule) {
  EXPECT_EQ(test::TroubleOf(test::RunTool({"explain", "length"})),
            "explain: unknown rule \"length\"; upgradesrv explain lists all");
  EXPECT_EQ(test::TroubleOf(test::RunTool({"explain", "lenght-shrinks"})),
            "explain: unknown rule \"lenght-shrinks\"; upgradesrv explain lists all; did you mean length-shrinks?");
}

TEST(ExplainCommandTest, SaysWhatADecisionsFileMakesOfARule) {
  const test::CTemporaryDirectory directory;
  const std::string file = directory.Write(
      "d.json", R"({"rules": [{"rule": "length-shrinks", "risk": "safe", "reason": "widened by our script"}]})");
  EXPECT_THAT(test::RunTool({"explain", "--decisions", file, "length-shrinks"}).output,
              HasSubstr("Risk\n  safe: nothing stored is touched\n  set by a decision; otherwise loss\n"));
  EXPECT_THAT(test::RunTool({"explain", "--decisions", file}).output, testing::ContainsRegex("length-shrinks +safe"));
}

}  // namespace
