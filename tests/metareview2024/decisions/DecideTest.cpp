#include <gmock/gmock.h>

#include "kvxsptexception/ErrorCodes.h"
#include "metareview2024/DecisionsFile.h"
#include "metareview2024/Metamodels.h"
#include "metareview2024/ReviewSteps.h"
#include "support/Error.h"

namespace {

using metareview::FormatDecisions;
using metareview::ParseDecisions;
using metareview::SAcceptance;
using metareview::SDecisions;
using metareview::SReview;
using test::ErrorOf;
using test::Property;
using test::SProperty;
using Paths = std::vector<std::string>;

const char* const kToday = "2026-11-22";
const char* const kLength = "class/Part/property/Code/length";

/// Beside the length, a loss: class/Own and class/Mine inserted, link/Own inserted, class/Old deleted, the display name
/// of class/Part changed.
SReview Review() {
  SProperty shorter = Property("Code");
  shorter.length = 16;
  return test::Review(
      {{{"Part", {}, {Property("Code")}, "Teil \"x\""}, {"Own", {}, {}}, {"Mine", {}, {}}}, {{"Own", {}, {}}}, {}},
      {{{"Part", {}, {shorter}, "Part"}, {"Old", {}, {}, "", 0, ""}}, {}, {}});
}

std::string File(const std::string& entries) {
  return "{\n  \"accepted\": [\n" + entries + "\n  ]\n}\n";
}

/// The text of the file after the decision.
std::string Decided(const std::string& file, const Paths& paths, const SAcceptance& acceptance = {"r", {}, {}}) {
  const SDecisions decisions = ParseDecisions(file, "FILE");
  SReview review = Review();
  ApplyDecisions(decisions, kToday, review);
  return FormatDecisions(Decide(decisions, review, paths, acceptance, kToday));
}

test::SError Refusal(const std::string& file, const Paths& paths, const SAcceptance& acceptance = {"r", {}, {}}) {
  return ErrorOf([&] { Decided(file, paths, acceptance); });
}

test::SError Refused(const std::string& message) {
  return {kvx::kRefused, message};
}

TEST(DecideTest, AnEntryIsWrittenWithTheValuesOfNow) {
  EXPECT_EQ(
      Decided("{}", {kLength}, {"longest has 12", "m.keller", "2027-06-30"}),
      File(R"(    { "path": "class/Part/property/Code/length", "change": "changed", "original": 16, "client": 32, )"
           R"("reason": "longest has 12", "by": "m.keller", "until": "2027-06-30" })"));
  EXPECT_EQ(Decided("{}", {"class/Part/display_name"}),
            File(R"(    { "path": "class/Part/display_name", "change": "changed", "original": "Part", )"
                 R"("client": "Teil \"x\"", "reason": "r" })"));
  EXPECT_EQ(Decided("{}", {"class/Old"}), File(R"(    { "path": "class/Old", "change": "deleted", "reason": "r" })"));
}

TEST(DecideTest, ThePathIsSpelledAsTheFindingsIs) {
  EXPECT_EQ(Decided("{}", {"class/OLD"}), File(R"(    { "path": "class/Old", "change": "deleted", "reason": "r" })"));
}

TEST(DecideTest, EntriesAreSortedByPathOneALine) {
  EXPECT_EQ(
      Decided(
          File(
              R"({ "path": "link/Z", "change": "deleted", "reason": "z" }, { "path": "class/M", "change": "inserted", "reason": "m" })"),
          {"class/Own", "class/Old"}),
      File("    { \"path\": \"class/M\", \"change\": \"inserted\", \"reason\": \"m\" },\n"
           "    { \"path\": \"class/Old\", \"change\": \"deleted\", \"reason\": \"r\" },\n"
           "    { \"path\": \"class/Own\", \"change\": \"inserted\", \"reason\": \"r\" },\n"
           "    { \"path\": \"link/Z\", \"change\": \"deleted\", \"reason\": \"z\" }"));
}

TEST(DecideTest, NothingElseOfTheFileIsLost) {
  const std::string file = R"({
  "rules": [
    { "rule": "spelling", "risk": "attention", "reason": "scripts compare" },
    { "rule": "default-changes", "risk": "safe" }
  ],
  "accepted": [
    { "path": "*/*/display_name", "change": "changed", "reason": "our words", "by": "a.wei" },
    { "path": "behavior/B/method/M", "change": "deleted", "reason": "gone", "by": "", "until": "2020-01-01" },
    { "path": "class/C/class_id", "change": "changed", "original": 1, "client": 4294967295, "reason": "Größe \\ \"零件\"\n" }
  ]
}
)";
  EXPECT_EQ(FormatDecisions(ParseDecisions(file, "FILE")), file);
  std::string expected = file;
  expected.replace(expected.rfind("\n  ]"), 0,
                   ",\n    { \"path\": \"class/Own\", \"change\": \"inserted\", \"reason\": \"r\" }");
  EXPECT_EQ(Decided(file, {"class/Own"}), expected);
}

