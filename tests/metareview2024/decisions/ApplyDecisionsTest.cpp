#include <gmock/gmock.h>

#include "metareview2024/DecisionsFile.h"
#include "metareview2024/Metamodels.h"
#include "metareview2024/ReviewSteps.h"
#include "metareview2024/Rule.h"

namespace {

using metareview::EKind;
using metareview::ERisk;
using metareview::ParseDecisions;
using metareview::SDecision;
using metareview::SReview;
using metareview::Value;
using test::FindingAt;
using test::Property;
using test::SModel;
using test::SProperty;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const kToday = "2026-11-22";

/// One finding of each sort:
///     class/Part/behavior/Own      inserted
///     class/Part/property/Code/length     32 -> 16, loss
///     class/Other/behavior/Own     inserted
///     class/Old                    deleted
///     behavior/Own                 inserted
SReview Unjudged() {
  SProperty shorter = Property("Code");
  shorter.length = 16;
  return test::Review({{{"Part", {"Own"}, {Property("Code")}}, {"Other", {"OWN"}, {}}}, {}, {{"Own", {}, {}}}},
                      {{{"Part", {}, {shorter}}, {"Other", {}, {}}, {"Old", {}, {}}}, {}, {}});
}

SReview Judged(const std::string& entries, const std::string& today = kToday) {
  SReview review = Unjudged();
  ApplyDecisions(ParseDecisions("{\"accepted\": [" + entries + "]}", "FILE"), today, review);
  return review;
}

/// The paths of what is accepted.
std::vector<std::string> AcceptedIn(const SReview& review) {
  std::vector<std::string> paths;
  for (const metareview::SFinding& finding : review.findings) {
    if (finding.accepted != nullptr) {
      paths.push_back(finding.path);
    }
  }
  return paths;
}

std::vector<std::string> PathsOf(const std::vector<SDecision>& decisions) {
  std::vector<std::string> paths;
  for (const SDecision& decision : decisions) {
    paths.push_back(decision.path);
  }
  return paths;
}

void ExpectNoneLeftOver(const SReview& review) {
  EXPECT_TRUE(review.outdated.empty());
  EXPECT_THAT(PathsOf(review.expired), IsEmpty());
  EXPECT_THAT(PathsOf(review.stale), IsEmpty());
}

TEST(ApplyDecisionsTest, AnEntryAcceptsTheFindingAtItsPathWithItsReason) {
  const SReview review =
      Judged(R"({ "path": "class/old", "change": "deleted", "reason": "r", "by": "b", "until": "2027-06-30" })");
  EXPECT_THAT(AcceptedIn(review), ElementsAre("class/Old"));
  const auto accepted = FindingAt(review, "class/Old").accepted;
  EXPECT_EQ(accepted->reason, "r");
  EXPECT_EQ(accepted->by, "b");
  EXPECT_EQ(accepted->until, "2027-06-30");
  ExpectNoneLeftOver(review);
}

TEST(ApplyDecisionsTest, AnEntryWithTheValuesOfNowAcceptsALoss) {
  const SReview review = Judged(
      R"({ "path": "class/Part/property/Code/length", "change": "changed", "original": 16, "client": 32, "reason": "r" })");
  EXPECT_THAT(AcceptedIn(review), ElementsAre("class/Part/property/Code/length"));
  ExpectNoneLeftOver(review);
}

TEST(ApplyDecisionsTest, AnEntryWithOtherValuesIsOutdatedAndAcceptsNothing) {
  for (const auto& [original, client] : {std::pair("15", "32"), std::pair("16", "31")}) {
    const SReview review =
        Judged(std::string(R"({ "path": "class/Part/property/Code/length", "change": "changed", "original": )") +
               original + ", \"client\": " + client + R"(, "reason": "r" })");
    EXPECT_THAT(AcceptedIn(review), IsEmpty());
    ASSERT_EQ(review.outdated.size(), 1U);
    EXPECT_EQ(review.outdated[0].decision.path, "class/Part/property/Code/length");
    EXPECT_EQ(review.outdated[0].decision.acceptance.reason, "r");
    EXPECT_EQ(review.outdated[0].original, Value(16U));
    EXPECT_EQ(review.outdated[0].client, Value(32U));
    EXPECT_THAT(PathsOf(review.stale), IsEmpty());
  }
}

TEST(ApplyDecisionsTest, AStarStandsForOneWholeSegmentAndCaseIsIgnored) {
  const SReview review = Judged(R"({ "path": "class/*/behavior/own", "change": "inserted", "reason": "r" })");
  EXPECT_THAT(AcceptedIn(review), ElementsAre("class/Part/behavior/Own", "class/Other/behavior/OWN"));
  ExpectNoneLeftOver(review);
}

TEST(ApplyDecisionsTest, AnEntryWithAStarAcceptsNothingOfRiskLossOrBlock) {
  const SReview review = Judged(R"({ "path": "*/*/property/*/length", "change": "changed", "reason": "r" })");
  EXPECT_THAT(AcceptedIn(review), IsEmpty());
  ExpectNoneLeftOver(review);
  SReview blocked = test::Review({{{"Part", {}, {}, "", 1, "T"}}, {}, {}}, {{{"Part", {}, {}, "", 2, "T"}}, {}, {}});
  ApplyDecisions(
      ParseDecisions(R"({"accepted": [{ "path": "class/*/class_id", "change": "changed", "reason": "r" }]})", "F"),
      kToday, blocked);
  EXPECT_THAT(AcceptedIn(blocked), IsEmpty());
}

