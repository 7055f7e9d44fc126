// The process is killed at many moments: the document is the earlier or a complete new one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "faults/SavingRun.h"

namespace {

using test::CSavingRun;
using test::ETarget;
using test::SOutcome;
using testing::AnyOf;

constexpr int kKilled = 128 + SIGKILL;

class SaveKilledTest : public testing::TestWithParam<ETarget> {
 protected:
  CSavingRun run_{GetParam()};

  void ExpectWholeDocument(const SOutcome& outcome) {
    EXPECT_THAT(outcome.document, AnyOf("earlier", "new"));
    if (outcome.process.status != kKilled) {
      EXPECT_EQ(outcome.process.status, 1);
      EXPECT_EQ(outcome.document, "new");
      EXPECT_TRUE(outcome.process.output == run_.Report());
      // What the killed runs before it have left is gone.
      EXPECT_THAT(outcome.strays, testing::IsEmpty());
    }
  }
};

TEST_P(SaveKilledTest, InPlaceOfAnySystemCallLeavesAWholeDocument) {
  for (const std::string call : {"stat", "lstat", "flock", "write", "fsync", "close", "rename", "open"}) {
    int position = 0;
    for (bool killed = true; killed;) {
      const SOutcome outcome = run_.Run(call + ":" + std::to_string(++position) + ":kill");
      SCOPED_TRACE(call + " " + std::to_string(position));
      killed = outcome.process.status == kKilled;
      ExpectWholeDocument(outcome);
    }
    EXPECT_GT(position, 1) << call;
  }
}

TEST_P(SaveKilledTest, InTheMiddleOfAWriteLeavesTheEarlierDocument) {
  for (int position = 1; position <= 3; ++position) {
    const std::string at = "write:" + std::to_string(position);
    const SOutcome outcome = run_.Run(at + ":short,write:" + std::to_string(position + 1) + ":kill");
    EXPECT_EQ(outcome.process.status, kKilled);
    EXPECT_EQ(outcome.document, "earlier");
  }
}

TEST_P(SaveKilledTest, AtAnyMomentLeavesAWholeDocument) {
  bool before = false;
  SOutcome outcome;
  // In steps of a millisecond, until one run is quick enough.
  for (int milliseconds = 1; !before || outcome.process.status == kKilled; ++milliseconds) {
    const std::string seconds = std::to_string(milliseconds / 1000.0);
    outcome = run_.RunInShell("exec /usr/bin/timeout -s KILL " + seconds + " \"$0\" run \"$1\"");
    SCOPED_TRACE(seconds);
    ExpectWholeDocument(outcome);
    before = before || (outcome.process.status == kKilled && outcome.document == "earlier");
    ASSERT_LT(milliseconds, 20000);
  }
}

TEST_P(SaveKilledTest, LeavesNothingThatTheNextRunDoesNotClearAway) {
  for (const std::string at : {"write:2", "fsync:1", "rename:1"}) {
    EXPECT_EQ(run_.Run(at + ":kill").strays.size(), 1U) << at;
    const SOutcome outcome = run_.RunAgain();
    EXPECT_EQ(outcome.process.status, 1);
    EXPECT_EQ(outcome.document, "new");
    EXPECT_THAT(outcome.strays, testing::IsEmpty()) << at;
  }
}

INSTANTIATE_TEST_SUITE_P(Targets, SaveKilledTest, testing::Values(ETarget::kFile, ETarget::kNothing, ETarget::kLink),
                         [](const auto& test) { return test::NameOf(test.param); });

}  // namespace
