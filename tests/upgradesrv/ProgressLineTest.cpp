#include "upgradesrv/ProgressLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "UpgradeDirectory.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using upgradesrv::ProgressItem;
using upgradesrv::ProgressText;

TEST(ProgressTextTest, NamesEachMetamodelAndHowFarItIs) {
  EXPECT_EQ(ProgressText({{"/srv/plm/installation.json", "42%"}, {"/srv/plm/2024/metamodel.json", "7%"}}, 200),
            "upgradesrv: loading /srv/plm/installation.json 42%, /srv/plm/2024/metamodel.json 7%");
}

TEST(ProgressTextTest, LeavesTheLastColumnFree) {
  const std::string line = "upgradesrv: loading /a/plm.db 1 rows";
  EXPECT_EQ(ProgressText({{"/a/plm.db", "1 rows"}}, line.size() + 1), line);
  EXPECT_EQ(ProgressText({{"/a/plm.db", "1 rows"}}, line.size()), "upgradesrv: loading plm.db 1 rows");
}

TEST(ProgressTextTest, WithoutRoomLosesDirectoriesThenItsEnd) {
  EXPECT_EQ(ProgressText({{"/a/long/way/to/plm.json", "42%"}}, 35), "upgradesrv: loading plm.json 42%");
  EXPECT_EQ(ProgressText({{"/a/long/way/to/plm.json", "42%"}}, 24), "upgradesrv: loading plm");
  EXPECT_EQ(ProgressText({{"/a/plm.json", "42%"}}, 1), "");
  EXPECT_EQ(ProgressText({{"/a/plm.json", "42%"}}, 0), "");
}

TEST(ProgressTextTest, CutsWholeCharactersAndTakesThemForWide) {
  // 20 columns before the name; a character of two bytes or three counts two.
  EXPECT_EQ(ProgressText({{"\xC3\xA4\xE4\xB8\xAD.json", "1%"}}, 25), "upgradesrv: loading \xC3\xA4\xE4\xB8\xAD");
  EXPECT_EQ(ProgressText({{"\xC3\xA4\xE4\xB8\xAD.json", "1%"}}, 24), "upgradesrv: loading \xC3\xA4");
}

TEST(ProgressTextTest, KeepsAServersAddressWhole) {
  EXPECT_EQ(ProgressText({{"postgresql://host=/run/postgresql dbname=plm", "12 rows"}}, 60),
            "upgradesrv: loading postgresql://host=/run/postgresql dbnam");
}

TEST(ProgressTextTest, ShowsControlCharactersInAVisibleForm) {
  EXPECT_EQ(ProgressText({{"a\x1B[2J\n.json", "1%"}}, 100), "upgradesrv: loading a\\x1B[2J\\n.json 1%");
}

TEST(ProgressItemTest, IsAShareOfAKnownTotal) {
  CLoadProgress load("plm.json", CLoadProgress::kBytes);
  load.SetTotal(300);
  EXPECT_EQ(ProgressItem(load).source, "plm.json");
  EXPECT_EQ(ProgressItem(load).amount, "0%");
  load.SetDone(200);
  EXPECT_EQ(ProgressItem(load).amount, "66%");
  load.SetDone(300);
  EXPECT_EQ(ProgressItem(load).amount, "100%");
  // A file that grows while it is read.
  load.SetDone(400);
  EXPECT_EQ(ProgressItem(load).amount, "100%");
}

TEST(ProgressItemTest, IsACountWithoutATotal) {
  CLoadProgress document("pipe.json", CLoadProgress::kBytes);
  document.SetDone(12'999'999);
  EXPECT_EQ(ProgressItem(document).amount, "12 MB");
  CLoadProgress database("plm.db", CLoadProgress::kRows);
  database.SetDone(1200);
  EXPECT_EQ(ProgressItem(database).amount, "1200 rows");
}