TEST(ApplyDecisionsTest, AnEntryWithAStarGoesByTheRiskThatTheFindingHas) {
  SReview review = Unjudged();
  const auto decisions = ParseDecisions(R"({
    "rules": [ { "rule": "length-shrinks", "risk": "attention" }, { "rule": "listed-behavior-inserted", "risk": "loss" } ],
    "accepted": [ { "path": "class/*/property/*/length", "change": "changed", "reason": "r" },
                  { "path": "class/*/behavior/*", "change": "inserted", "reason": "r" } ] })",
                                        "FILE");
  SetRuleRisks(decisions, review);
  ApplyDecisions(decisions, kToday, review);
  EXPECT_THAT(AcceptedIn(review), ElementsAre("class/Part/property/Code/length"));
}

TEST(ApplyDecisionsTest, AnotherChangeIsNotAccepted) {
  const SReview review = Judged(R"({ "path": "class/Old", "change": "inserted", "reason": "r" })");
  EXPECT_THAT(AcceptedIn(review), IsEmpty());
  EXPECT_THAT(PathsOf(review.stale), ElementsAre("class/Old"));
}

TEST(ApplyDecisionsTest, TheLastDayIsIncluded) {
  const std::string entry = R"({ "path": "class/Old", "change": "deleted", "reason": "r", "until": "2026-11-22" })";
  EXPECT_THAT(AcceptedIn(Judged(entry, "2026-11-22")), ElementsAre("class/Old"));
  const SReview later = Judged(entry, "2026-11-23");
  EXPECT_THAT(AcceptedIn(later), IsEmpty());
  EXPECT_THAT(PathsOf(later.expired), ElementsAre("class/Old"));
  EXPECT_THAT(PathsOf(later.stale), IsEmpty());
}

TEST(ApplyDecisionsTest, AnEntryThatMatchesNothingIsStale) {
  const SReview review = Judged(R"({ "path": "class/None", "change": "deleted", "reason": "r" },
                                   { "path": "link/*", "change": "inserted", "reason": "r" },
                                   { "path": "class/Old", "change": "deleted", "reason": "r" })");
  EXPECT_THAT(PathsOf(review.stale), ElementsAre("class/None", "link/*"));
}

TEST(ApplyDecisionsTest, AnEntryIsNotStaleWhereAKindThatItMayBeAboutWasNotCompared) {
  metareview::SMetamodels metamodels;
  metamodels.client = test::MakeMetamodel({});
  metamodels.original = test::MakeMetamodel({});
  SReview review = CompareMetamodels(metamodels, {EKind::kClass});
  ApplyDecisions(ParseDecisions(R"({"accepted": [ { "path": "class/A", "change": "inserted", "reason": "r" },
                                                  { "path": "link/A", "change": "inserted", "reason": "r" },
                                                  { "path": "*/B", "change": "inserted", "reason": "r" } ]})",
                                "FILE"),
                 kToday, review);
  EXPECT_THAT(PathsOf(review.stale), ElementsAre("class/A"));
}