TEST(DecideTest, AnOutdatedEntryOfThePathIsReplaced) {
  EXPECT_EQ(
      Decided(File(R"({ "path": "class/part/display_name", "change": "changed", "original": "Part", "client": "x", )"
                   R"("reason": "old" })"),
              {"class/Part/display_name"}, {"new", {}, {}}),
      File(R"(    { "path": "class/Part/display_name", "change": "changed", "original": "Part", )"
           R"("client": "Teil \"x\"", "reason": "new" })"));
}

TEST(DecideTest, AnExpiredEntryOfThePathIsReplaced) {
  EXPECT_EQ(Decided(File(R"({ "path": "class/Old", "change": "deleted", "reason": "old", "until": "2026-11-21" })"),
                    {"class/Old"}, {"new", {}, "2026-11-22"}),
            File(R"(    { "path": "class/Old", "change": "deleted", "reason": "new", "until": "2026-11-22" })"));
}

TEST(DecideTest, AnEntryThatStillAcceptsIsRefused) {
  const std::string file =
      File(R"({ "path": "class/old", "change": "deleted", "reason": "old\n", "by": "me", "until": "2026-11-22" })");
  EXPECT_EQ(
      Refusal(file, {"class/Old"}),
      Refused("class/Old: is accepted already: old\\n, by me, until 2026-11-22; to prolong or change that, edit its "
              "line in the decisions file"));
}

