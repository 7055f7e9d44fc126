// Every system call of a run fails in turn: the first of its kind, the second, and so on until a run needs no failure.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <ostream>
#include <string>
#include <tuple>

#include "faults/SavingRun.h"

namespace {

using test::CSavingRun;
using test::ETarget;
using test::SOutcome;
using testing::HasSubstr;

struct SCall {
  const char* name;
  int error;
  /// How often a run calls it at least; so much can fail.
  int count;
};

void PrintTo(const SCall& call, std::ostream* output) {
  *output << call.name;
}

std::string Fault(const std::string& call, int position, const std::string& effect) {
  return call + ":" + std::to_string(position) + ":" + effect;
}

class SaveFailsTest : public testing::TestWithParam<std::tuple<SCall, ETarget>> {
 protected:
  SaveFailsTest() : run_(std::get<ETarget>(GetParam())) {}

  /// Runs until the fault comes too late to happen; answers with how often it did.
  int FailInTurn(const std::string& repeat) {
    const SCall call = std::get<SCall>(GetParam());
    for (int position = 1;; ++position) {
      const std::string fault =
          call.name + (":" + std::to_string(position)) + repeat + ":" + std::to_string(call.error);
      SCOPED_TRACE(fault);
      const SOutcome outcome = run_.Run(fault);
      test::ExpectTruth(outcome, run_.Report());
      if (!outcome.faulted || HasFailure()) {
        EXPECT_EQ(outcome.process.status, 1);
        return position - 1;
      }
      if (call.name == std::string("fsync")) {
        EXPECT_EQ(outcome.process.status, 2) << "not on disk, but not an error either";
      }
    }
  }

  CSavingRun run_;
};

TEST_P(SaveFailsTest, OnceEachTimeLeavesTheEarlierDocumentOrTheNewOneAndTellsWhich) {
  EXPECT_GE(FailInTurn(""), std::get<SCall>(GetParam()).count);
}

TEST_P(SaveFailsTest, FromEachTimeOnLeavesTheEarlierDocumentOrTheNewOneAndTellsWhich) {
  EXPECT_GE(FailInTurn("+"), std::get<SCall>(GetParam()).count);
}

std::string NameOfFaults(const testing::TestParamInfo<SaveFailsTest::ParamType>& test) {
  return std::get<SCall>(test.param).name + ("_" + std::to_string(std::get<SCall>(test.param).error)) + "_" +
         test::NameOf(std::get<ETarget>(test.param));
}

INSTANTIATE_TEST_SUITE_P(Calls, SaveFailsTest,
                         testing::Combine(testing::Values(SCall{"stat", EIO, 2}, SCall{"lstat", EIO, 1},
                                                          SCall{"fstat", EIO, 3}, SCall{"readlink", EIO, 1},
                                                          SCall{"open", EMFILE, 5}, SCall{"read", EIO, 4},
                                                          SCall{"flock", ENOLCK, 1}, SCall{"flock", EWOULDBLOCK, 1},
                                                          SCall{"write", ENOSPC, 3}, SCall{"fsync", EIO, 2},
                                                          SCall{"close", EIO, 5}, SCall{"rename", EXDEV, 1}),
                                          testing::Values(ETarget::kFile, ETarget::kNothing, ETarget::kLink)),
                         NameOfFaults);

// Only where there is a file whose permissions are handed on.
INSTANTIATE_TEST_SUITE_P(CallsOverAFile, SaveFailsTest,
                         testing::Combine(testing::Values(SCall{"fchmod", EPERM, 1}, SCall{"fchmod", EIO, 1}),
                                          testing::Values(ETarget::kFile, ETarget::kLink)),
                         NameOfFaults);

class SaveTest : public testing::Test {
 protected:
  CSavingRun run_{ETarget::kFile};
};

TEST_F(SaveTest, SaysWhyItFailed) {
  const SOutcome outcome = run_.Run(Fault("fsync", 1, std::to_string(EIO)));
  EXPECT_EQ(test::TroubleOf(outcome.process),
            run_.Directory().File("2024/checkMetaError.json") +
                ": cannot be saved: Input/output error; nothing was changed (strategy CCheckMetaStrategy2024 of module "
                "checkmeta2024, /strategies/0)");
}

TEST_F(SaveTest, SaysThatTheNewDocumentIsThereButPerhapsNotOnDisk) {
  const SOutcome outcome = run_.Run(Fault("fsync", 2, std::to_string(EIO)));
  EXPECT_EQ(outcome.document, "new");
  EXPECT_THAT(test::TroubleOf(outcome.process),
              HasSubstr(": was replaced, but its directory cannot be flushed to disk: Input/output error"));
}

TEST_F(SaveTest, OfManyMegabytesIsWholeWhereNoFlushCanBeginEarly) {
  const SOutcome outcome =
      run_.RunInShell(R"({ printf '{"generation": 2024, "classes": [{"internal_name": "Class", "display_name": "';)"
                      R"( head -c 9000000 /dev/zero | tr '\0' x; printf '"}]}'; } >"$1/2024/metamodel.json";)"
                      " LD_PRELOAD='" UPGRADESRV_FAULT_PRELOAD "' UPGRADESRV_FAULTS='sync_file_range:1+:" +
                      std::to_string(EINVAL) + R"(' UPGRADESRV_FAULT_REPORT="$1/fault" exec "$0" run "$1")");
  EXPECT_EQ(outcome.process.status, 1) << outcome.process.errors;
  EXPECT_TRUE(std::filesystem::exists(run_.Directory().File("fault")));
  const std::string document = test::ReadFile(run_.Directory().File("2024/checkMetaError.json"));
  EXPECT_NE(document.find(R"("display_name": ")" + std::string(9000000, 'x') + "\""), std::string::npos);
  EXPECT_EQ(document.substr(document.size() - 3), "\n}\n");
}

