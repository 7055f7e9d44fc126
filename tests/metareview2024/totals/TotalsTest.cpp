#include "metareview2024/Totals.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using metareview::EKind;
using metareview::EOrigin;
using metareview::ERisk;
using metareview::ESince;
using metareview::SFinding;
using metareview::SReview;
using metareview::STotals;
using metareview::SVerdict;

SFinding Finding(EKind kind, ERisk risk, EOrigin origin = EOrigin::kCustomer, bool reported = true) {
  SFinding finding;
  finding.kind = kind;
  finding.risk = risk;
  finding.origin = origin;
  finding.reported = reported;
  return finding;
}

SFinding Accepted(SFinding finding) {
  finding.accepted = std::make_shared<metareview::SAcceptance>();
  return finding;
}

SReview Review(std::vector<SFinding> findings) {
  SReview review;
  review.findings = std::move(findings);
  return review;
}

TEST(TotalsTest, FindingsAreCountedByKindAndRisk) {
  const auto totals = CountTotals(Review(
      {Finding(EKind::kClass, ERisk::kLoss), Finding(EKind::kClass, ERisk::kLoss), Finding(EKind::kClass, ERisk::kSafe),
       Finding(EKind::kBehavior, ERisk::kBlock), Finding(EKind::kBehavior, ERisk::kAttention)}));
  EXPECT_EQ(totals[0].Of(ERisk::kLoss), 2U);
  EXPECT_EQ(totals[0].Of(ERisk::kBlock), 0U);
  EXPECT_EQ(totals[0].Of(ERisk::kSafe), 1U);
  EXPECT_EQ(totals[1].Of(ERisk::kLoss), 0U);
  EXPECT_EQ(totals[2].Of(ERisk::kBlock), 1U);
  EXPECT_EQ(totals[2].Of(ERisk::kAttention), 1U);
}

TEST(TotalsTest, AcceptedFindingsCountOnlyThere) {
  const auto totals =
      CountTotals(Review({Accepted(Finding(EKind::kLink, ERisk::kLoss)), Finding(EKind::kLink, ERisk::kLoss)}));
  EXPECT_EQ(totals[1].accepted, 1U);
  EXPECT_EQ(totals[1].Of(ERisk::kLoss), 1U);
}

TEST(VerdictTest, WithoutFindingsEverythingIsZero) {
  const SVerdict verdict = CountVerdict(Review({}));
  EXPECT_EQ(verdict.all + verdict.decide + verdict.attention + verdict.safe + verdict.accepted, 0U);
}

TEST(VerdictTest, ToDecideAreLossBlockAndConflictsEachOnce) {
  const SVerdict verdict = CountVerdict(
      Review({Finding(EKind::kClass, ERisk::kLoss), Finding(EKind::kClass, ERisk::kLoss, EOrigin::kBoth),
              Finding(EKind::kLink, ERisk::kBlock), Finding(EKind::kClass, ERisk::kSafe, EOrigin::kBoth),
              Finding(EKind::kClass, ERisk::kAttention, EOrigin::kBoth), Finding(EKind::kClass, ERisk::kAttention),
              Finding(EKind::kClass, ERisk::kSafe), Finding(EKind::kClass, ERisk::kSafe, EOrigin::kVendor)}));
  EXPECT_EQ(verdict.loss, 2U);
  EXPECT_EQ(verdict.block, 1U);
  EXPECT_EQ(verdict.conflicts, 3U);
  EXPECT_EQ(verdict.otherConflicts, 2U);
  EXPECT_EQ(verdict.decide, 5U);
  EXPECT_EQ(verdict.attention, 1U);
  EXPECT_EQ(verdict.safe, 2U);
  EXPECT_EQ(verdict.all, 8U);
}

TEST(VerdictTest, AcceptedFindingsAreNotToDecide) {
  const SVerdict verdict = CountVerdict(Review({Accepted(Finding(EKind::kClass, ERisk::kLoss, EOrigin::kBoth, false)),
                                                Accepted(Finding(EKind::kClass, ERisk::kSafe))}));
  EXPECT_EQ(verdict.loss + verdict.conflicts + verdict.decide + verdict.decideNotReported + verdict.safe, 0U);
  EXPECT_EQ(verdict.accepted, 2U);
  EXPECT_EQ(verdict.all, 2U);
}

TEST(VerdictTest, WhatTheReportDoesNotShowIsCountedOfAllAndOfWhatIsToDecide) {
  const SVerdict verdict = CountVerdict(
      Review({Finding(EKind::kClass, ERisk::kLoss, EOrigin::kVendor, false), Finding(EKind::kClass, ERisk::kLoss),
              Finding(EKind::kClass, ERisk::kSafe, EOrigin::kVendor, false),
              Accepted(Finding(EKind::kClass, ERisk::kSafe, EOrigin::kVendor, false))}));
  EXPECT_EQ(verdict.notReported, 3U);
  EXPECT_EQ(verdict.decideNotReported, 1U);
}

TEST(CountsTest, AFindingCountsWhenItIsAsBadAsTheLevelOrWorse) {
  const SFinding block = Finding(EKind::kClass, ERisk::kBlock);
  EXPECT_FALSE(Counts(block, ERisk::kLoss, false));
  EXPECT_TRUE(Counts(block, ERisk::kBlock, false));
  EXPECT_TRUE(Counts(block, ERisk::kAttention, false));
  EXPECT_TRUE(Counts(block, ERisk::kSafe, false));
}

TEST(CountsTest, WithoutALevelNoneCounts) {
  EXPECT_FALSE(Counts(Finding(EKind::kClass, ERisk::kLoss), std::nullopt, false));
}

TEST(CountsTest, AnAcceptedFindingNeverCounts) {
  EXPECT_FALSE(Counts(Accepted(Finding(EKind::kClass, ERisk::kLoss)), ERisk::kSafe, false));
}

TEST(CountsTest, OfNewOnesOnlyThoseCountThatAreNotKnown) {
  SFinding finding = Finding(EKind::kClass, ERisk::kLoss);
  for (const auto& [since, counts] :
       {std::pair(ESince::kNew, true), std::pair(ESince::kChanged, true), std::pair(ESince::kKnown, false)}) {
    finding.since = since;
    EXPECT_EQ(Counts(finding, ERisk::kSafe, true), counts) << NameOf(since);
    EXPECT_TRUE(Counts(finding, ERisk::kSafe, false)) << NameOf(since);
  }
}

}  // namespace