TEST(DecideTest, AFindingThatAPatternAcceptsMayGetAnEntryOfItsOwn) {
  EXPECT_EQ(Decided(File(R"({ "path": "class/*", "change": "deleted", "reason": "pattern" })"), {"class/Old"}),
            File("    { \"path\": \"class/*\", \"change\": \"deleted\", \"reason\": \"pattern\" },\n"
                 "    { \"path\": \"class/Old\", \"change\": \"deleted\", \"reason\": \"r\" }"));
}

TEST(DecideTest, APathNamedTwiceIsOneEntry) {
  EXPECT_EQ(Decided("{}", {"class/Old", "class/old"}),
            File(R"(    { "path": "class/Old", "change": "deleted", "reason": "r" })"));
}

TEST(DecideTest, APathWithoutAFindingIsRefused) {
  EXPECT_EQ(Refusal("{}", {"class/Old", "class/Nothing"}), Refused("class/Nothing: no finding has this path"));
  EXPECT_EQ(Refusal("{}", {"class/*/behavior/*"}), Refused("class/*/behavior/*: no finding has this path"));
}

TEST(DecideTest, APathThatIsSpelledNearlyAsAFindingsIsQuestioned) {
  EXPECT_EQ(Refusal("{}", {"class/part/property/Code/lenght"}),
            Refused("class/part/property/Code/lenght: no difference has a path of this form; did you mean "
                    "class/Part/property/Code/length?"));
  EXPECT_EQ(Refusal("{}", {"class/part/property/Coded/length"}),
            Refused("class/part/property/Coded/length: no finding has this path; did you mean "
                    "class/Part/property/Code/length?"));
  EXPECT_EQ(Refusal("{}", {"links/Own"}),
            Refused("links/Own: no difference has a path of this form; did you mean link/Own?"));
}

TEST(DecideTest, APathAboveAFindingIsQuestioned) {
  EXPECT_EQ(Refusal("{}", {"class/Part/property/code"}),
            Refused("class/Part/property/code: no finding has this path; did you mean "
                    "class/Part/property/Code/length?"));
  EXPECT_EQ(Refusal("{}", {"class/PART/property"}),
            Refused("class/PART/property: no difference has a path of this form; did you mean "
                    "class/Part/property/Code/length?"));
  EXPECT_EQ(Refusal("{}", {"class/Par"}), Refused("class/Par: no finding has this path"));
}

TEST(DecideTest, APathBelowAFindingIsQuestioned) {
  EXPECT_EQ(Refusal("{}", {"class/own/property/Code/length"}),
            Refused("class/own/property/Code/length: no finding has this path; did you mean class/Own?"));
}

TEST(DecideTest, APathOfSegmentsOfOneLetterOrNoneIsRefused) {
  EXPECT_EQ(Refusal("{}", {"/y"}), Refused("/y: no difference has a path of this form"));
  EXPECT_EQ(Refusal("{}", {"x/y"}), Refused("x/y: no difference has a path of this form"));
}

TEST(DecideTest, WhatIsNoPathIsRefused) {
  EXPECT_EQ(Refusal("{}", {"class/FHA_*"}),
            Refused("class/FHA_*: \"*\" can only stand for one whole segment; in a name it is written ~2"));
  EXPECT_EQ(Refusal("{}", {"Own\n"}), Refused("Own\\n: no difference has a path of this form"));
}

TEST(DecideTest, APatternBecomesAnEntryForEachChangeThatItMatches) {
  EXPECT_EQ(Decided("{}", {"class/*"}),
            File("    { \"path\": \"class/*\", \"change\": \"inserted\", \"reason\": \"r\" },\n"
                 "    { \"path\": \"class/*\", \"change\": \"deleted\", \"reason\": \"r\" }"));
  EXPECT_EQ(Decided("{}", {"*/*/display_name"}),
            File("    { \"path\": \"*/*/display_name\", \"change\": \"changed\", \"reason\": \"r\" }"));
}

TEST(DecideTest, APatternThatMatchesOnlyLossAndBlockIsRefused) {
  EXPECT_EQ(
      Refusal("{}", {"*/*/property/*/length"}),
      Refused("*/*/property/*/length: a path with \"*\" accepts nothing of risk loss or block; name these findings "
              "one by one"));
}

TEST(DecideTest, AnEmptyReasonIsRefused) {
  EXPECT_EQ(Refusal("{}", {"class/Old"}, {"", {}, {}}),
            Refused("the reason is empty; say why the findings are accepted"));
  EXPECT_EQ(Refusal("{}", {"class/Old"}, {" \n", {}, {}}),
            Refused("the reason is empty; say why the findings are accepted"));
}

TEST(DecideTest, AReasonOrANameThatIsNotUtf8IsRefused) {
  const std::string way = " is not UTF-8; give it in UTF-8, for example from a terminal that uses it";
  EXPECT_EQ(Refusal("{}", {kLength}, {"a\xFF", {}, {}}), Refused("the reason \"a\\xFF\"" + way));
  EXPECT_EQ(Refusal("{}", {kLength}, {"r", "M\xFCller", {}}), Refused("the name \"M\\xFCller\"" + way));
}

TEST(DecideTest, ALastDayMustBeADayThatHasNotPassed) {
  EXPECT_EQ(Refusal("{}", {"class/Old"}, {"r", {}, "30.6.2027"}),
            Refused("\"30.6.2027\" is not a day; write YYYY-MM-DD"));
  EXPECT_EQ(Refusal("{}", {"class/Old"}, {"r", {}, "2026-11-21"}),
            Refused("2026-11-21: the day has passed; the last day may be today or later"));
}

TEST(PruneTest, StaleEntriesAreLeftOutAndNoOthers) {
  const SDecisions decisions = ParseDecisions(R"({ "rules": [ { "rule": "spelling", "risk": "loss" } ], "accepted": [
    { "path": "class/None", "change": "deleted", "reason": "stale" },
    { "path": "class/Old", "change": "inserted", "reason": "stale" },
    { "path": "class/Old", "change": "deleted", "reason": "expired", "until": "2020-01-01" },
    { "path": "class/Part/property/Code/length", "change": "changed", "original": 1, "client": 2, "reason": "outdated" },
    { "path": "class/Own", "change": "inserted", "reason": "accepts" } ] })",
                                              "FILE");
  SReview review = Review();
  ApplyDecisions(decisions, kToday, review);
  EXPECT_EQ(FormatDecisions(Prune(decisions, review)), R"({
  "rules": [
    { "rule": "spelling", "risk": "loss" }
  ],
  "accepted": [
    { "path": "class/Old", "change": "deleted", "reason": "expired", "until": "2020-01-01" },
    { "path": "class/Own", "change": "inserted", "reason": "accepts" },
    { "path": "class/Part/property/Code/length", "change": "changed", "original": 1, "client": 2, "reason": "outdated" }
  ]
}
)");
}

TEST(FormatDecisionsTest, WithoutEntriesItIsAnEmptyObject) {
  EXPECT_EQ(FormatDecisions({}), "{\n}\n");
}

TEST(FormatDecisionsTest, EntriesOfOnePathAreSortedByTheirChange) {
  const std::string file = File(
      "    { \"path\": \"class/*\", \"change\": \"inserted\", \"reason\": \"r\" },\n"
      "    { \"path\": \"class/*\", \"change\": \"deleted\", \"reason\": \"r\" }");
  SDecisions decisions = ParseDecisions(file, "FILE");
  std::swap(decisions.accepted[0], decisions.accepted[1]);
  EXPECT_EQ(FormatDecisions(decisions), file);
}

}  // namespace
