#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "support/Process.h"
#include "support/TemporaryDirectory.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kExample = std::string(UPGRADESRV_SOURCE_DIR) + "/examples/upgrade";
const std::string kMetamodel = R"({"generation": 2024, "classes": [{"internal_name": "Part"}]})";

class InitCommandTest : public testing::Test {
 protected:
  test::SProcessResult Init(const std::vector<std::string>& arguments) const {
    std::vector<std::string> all = {"init"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return test::RunTool(all, directory_.Path());
  }
  /// As a user who has no rights beyond those of everyone.
  test::SProcessResult InitAsNobody(const std::string& directory) const {
    std::vector<std::string> command = {UPGRADESRV_EXECUTABLE, "init", directory};
    if (geteuid() == 0) {
      command.insert(command.begin(), {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
    }
    return test::Run(command, directory_.Path());
  }
  test::SProcessResult Tool(const std::vector<std::string>& arguments) const {
    return test::RunTool(arguments, directory_.Path());
  }

  /// What is below the directory.
  std::set<std::string> Entries(const std::string& name = "") const {
    std::set<std::string> paths;
    const fs::path root = directory_.File(name);
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      paths.insert(fs::relative(entry.path(), root));
    }
    return paths;
  }
  std::string Text(const std::string& name) const { return test::ReadFile(directory_.File(name)); }

  test::CTemporaryDirectory directory_;
};

TEST_F(InitCommandTest, RefusesADash) {
  EXPECT_EQ(test::TroubleOf(Init({"-"})), "-: \"-\" is not taken for a name; write ./- for a directory of this name");
  EXPECT_THAT(Entries(), IsEmpty());
  EXPECT_EQ(Init({"./-"}).status, 0);
}

TEST_F(InitCommandTest, MakesADirectoryThatWaitsForTwoMetamodels) {
  const test::SProcessResult result = Init({"up"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "up is ready. Next:\n\n"
            "  upgradesrv metamodel copy SHIPPED up/2024/metamodel.json\n"
            "  upgradesrv metamodel copy INSTALLED up/installation.json\n"
            "  upgradesrv run up\n"
            "  upgradesrv review up\n\n"
            "SHIPPED is the metamodel that is shipped with the new version.\n"
            "INSTALLED is the metamodel of the installation.\n"
            "Metamodels are documents or databases: \"upgradesrv metamodel copy --help\" says which. Instead of a "
            "copy,\nup/upgrade.json may name the place that a metamodel is in.\n");
  EXPECT_THAT(Entries("up"), ElementsAre("2024", "multilanguage", "multilanguage/strings",
                                         "multilanguage/strings/info.json", "upgrade.json"));
  EXPECT_EQ(Text("up/upgrade.json"), R"({
  "lang": "en",
  "version": "2024",
  "original_metamodel": "2024/metamodel.json",
  "client_metamodel": "installation.json",
  "strategies": [
    {
      "module": "checkmeta2024",
      "class": "CCheckMetaStrategy2024",
      "parameter": {
        "execute_elements": [
          "class",
          "link",
          "behavior"
        ]
      }
    }
  ]
}
)");
}

TEST_F(InitCommandTest, TheDisplayTextsAreTheExamples) {
  ASSERT_EQ(Init({"up"}).status, 0);
  EXPECT_EQ(Text("up/multilanguage/strings/info.json"), test::ReadFile(kExample + "/multilanguage/strings/info.json"));
}

TEST_F(InitCommandTest, TheStepsThatItNamesLeadToARunAndAReview) {
  ASSERT_EQ(Init({"up"}).status, 0);
  EXPECT_EQ(Tool({"metamodel", "copy", kExample + "/2024/metamodel.json", "up/2024/metamodel.json"}).status, 0);
  EXPECT_EQ(Tool({"metamodel", "copy", kExample + "/installation.json", "up/installation.json"}).status, 0);
  const test::SProcessResult run = Tool({"run", "up"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.output, Tool({"run", kExample}).output);
  EXPECT_EQ(Tool({"review", "up"}).status, 1);
}

TEST_F(InitCommandTest, RelativeLocationsAreWrittenAsSeenFromUpgradeJson) {
  directory_.Write("shipped.json", kMetamodel);
  fs::create_directories(directory_.File("data/models"));
  directory_.Write("data/models/client.json", kMetamodel);
  ASSERT_EQ(Tool({"metamodel", "copy", "shipped.json", "base.db"}).status, 0);
  fs::create_directory(directory_.File("upgrades"));
  const test::SProcessResult result = Init({"--original", "shipped.json", "--client", "data/models/client.json",
                                            "--base", "sqlite3://base.db", "upgrades/up/"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output,
            "upgrades/up is ready. Next:\n\n  upgradesrv run upgrades/up\n  upgradesrv review upgrades/up\n");
  EXPECT_THAT(Text("upgrades/up/upgrade.json"), HasSubstr(R"(
  "original_metamodel": "../../shipped.json",
  "client_metamodel": "../../data/models/client.json",
  "base_metamodel": "sqlite3://../../base.db",
)"));
  EXPECT_EQ(Tool({"run", "upgrades/up"}).status, 0);
  EXPECT_EQ(Tool({"review", "upgrades/up"}).status, 0);
}

TEST_F(InitCommandTest, RelativeLocationsHoldBehindLinks) {
  fs::create_directories(directory_.File("real/deep"));
  fs::create_directory_symlink("real/deep", directory_.File("link"));
  directory_.Write("real/deep/m.json", kMetamodel);
  ASSERT_EQ(Init({"--original", "link/m.json", "--client", "real/deep/m.json", "link/up"}).status, 0);
  EXPECT_THAT(Text("real/deep/up/upgrade.json"), HasSubstr(R"(
  "original_metamodel": "../m.json",
  "client_metamodel": "../m.json",
)"));
  EXPECT_EQ(Tool({"run", "link/up"}).status, 0);
}

TEST_F(InitCommandTest, AbsoluteLocationsAndServersAreWrittenAsTheyAre) {
  const std::string path = directory_.Write("shipped.json", kMetamodel);
  ASSERT_EQ(Init({"--original", path, "up"}).status, 0);
  EXPECT_THAT(Text("up/upgrade.json"), HasSubstr("\"original_metamodel\": \"" + path + "\",\n"));
}

TEST_F(InitCommandTest, OneLocationLeavesTheOtherStep) {
  directory_.Write("shipped.json", kMetamodel);
  const test::SProcessResult result = Init({"--original", "shipped.json", "my up"});
  EXPECT_EQ(result.output,
            "my up is ready. Next:\n\n"
            "  upgradesrv metamodel copy INSTALLED 'my up/installation.json'\n"
            "  upgradesrv run 'my up'\n"
            "  upgradesrv review 'my up'\n\n"
            "INSTALLED is the metamodel of the installation.\n"
            "Metamodels are documents or databases: \"upgradesrv metamodel copy --help\" says which. Instead of a "
            "copy,\nmy up/upgrade.json may name the place that a metamodel is in.\n");
}

TEST_F(InitCommandTest, TakesAnEmptyDirectoryAndTheCurrentOne) {
  fs::create_directory(directory_.File("empty"));
  EXPECT_EQ(Init({"empty"}).status, 0);
  fs::create_directory(directory_.File("here"));
  const test::SProcessResult result = test::RunTool({"init", "."}, directory_.File("here"));
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(Entries("here"), Entries("empty"));
}

TEST_F(InitCommandTest, WritesTheLanguage) {
  ASSERT_EQ(Init({"--lang", "de", "up"}).status, 0);
  EXPECT_THAT(Text("up/upgrade.json"), StartsWith("{\n  \"lang\": \"de\",\n"));
}

TEST_F(InitCommandTest, RefusesAnUnknownLanguageWithASuggestion) {
  const std::string languages = "languages are de, en, es, fr, ja, zh";
  EXPECT_EQ(test::TroubleOf(Init({"--lang", "de_AT", "up"})),
            "--lang: there are no display texts in \"de_AT\"; did you mean de? The " + languages);
  EXPECT_EQ(test::TroubleOf(Init({"--lang", "EN", "up"})),
            "--lang: there are no display texts in \"EN\"; did you mean en? The " + languages);
  EXPECT_EQ(test::TroubleOf(Init({"--lang", "it", "up"})),
            "--lang: there are no display texts in \"it\"; the " + languages);
  EXPECT_THAT(Entries(), IsEmpty());
}

TEST_F(InitCommandTest, TouchesNothingThatIsThere) {
  directory_.Write("up/notes.txt", "mine");
  EXPECT_EQ(test::TroubleOf(Init({"up"})),
            "up: is not empty, and nothing that is there is touched; give the path of a new directory");
  EXPECT_THAT(Entries("up"), ElementsAre("notes.txt"));
  EXPECT_EQ(test::TroubleOf(Init({"up/notes.txt"})),
            "up/notes.txt: is there and not a directory; give the path of a new directory");
  EXPECT_EQ(Text("up/notes.txt"), "mine");
}

TEST_F(InitCommandTest, ALinkThatLeadsNowhereIsCalledOne) {
  fs::create_symlink("gone", directory_.File("up"));
  EXPECT_EQ(test::TroubleOf(Init({"up"})),
            "up: is a symbolic link to gone, which leads nowhere; give the path of a new directory");
  EXPECT_FALSE(fs::exists(directory_.File("gone")));
}

TEST_F(InitCommandTest, ASecondOneLeavesTheFirstAlone) {
  ASSERT_EQ(Init({"up"}).status, 0);
  const std::string before = Text("up/upgrade.json");
  EXPECT_THAT(test::TroubleOf(Init({"--lang", "de", "up"})), StartsWith("up: is not empty"));
  EXPECT_EQ(Text("up/upgrade.json"), before);
}

TEST_F(InitCommandTest, NamesTheDirectoryThatIsMissing) {
  EXPECT_EQ(
      test::TroubleOf(Init({"absent/up"})),
      "absent/up: cannot be made: No such file or directory; make the directory absent first; nothing was changed");
  EXPECT_THAT(Entries(), IsEmpty());
}

TEST_F(InitCommandTest, MakesNothingInAReadOnlyPlace) {
  fs::create_directory(directory_.File("locked"));
  fs::permissions(directory_.File("locked"),
                  fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
  fs::permissions(directory_.Path(), fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
  EXPECT_EQ(test::TroubleOf(InitAsNobody("locked/up")),
            "locked/up: cannot be made: Permission denied; nothing was changed");
  EXPECT_EQ(test::TroubleOf(InitAsNobody("locked")),
            "locked/multilanguage: cannot be made: Permission denied; nothing was changed");
  EXPECT_THAT(Entries("locked"), IsEmpty());
}

TEST_F(InitCommandTest, MakesNothingForMetamodelsThatCannotBeLoaded) {
  directory_.Write("bad.json", "{\"generation\": 2024, \"links\": [1, 2]}");
  EXPECT_EQ(test::TroubleOf(Init({"--client", "bad.json", "up"})),
            "--client: bad.json:1:32: /links/0: expected an object, found a number; this is the first of 2 faults; "
            "\"upgradesrv metamodel check\" lists what has to be mended");
  EXPECT_EQ(test::TroubleOf(Init({"--base", "absent.json", "up"})),
            "absent.json: cannot be read: No such file or directory");
  EXPECT_THAT(test::TroubleOf(Init({"--original", "shipped.xml", "up"})),
              StartsWith("shipped.xml: not a metamodel location; "));
  EXPECT_THAT(Entries(), ElementsAre("bad.json"));
}

TEST_F(InitCommandTest, APasswordIsNotWrittenDown) {
  for (const char* location : {"postgresql://host=h password=secret", "postgresql://u:secret@h/d"}) {
    EXPECT_EQ(test::TroubleOf(Init({"--client", location, "up"})),
              "--client: the location holds a password, which whoever reads upgrade.json would see; put it into the "
              "password file (PGPASSFILE)");
  }
  EXPECT_THAT(Entries(), IsEmpty());
}

TEST_F(InitCommandTest, APipeIsNoPlaceThatCanBeReadAgain) {
  ASSERT_EQ(mkfifo(directory_.File("pipe.json").c_str(), 0600), 0);
  EXPECT_EQ(test::TroubleOf(Init({"--client", "pipe.json", "up"})),
            "--client: pipe.json is a pipe, which cannot be read again; give the path of a file");
}

TEST_F(InitCommandTest, WhatWasMadeIsRemovedWhenADiskIsFull) {
  // No file may be longer than this; the display texts are.
  const test::SProcessResult result = test::RunInShell("ulimit -f 1; \"$0\" init \"$1\" 2>&1", directory_.File("up"));
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.output, HasSubstr("info.json: cannot be saved: File too large; nothing was changed"));
  EXPECT_THAT(Entries(), IsEmpty());
}

}  // namespace