TEST(ProgressItemTest, IsATableOfSeveralWhereValuesAreCounted) {
  CLoadProgress load("T_PART", CLoadProgress::kTables);
  load.SetTotal(26);
  load.SetDone(2);
  EXPECT_EQ(ProgressText({ProgressItem(load)}, 200), "upgradesrv: counting in T_PART (table 3 of 26)");
}

TEST(ProgressItemTest, HasNoTableBeyondTheTotal) {
  const CLoadProgress load("T_PART", CLoadProgress::kTables);
  EXPECT_EQ(ProgressText({ProgressItem(load)}, 200), "upgradesrv: counting in T_PART (table 1 of 1)");
}

/// Runs in which loading takes long: the client's metamodel comes through a pipe into which it is written late.
class ProgressLineTest : public testing::Test {
 protected:
  ProgressLineTest() {
    std::filesystem::rename(upgrade_.File("installation.json"), upgrade_.File("content.json"));
    EXPECT_EQ(mkfifo(upgrade_.File("installation.json").c_str(), 0600), 0);
  }

  void SetUp() override {
    if (!std::filesystem::exists("/usr/bin/script")) {
      GTEST_SKIP() << "NOT TESTED: output to a terminal needs /usr/bin/script";
    }
  }

  /// What a terminal receives. The metamodel is written once the shell's `when` has ended; "$T" there is the file with
  /// what the terminal has received so far.
  std::string Terminal(const std::string& options, const std::string& when, const std::string& term = "xterm") const {
    const std::string received = upgrade_.File("received");
    const std::string command = UPGRADESRV_EXECUTABLE " run " + options + " '" + upgrade_.Path() + "'";
    const test::SProcessResult result =
        test::Run({"/bin/sh", "-c",
                   "export TERM=" + term + "; T='" + received + "'; (" + when + "; cat '" +
                       upgrade_.File("content.json") + "' >'" + upgrade_.File("installation.json") +
                       "') & /usr/bin/script -qefc \"stty columns 300; exec $0\" \"$T\" >/dev/null; status=$?; wait; "
                       "exit $status",
                   command});
    EXPECT_EQ(result.status, 1) << result.errors;
    return test::ReadFile(received);
  }

  test::CUpgradeDirectory upgrade_;
};

constexpr const char* kUntilShown = "until grep -q loading \"$T\" 2>/dev/null; do sleep 0.1; done";
constexpr const char* kLongEnough = "sleep 2";

TEST_F(ProgressLineTest, ShowsWhatIsLoadedAndIsErasedBeforeTheReport) {
  const std::string received = Terminal("", kUntilShown);
  EXPECT_THAT(received, HasSubstr("\r\x1B[Kupgradesrv: loading " + upgrade_.File("installation.json") + " 0 MB"));
  EXPECT_THAT(received, HasSubstr("\r\x1B[K\r\nDeleted behavior:\r\n"));
}

TEST_F(ProgressLineTest, IsTurnedOffByQuiet) {
  const std::string received = Terminal("--quiet", kLongEnough);
  EXPECT_THAT(received, HasSubstr("Deleted behavior:"));
  EXPECT_THAT(received, Not(HasSubstr("loading")));
  EXPECT_THAT(received, Not(HasSubstr("\x1B[K")));
}

TEST_F(ProgressLineTest, IsNotShownWhereStandardErrorIsNoTerminal) {
  const std::string received = Terminal("2>" + upgrade_.File("errors"), kLongEnough);
  EXPECT_THAT(received, HasSubstr("Deleted behavior:"));
  EXPECT_THAT(received, Not(HasSubstr("loading")));
  EXPECT_THAT(test::ReadFile(upgrade_.File("errors")), Not(HasSubstr("loading")));
}

TEST_F(ProgressLineTest, IsNotShownOnATerminalThatCannotEraseALine) {
  const std::string received = Terminal("", kLongEnough, "dumb");
  EXPECT_THAT(received, HasSubstr("Deleted behavior:"));
  EXPECT_THAT(received, Not(HasSubstr("loading")));
}

}  // namespace
