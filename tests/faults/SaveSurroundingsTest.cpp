// What goes on around a run that saves: another run on the same directory, a directory that vanishes or takes nothing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "faults/SavingRun.h"

namespace {

namespace fs = std::filesystem;
using test::CSavingRun;
using test::ETarget;
using test::SOutcome;
using testing::AllOf;
using testing::AnyOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// Both runs, and a reader that looks at the document until both have ended and prints what is neither's whole one.
constexpr const char* kTwoRuns = R"(
  "$0" run --elements class "$1" >/dev/null & first=$!
  "$0" run --elements class,link "$1" >/dev/null & second=$!
  while kill -0 $first 2>/dev/null || kill -0 $second 2>/dev/null; do
    cp "$1/2024/checkMetaError.json" "$1/seen"
    cmp -s "$1/seen" "$1/one" || cmp -s "$1/seen" "$1/other" || { echo torn; head -c 100 "$1/seen"; }
  done
  wait $first; echo $?
  wait $second; echo $?)";

class TwoRunsTest : public testing::TestWithParam<ETarget> {};

TEST_P(TwoRunsTest, OnOneDirectoryLeaveAndShowWholeDocumentsOnly) {
  const CSavingRun whole(GetParam());
  const test::CUpgradeDirectory& upgrade = whole.Directory();
  ASSERT_EQ(upgrade.Run({"--elements", "class"}).status, 1);
  upgrade.Write("one", upgrade.Document());
  ASSERT_EQ(upgrade.Run({"--elements", "class,link"}).status, 1);
  upgrade.Write("other", upgrade.Document());
  ASSERT_NE(fs::file_size(upgrade.File("one")), fs::file_size(upgrade.File("other")));
  const bool link = fs::is_symlink(upgrade.File("2024/checkMetaError.json"));
  for (int round = 0; round < 25; ++round) {
    EXPECT_EQ(test::RunInShell(kTwoRuns, upgrade.Path()).output, "1\n1\n");
    EXPECT_EQ(fs::is_symlink(upgrade.File("2024/checkMetaError.json")), link);
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(upgrade.File("2024")), {}), 2);
}

INSTANTIATE_TEST_SUITE_P(Targets, TwoRunsTest, testing::Values(ETarget::kFile, ETarget::kLink),
                         [](const auto& test) { return test::NameOf(test.param); });

TEST(SaveSurroundingsTest, VersionDirectoryThatVanishesDuringTheRunIsTrouble) {
  CSavingRun run(ETarget::kFile);
  const test::CUpgradeDirectory& upgrade = run.Directory();
  upgrade.Write("shipped.json", test::ReadFile(upgrade.File("2024/metamodel.json")));
  // The run waits for the client's metamodel, and so has already found the directory, when that goes.
  const test::SProcessResult result = test::RunInShell(
      R"(mkfifo "$1/pipe.json"
         { exec 3>"$1/pipe.json"; rm -r "$1/2024"; cat "$1/installation.json" >&3; } &
         exec "$0" run --client "$1/pipe.json" --original "$1/shipped.json" "$1")",
      upgrade.Path());
  EXPECT_THAT(test::TroubleOf(result), AllOf(StartsWith(upgrade.File("2024/checkMetaError.json")),
                                             HasSubstr(": cannot be saved: No such file or directory;")));
  EXPECT_FALSE(fs::exists(upgrade.File("2024")));
}

TEST(SaveSurroundingsTest, DirectoryThatCannotBeWrittenToLeavesTheEarlierDocument) {
  CSavingRun run(ETarget::kFile);
  // A mount of its own: permissions would not stop an administrator.
  const SOutcome outcome = run.RunInShell(R"(exec unshare --mount /bin/sh -c '
      mount --bind "$1/2024" "$1/2024" && mount -o remount,bind,ro "$1/2024" || exit 77
      exec "$0" run "$1"' "$0" "$1")");
  if (outcome.process.status == 77 || outcome.process.errors.find("unshare") != std::string::npos) {
    GTEST_SKIP() << "NOT TESTED: a read-only directory needs the right to mount one: " << outcome.process.errors;
  }
  EXPECT_EQ(outcome.document, "earlier");
  EXPECT_THAT(test::TroubleOf(outcome.process), HasSubstr(": cannot be saved: Read-only file system; nothing was "));
  test::ExpectTruth(outcome, run.Report());
}

TEST(SaveSurroundingsTest, OwnerThatCannotBeKeptIsNoted) {
  CSavingRun run(ETarget::kFile);
  const test::CUpgradeDirectory& upgrade = run.Directory();
  // Another user may replace the document of this one in a directory of theirs both.
  const SOutcome outcome = run.RunInShell(R"(
      chmod 0755 "$1" && chmod 0777 "$1/2024" && chmod 0644 "$1/2024/checkMetaError.json" || exit 77
      setpriv --reuid 65534 --regid 65534 --clear-groups test -x "$0" || exit 77
      exec setpriv --reuid 65534 --regid 65534 --clear-groups "$0" run "$1")");
  if (outcome.process.status == 77) {
    GTEST_SKIP() << "NOT TESTED: only an administrator can run the tool as another user, who may read it: "
                 << outcome.process.errors;
  }
  EXPECT_THAT(outcome.process.errors,
              HasSubstr("upgradesrv: " + upgrade.File("2024/checkMetaError.json") +
                        ": was replaced, but this process may not give the new file the group 0, owner 0 of the old "
                        "one\n"));
  test::ExpectTruth(outcome, run.Report());
}

}  // namespace
