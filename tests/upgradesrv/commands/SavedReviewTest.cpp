#include "upgradesrv/commands/ReviewedUpgrade.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class SavedReviewTest : public test::CReviewedUpgrade {};

TEST_F(SavedReviewTest, AgainstTellsWhatIsNew) {
  upgrade_.Write("installation.json", test::Replaced(test::kReviewedClient, "48", "40"));
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  upgrade_.Write("installation.json", test::kReviewedClient);
  const std::string against = upgrade_.File("r.json");
  const std::string output = Review({"--against", against, "-o", "json"}).output;
  EXPECT_THAT(output, HasSubstr("\"since\":\"changed\""));
  EXPECT_THAT(output, HasSubstr("\"since\":\"known\""));
  EXPECT_EQ(Review({"--against", against, "--new", "--fail-on", "loss"}).status, 1);
  upgrade_.Write("installation.json", test::Replaced(test::kReviewedClient, "48", "40"));
  EXPECT_EQ(Review({"--against", against, "--new"}).status, 0);
}

TEST_F(SavedReviewTest, NewNeedsAnEarlierReview) {
  EXPECT_EQ(Trouble({"--new"}), "--new: there is no earlier review; name it with --against REVIEW.json");
}

TEST_F(SavedReviewTest, NewWithoutAnEarlierReviewIsRefusedBeforeAnythingIsLoaded) {
  upgrade_.Write("installation.json", "not JSON");
  EXPECT_THAT(Trouble({"--new"}), StartsWith("--new: "));
}

TEST_F(SavedReviewTest, AgainstTakesWholeReviewsOnly) {
  upgrade_.Write("r.json", "{}");
  EXPECT_THAT(Trouble({"--against", upgrade_.File("r.json")}), HasSubstr("this is not a review"));
  Review({"-o", Into("json", "r.json")});
  upgrade_.Write("r.json", Output("r.json").substr(0, 100));
  EXPECT_THAT(Trouble({"--against", upgrade_.File("r.json")}), HasSubstr("r.json:"));
}

TEST_F(SavedReviewTest, WhatIsNoReviewAsJsonIsRefusedWithWhatIsAskedFor) {
  ASSERT_EQ(Review({"-o", Into("html", "r.html"), "-o", Into("ndjson", "r.ndjson")}).status, 1);
  for (const std::string name : {"r.html", "r.ndjson", "upgrade.json"}) {
    const std::string file = upgrade_.File(name);
    const std::string refused = " takes a whole review, saved by -o json: " + file + ":";
    EXPECT_THAT(Trouble({"--against", file}), StartsWith("--against" + refused));
    EXPECT_THAT(test::TroubleOf(test::RunTool({"review", "--from", file})), StartsWith("--from" + refused));
  }
}

TEST_F(SavedReviewTest, FromWritesASavedReviewAgain) {
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  std::filesystem::remove(upgrade_.File("installation.json"));
  const test::SProcessResult again = test::RunTool({"review", "--from", upgrade_.File("r.json"), "-o", "json"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.output, Output("r.json"));
  EXPECT_THAT(test::RunTool({"review", "--from", upgrade_.File("r.json"), "--lang", "de"}).output,
              StartsWith("Noch nicht"));
}

TEST_F(SavedReviewTest, FromGoesWithoutADirectory) {
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  EXPECT_THAT(Trouble({"--from", upgrade_.File("r.json")}), HasSubstr("--from"));
}

TEST_F(SavedReviewTest, FromRefusesEveryOptionOfAComparison) {
  ASSERT_EQ(Review({"-o", Into("json", "r.json")}).status, 1);
  const std::vector<std::vector<std::string>> others = {{"--original", "o.json"},
                                                        {"--client", "c.json"},
                                                        {"--base", "b.json"},
                                                        {"--decisions", "d.json"},
                                                        {"--today", "2026-11-22"},
                                                        {"--elements", "class"},
                                                        {"--against", "r.json"},
                                                        {"--data", "data.db"},
                                                        {"--data-timeout", "5"},
                                                        {"--dialect", "sqlite"},
                                                        {"."}};
  for (const std::vector<std::string>& other : others) {
    std::vector<std::string> arguments = {"review", "--from", "r.json"};
    arguments.insert(arguments.end(), other.begin(), other.end());
    const std::string name = other.front() == "." ? "UPGRADE_DIR" : other.front();
    EXPECT_THAT(test::TroubleOf(test::RunTool(arguments, upgrade_.Path())),
                StartsWith("--from: takes no " + name + "; a saved review is written again as it is;"));
  }
}

TEST_F(SavedReviewTest, FromCountsAsTheCallWouldHave) {
  ASSERT_EQ(Review({"-o", Into("json", "first.json")}).status, 1);
  upgrade_.Write("2024/metamodel.json", test::Replaced(test::kReviewedOriginal, "32", "24"));
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

}  // namespace