TEST(ApplyDecisionsTest, AnEntryMayBeExpiredAndOutdatedOrExpiredAndStale) {
  const SReview review =
      Judged(R"({ "path": "class/Part/property/Code/length", "change": "changed", "original": 1, "client": 2,
                                     "reason": "r", "until": "2026-01-01" },
                                   { "path": "class/None", "change": "deleted", "reason": "r", "until": "2026-01-01" })");
  EXPECT_EQ(review.outdated.size(), 1U);
  EXPECT_THAT(PathsOf(review.expired), ElementsAre("class/Part/property/Code/length", "class/None"));
  EXPECT_THAT(PathsOf(review.stale), ElementsAre("class/None"));
}

TEST(ApplyDecisionsTest, TheReasonOfTheEntryForThePathItselfGoesBeforeThatOfAPattern) {
  const SReview review = Judged(R"({ "path": "class/*", "change": "deleted", "reason": "pattern" },
                                   { "path": "class/Old", "change": "deleted", "reason": "path" },
                                   { "path": "*/Own", "change": "inserted", "reason": "first" },
                                   { "path": "behavior/*", "change": "inserted", "reason": "second" })");
  EXPECT_EQ(FindingAt(review, "class/Old").accepted->reason, "path");
  EXPECT_EQ(FindingAt(review, "behavior/Own").accepted->reason, "first");
  ExpectNoneLeftOver(review);
}

TEST(ApplyDecisionsTest, APatternAcceptsWhereTheEntryForThePathItselfHasExpired) {
  const SReview review = Judged(R"({ "path": "class/*", "change": "deleted", "reason": "pattern" },
                                   { "path": "class/Old", "change": "deleted", "reason": "path", "until": "2026-01-01" })");
  EXPECT_EQ(FindingAt(review, "class/Old").accepted->reason, "pattern");
}

TEST(ApplyDecisionsTest, OnceMoreItBeginsAnew) {
  SReview review = Judged(R"({ "path": "class/Old", "change": "deleted", "reason": "r" },
                             { "path": "class/None", "change": "deleted", "reason": "r", "until": "2026-01-01" },
                             { "path": "class/Part/property/Code/length", "change": "changed", "original": 1, "client": 2,
                               "reason": "r" })");
  ApplyDecisions({}, kToday, review);
  EXPECT_THAT(AcceptedIn(review), IsEmpty());
  ExpectNoneLeftOver(review);
}

TEST(SetRuleRisksTest, EachFindingUnderTheRuleGetsItsRisk) {
  SReview review = Unjudged();
  SetRuleRisks(ParseDecisions(R"({"rules": [ { "rule": "listed-behavior-inserted", "risk": "block" } ]})", "FILE"),
               review);
  for (const metareview::SFinding& finding : review.findings) {
    EXPECT_EQ(finding.risk, finding.rule->name == "listed-behavior-inserted" ? ERisk::kBlock : finding.rule->risk)
        << finding.path;
  }
  EXPECT_EQ(FindingAt(review, "class/Part/behavior/Own").risk, ERisk::kBlock);
}

TEST(DecisionTest, AnotherMemberIsAnotherDecision) {
  const SDecision decision = {
      "class/P/class_id", metareview::EChange::kChanged, Value(1U), Value(2U), {"known", "m.keller", "2027-06-30"}};
  std::vector<SDecision> others(7, decision);
  EXPECT_THAT(others, testing::Each(decision));
  others[0].path = "class/Q/class_id";
  others[1].change = metareview::EChange::kDeleted;
  others[2].original = Value(3U);
  others[3].client = std::nullopt;
  others[4].acceptance.reason = "new";
  others[5].acceptance.by = std::nullopt;
  others[6].acceptance.until = "2027-07-01";
  EXPECT_THAT(others, testing::Each(testing::Not(decision)));
}

}  // namespace
