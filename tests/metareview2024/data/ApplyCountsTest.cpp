#include "metareview2024/data/ApplyCounts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "metareview2024/MadeReview.h"
#include "metareview2024/Rule.h"

using metareview::EChange;
using metareview::ERisk;
using metareview::SData;

namespace {

metareview::SFinding Applied(metareview::SFinding finding, const SData& data) {
  metareview::SReview review = test::MadeReview({std::move(finding)});
  ApplyCounts({{0, data}}, review);
  return review.findings.front();
}

metareview::SFinding Found(const std::string& rule) {
  return test::MadeChange("class/Part/property/Code/length", rule, 48U, 32U);
}

TEST(ApplyCountsTest, WithoutATouchedValueARestrictionAsksForAttention) {
  for (const std::string rule :
       {"length-shrinks", "precision-shrinks", "type-narrowed", "max-tightens", "min-tightens"}) {
    const metareview::SFinding finding = Applied(Found(rule), {0, 20341, {"T_PART"}, ""});
    EXPECT_EQ(finding.risk, ERisk::kAttention) << rule;
    EXPECT_EQ(finding.riskWithoutData, metareview::FindRule(rule)->risk) << rule;
    EXPECT_EQ(finding.data->of, 20341U);
  }
}

TEST(ApplyCountsTest, WithoutATouchedValueEverythingElseIsSafe) {
  for (const std::string rule :
       {"table-moved", "class-withdrawn", "link-withdrawn", "field-moved", "property-withdrawn",
        "behavior-columns-withdrawn", "listed-behavior-columns-withdrawn"}) {
    const metareview::SFinding finding = Applied(Found(rule), {0, 5, {"T_PART"}, ""});
    EXPECT_EQ(finding.risk, ERisk::kSafe) << rule;
    EXPECT_EQ(finding.riskWithoutData, ERisk::kLoss) << rule;
  }
}

TEST(ApplyCountsTest, ATouchedValueLeavesTheRisk) {
  const metareview::SFinding finding = Applied(Found("length-shrinks"), {1, 20341, {"T_PART"}, ""});
  EXPECT_EQ(finding.risk, ERisk::kLoss);
  EXPECT_EQ(finding.riskWithoutData, std::nullopt);
  EXPECT_EQ(finding.data->rows, 1U);
}

TEST(ApplyCountsTest, AProblemLeavesTheRisk) {
  const metareview::SFinding finding = Applied(Found("length-shrinks"), {0, 7, {}, "a policy may hide rows"});
  EXPECT_EQ(finding.risk, ERisk::kLoss);
  EXPECT_EQ(finding.riskWithoutData, std::nullopt);
  EXPECT_EQ(finding.data->problem, "a policy may hide rows");
}

TEST(ApplyCountsTest, ARiskThatIsLowEnoughIsNotLowered) {
  metareview::SFinding finding = Found("length-shrinks");
  // As a decision has set it.
  finding.risk = ERisk::kAttention;
  finding = Applied(finding, {0, 7, {"T_PART"}, ""});
  EXPECT_EQ(finding.risk, ERisk::kAttention);
  EXPECT_EQ(finding.riskWithoutData, std::nullopt);
}

TEST(ApplyCountsTest, NoRiskIsRaised) {
  metareview::SFinding finding = Found("length-shrinks");
  // As a decision has set it.
  finding.risk = ERisk::kSafe;
  finding = Applied(finding, {0, 7, {"T_PART"}, ""});
  EXPECT_EQ(finding.risk, ERisk::kSafe);
  EXPECT_EQ(finding.riskWithoutData, std::nullopt);
}

/// What is said of a finding when counting in its tables ends with these problems.
std::string ProblemOf(const std::vector<std::string>& problems) {
  metareview::SLookups lookups;
  std::vector<metareview::SLookupCount> counts;
  for (const std::string& problem : problems) {
    lookups.lookups.push_back({0, "", "", "T", {}, metareview::EMeasure::kAnyRow, ""});
    counts.push_back({0, 0, problem.empty(), problem});
  }
  return AddUp(lookups, counts).at(0).data.problem;
}

TEST(AddUpTest, AProblemOfSeveralTablesIsSaidOnce) {
  EXPECT_EQ(ProblemOf({"not in r.csv", "", "not in r.csv"}), "not in r.csv");
}

TEST(AddUpTest, AProblemThatBeginsLikeAnotherIsSaid) {
  EXPECT_EQ(ProblemOf({"there is no table T_12", "there is no table T_1"}),
            "there is no table T_12; there is no table T_1");
}

TEST(AddUpTest, OfManyProblemsTheFirstThreeAreSaidAndHowManyMoreThereAre) {
  EXPECT_EQ(ProblemOf({"no table A", "no table B", "no table C"}), "no table A; no table B; no table C");
  EXPECT_EQ(ProblemOf({"no table A", "no table B", "no table C", "no table A", "no table D"}),
            "no table A; no table B; no table C; and 1 more");
  EXPECT_EQ(ProblemOf({"no table A", "no table B", "no table C", "no table D", "no table E"}),
            "no table A; no table B; no table C; and 2 more");
}

TEST(AddUpTest, ProblemsOfOneFindingAreNotThoseOfTheNext) {
  metareview::SLookups lookups;
  lookups.lookups = {{0, "", "", "A", {}, metareview::EMeasure::kAnyRow, ""},
                     {1, "", "", "A", {}, metareview::EMeasure::kAnyRow, ""}};
  const std::vector<metareview::SCount> sums = AddUp(lookups, {{0, 0, false, "no table A"}, {2, 3, true, ""}});
  EXPECT_EQ(sums.at(0).data.problem, "no table A");
  EXPECT_EQ(sums.at(1).data.problem, "");
  EXPECT_EQ(sums.at(1).data.rows, 2U);
}

TEST(ApplyCountsTest, EachProblemOfSeveralTablesIsSaidOnce) {
  const auto lookup = [](const std::string& table) {
    return metareview::SLookup{0, "p", "r", table, {}, metareview::EMeasure::kAnyRow, ""};
  };
  const auto sums =
      metareview::AddUp({{lookup("A"), lookup("B"), lookup("C"), lookup("D")}, {}, {}},
                        {{0, 0, false, "no A"}, {0, 0, false, "out of time"}, {2, 3, true, ""}, {0, 0, false, "no A"}});
  ASSERT_EQ(sums.size(), 1U);
  EXPECT_EQ(sums.front().data.problem, "no A; out of time");
  EXPECT_EQ(sums.front().data.rows, 2U);
  EXPECT_EQ(sums.front().data.of, 3U);
}

}  // namespace
