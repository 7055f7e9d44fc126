// checkMetaError.json that cannot be written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

const std::string kCheck = " (strategy CCheckMetaStrategy2024 of module checkmeta2024, /strategies/0)";

std::vector<std::string> Names(const std::string& directory) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(directory)) {
    names.push_back(entry.path().filename());
  }
  return names;
}

TEST(SaveFailureTest, WhereADirectoryStandsIsTrouble) {
  const test::CUpgradeDirectory upgrade;
  const std::string target = upgrade.File("2024/checkMetaError.json");
  fs::remove(target);
  fs::create_directory(target);
  EXPECT_EQ(test::TroubleOf(upgrade.Run()), target + ": cannot be saved: Is a directory; nothing was changed" + kCheck);
}

TEST(SaveFailureTest, OfAFileThatMayNotGrowLeavesTheEarlierDocumentAndNothingBesideIt) {
  const test::CUpgradeDirectory upgrade;
  // Room for the messages, which go to files too, but not for the document.
  std::string classes;
  for (int i = 0; i < 200; ++i) {
    classes += (i == 0 ? "" : ", ") + (R"({"internal_name": "C)" + std::to_string(i)) + R"("})";
  }
  upgrade.Write("2024/metamodel.json", R"({"generation": 2024, "classes": [)" + classes + "]}");
  const test::SProcessResult result = test::RunInShell("ulimit -f 8; exec \"$0\" run \"$1\"", upgrade.Path());
  EXPECT_EQ(test::TroubleOf(result), upgrade.File("2024/checkMetaError.json") +
                                         ": cannot be saved: File too large; nothing was changed" + kCheck);
  EXPECT_TRUE(upgrade.HasEarlierDocument());
  EXPECT_THAT(Names(upgrade.File("2024")), testing::UnorderedElementsAre("metamodel.json", "checkMetaError.json"));
  EXPECT_EQ(upgrade.Run().status, 1);
}

TEST(SaveFailureTest, OnAFullDiskLeavesTheEarlierDocumentAndNothingBesideIt) {
  const test::CUpgradeDirectory upgrade;
  // The version directory becomes a disk of one page that the earlier document fills, in a mount namespace of its own.
  const std::string command = R"(exec unshare --mount /bin/sh -c '
      cp -r "$1/2024" "$1/shipped" && mount -t tmpfs -o size=4k none "$1/2024" || exit 77
      head -c 4096 /dev/zero > "$1/2024/checkMetaError.json"
      "$0" run --original "$1/shipped/metamodel.json" "$1"
      status=$?
      ls "$1/2024"; wc -c < "$1/2024/checkMetaError.json"
      exit $status' "$0" "$1")";
  const test::SProcessResult result = test::RunInShell(command, upgrade.Path());
  if (result.status == 77 || result.errors.find("unshare") != std::string::npos) {
    GTEST_SKIP() << "NOT TESTED: a full disk needs the right to mount one: " << result.errors;
  }
  EXPECT_EQ(test::ErrorOf(result), upgrade.File("2024/checkMetaError.json") +
                                       ": cannot be saved: No space left on device; nothing was changed" + kCheck);
  EXPECT_EQ(result.output, "checkMetaError.json\n4096\n");
}

}  // namespace
