// The process is asked to end at many moments: it dies of the signal at once, the document is the earlier or a complete
// new one, and nothing lies beside it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <ostream>
#include <string>
#include <tuple>

#include "faults/SavingRun.h"

namespace {

using test::CSavingRun;
using test::ETarget;
using test::SOutcome;
using testing::AnyOf;
using testing::IsEmpty;

struct SSignal {
  const char* name;
  int number;
};

void PrintTo(const SSignal& signal, std::ostream* out) {
  *out << signal.name;
}

class SaveEndedTest : public testing::TestWithParam<std::tuple<ETarget, SSignal>> {
 protected:
  CSavingRun run_{std::get<0>(GetParam())};
  SSignal signal_ = std::get<1>(GetParam());
  const int ended_ = 128 + signal_.number;

  void ExpectWhole(const SOutcome& outcome) {
    EXPECT_THAT(outcome.document, AnyOf("earlier", "new"));
    EXPECT_THAT(outcome.strays, IsEmpty());
    if (outcome.process.status != ended_) {
      EXPECT_EQ(outcome.process.status, 1);
      EXPECT_EQ(outcome.document, "new");
      EXPECT_TRUE(outcome.process.output == run_.Report());
    }
  }
};

TEST_P(SaveEndedTest, InPlaceOfAnySystemCallLeavesNothingBeside) {
  for (const std::string call : {"stat", "lstat", "flock", "write", "fsync", "close", "rename", "open"}) {
    int position = 0;
    for (bool ended = true; ended;) {
      const SOutcome outcome = run_.Run(call + ":" + std::to_string(++position) + ":" + signal_.name);
      SCOPED_TRACE(call + " " + std::to_string(position));
      ended = outcome.process.status == ended_;
      ExpectWhole(outcome);
    }
    EXPECT_GT(position, 1) << call;
  }
}

TEST_P(SaveEndedTest, AtAnyMomentLeavesNothingBeside) {
  bool before = false;
  SOutcome outcome;
  // In steps of two milliseconds, until one run is quick enough.
  for (int milliseconds = 1; !before || outcome.process.status == ended_; milliseconds += 2) {
    const std::string seconds = std::to_string(milliseconds / 1000.0);
    outcome = run_.RunInShell(std::string("exec /usr/bin/timeout --preserve-status -s ") + signal_.name + " " +
                              seconds + " \"$0\" run \"$1\"");
    SCOPED_TRACE(seconds);
    ExpectWhole(outcome);
    before = before || (outcome.process.status == ended_ && outcome.document == "earlier");
    ASSERT_LT(milliseconds, 20000);
  }
}

constexpr SSignal kTerm = {"TERM", SIGTERM};
constexpr SSignal kInt = {"INT", SIGINT};

INSTANTIATE_TEST_SUITE_P(Targets, SaveEndedTest,
                         testing::Values(std::tuple(ETarget::kFile, kTerm), std::tuple(ETarget::kNothing, kInt),
                                         std::tuple(ETarget::kLink, kTerm)),
                         [](const auto& test) {
                           return test::NameOf(std::get<0>(test.param)) + "_" + std::get<1>(test.param).name;
                         });

}  // namespace
