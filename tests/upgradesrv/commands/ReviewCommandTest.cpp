#include "upgradesrv/commands/ReviewedUpgrade.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* kBoth =
    R"({"accepted": [{"path": "class/Part/property/Code/length", "change": "changed", "original": 32, "client": 48,
        "reason": "r"}, {"path": "class/Part/property/Own", "change": "inserted", "reason": "r"}]})";

class ReviewCommandTest : public test::CReviewedUpgrade {};

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
  upgrade_.Write("2024/metamodel.json", test::Replaced(test::kReviewedOriginal, "32", "64"));
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
  upgrade_.Write("base.json", test::kReviewedClient);
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

TEST_F(ReviewCommandTest, UnknownLevelIsRefused) {
  EXPECT_EQ(Trouble({"--fail-on", "Loss"}),
            "--fail-on: unknown level \"Loss\"; the levels are loss, block, attention, safe, never");
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