TEST_F(SaveTest, WhoseNewFileCannotBeClosedLeavesTheEarlierDocument) {
  int failures = 0;
  int position = 0;
  for (bool faulted = true; faulted;) {
    const SOutcome outcome = run_.Run(Fault("close", ++position, std::to_string(EIO)));
    faulted = outcome.faulted;
    if (outcome.process.status != 1) {
      EXPECT_THAT(test::TroubleOf(outcome.process), HasSubstr(": cannot be saved: Input/output error; nothing was "));
      EXPECT_EQ(outcome.document, "earlier");
      ++failures;
    }
  }
  EXPECT_EQ(failures, 1);
}

TEST_F(SaveTest, OnAFileSystemThatCannotFlushDirectoriesIsWhole) {
  for (const int error : {EINVAL, ENOTSUP}) {
    const SOutcome outcome = run_.Run(Fault("fsync", 2, std::to_string(error)));
    EXPECT_TRUE(outcome.faulted);
    EXPECT_EQ(outcome.process.status, 1);
    test::ExpectTruth(outcome, run_.Report());
  }
}

TEST_F(SaveTest, InterruptedOrShortWritesAreGoneOnWith) {
  for (const std::string& effect : {std::to_string(EINTR), std::string("short")}) {
    int position = 0;
    for (SOutcome outcome = run_.Run(""); outcome.faulted || position == 0;) {
      outcome = run_.Run(Fault("write", ++position, effect));
      EXPECT_EQ(outcome.process.status, 1) << effect << " " << position << ": " << outcome.process.errors;
      test::ExpectTruth(outcome, run_.Report());
    }
    EXPECT_GT(position, 3);
  }
}

TEST_F(SaveTest, OfWritesThatAreAllShortIsWhole) {
  const SOutcome outcome = run_.Run("write:1+:short");
  EXPECT_TRUE(outcome.faulted);
  EXPECT_EQ(outcome.process.status, 1);
  test::ExpectTruth(outcome, run_.Report());
}

TEST_F(SaveTest, OnADiskThatFillsUpInTheMiddleOfAWriteLeavesTheEarlierDocument) {
  const SOutcome outcome = run_.Run("write:1:short,write:2+:" + std::to_string(ENOSPC));
  EXPECT_EQ(outcome.document, "earlier");
  test::ExpectTruth(outcome, run_.Report());
}

TEST_F(SaveTest, OfAWriteThatGoesNowhereWithoutAnErrorEnds) {
  const SOutcome outcome = run_.Run("write:2+:nothing");
  EXPECT_EQ(outcome.document, "earlier");
  test::ExpectTruth(outcome, run_.Report());
}

TEST_F(SaveTest, ThatCannotEvenRemoveItsTemporaryFileTellsTheTruthAllTheSame) {
  for (const char* call : {"write:2", "fsync:1", "rename:1", "fchmod:1"}) {
    SCOPED_TRACE(call);
    SOutcome outcome =
        CSavingRun(ETarget::kFile).Run(call + (":" + std::to_string(EIO)) + ",unlink:1+:" + std::to_string(EIO));
    EXPECT_EQ(outcome.document, "earlier");
    EXPECT_EQ(outcome.strays.size(), 1U);
    outcome.strays.clear();
    test::ExpectTruth(outcome, "");
  }
}

}  // namespace
