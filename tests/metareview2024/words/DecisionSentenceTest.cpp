#include "metareview2024/words/DecisionSentence.h"

#include <gtest/gtest.h>

#include "metareview2024/Finding.h"

namespace metareview {
namespace {

SDecision Decision() {
  SDecision decision;
  decision.path = "class/Part/property/Code/length";
  decision.original = 32U;
  decision.client = 40U;
  decision.acceptance.reason = "fine";
  return decision;
}

TEST(DecisionSentenceTest, SaysWhatWasAcceptedAndWhatIsThereNow) {
  EXPECT_EQ(Plain(OutdatedSentence(CWords::English(), {Decision(), 30U, 48U})),
            "class/Part/property/Code/length: accepted for 40 here and 32 shipped, now 48 here and 30 shipped. "
            "Reason: fine");
}

TEST(DecisionSentenceTest, SaysUntilWhenItWasAccepted) {
  SDecision decision = Decision();
  decision.acceptance.until = "2026-10-31";
  EXPECT_EQ(Plain(ExpiredSentence(CWords::English(), decision)),
            "class/Part/property/Code/length: accepted until 2026-10-31. Reason: fine");
}

TEST(DecisionSentenceTest, NothingStandsForADayThatIsNotKnown) {
  EXPECT_EQ(Plain(ExpiredSentence(CWords::English(), Decision())),
            "class/Part/property/Code/length: accepted until . Reason: fine");
}

TEST(DecisionSentenceTest, SaysThatNothingDiffers) {
  EXPECT_EQ(Plain(StaleSentence(CWords::English(), Decision())),
            "class/Part/property/Code/length: nothing differs there. Reason: fine");
}

TEST(DecisionSentenceTest, SaysWhatHasGone) {
  const auto gone = [](const char* path, EChange change) {
    return Plain(GoneSentence(CWords::English(), {FindingId(path, change), path, change}));
  };
  EXPECT_EQ(gone("class/A", EChange::kInserted), "class/A: was only here.");
  EXPECT_EQ(gone("class/A", EChange::kDeleted), "class/A: was only in the upgrade.");
  EXPECT_EQ(gone("class/A/class_id", EChange::kChanged), "class/A/class_id: differed.");
}

}  // namespace
}  // namespace metareview
