#include "upgradesrv/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "RefusedArguments.h"
#include "UpgradeDirectory.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace {

using SRefused = test::SRefusedArguments;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class RefusedCommandTest : public testing::TestWithParam<test::SRefusedArguments> {};

TEST_P(RefusedCommandTest, IsOneErrorThatLeadsToTheHelp) {
  const test::SProcessResult result = test::RunTool(GetParam().arguments);
  EXPECT_EQ(test::TroubleOf(result), GetParam().message);
  EXPECT_EQ(result.errors, std::string("upgradesrv: error: ") + GetParam().message + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Commands, RefusedCommandTest,
    testing::Values(
        SRefused{"None",
                 {},
                 "no command is given; the commands are init, run, review, decide, explain, metamodel, help; run "
                 "\"upgradesrv "
                 "--help\" for details"},
        SRefused{"Unknown",
                 {"frob", "x"},
                 "unknown command \"frob\"; the commands are init, run, review, decide, explain, metamodel, help; run "
                 "\"upgradesrv "
                 "--help\" for details"},
        SRefused{"Empty",
                 {""},
                 "unknown command \"\"; the commands are init, run, review, decide, explain, metamodel, help; run "
                 "\"upgradesrv "
                 "--help\" for details"},
        SRefused{"UnknownOption", {"--frob"}, "unknown option --frob; run \"upgradesrv --help\" for details"},
        SRefused{"RunWithoutDirectory", {"run"}, "UPGRADE_DIR is required; run \"upgradesrv run --help\" for details"},
        SRefused{"RunWithEmptyDirectory",
                 {"run", ""},
                 "UPGRADE_DIR: the value is empty; run \"upgradesrv run --help\" for details"},
        SRefused{"RunWithUnknownOptionAlone",
                 {"run", "--frob"},
                 "unknown option --frob; run \"upgradesrv run --help\" for details"},
        SRefused{"RunWithoutValue",
                 {"run", ".", "--lang"},
                 "--lang needs a value: CODE; run \"upgradesrv run --help\" for details"},
        SRefused{
            "MetamodelAlone",
            {"metamodel"},
            "no command is given; the commands are show, check, copy; run \"upgradesrv metamodel --help\" for details"},
        SRefused{"MetamodelUnknown",
                 {"metamodel", "frob"},
                 "unknown command \"frob\"; the commands are show, check, copy; run \"upgradesrv metamodel --help\" "
                 "for details"},
        SRefused{"ShowWithoutLocation",
                 {"metamodel", "show"},
                 "LOCATION is required; run \"upgradesrv metamodel show --help\" for details"},
        SRefused{"ShowInUnknownFormat",
                 {"metamodel", "show", "--format", "xml", "a.json"},
                 "--format: must be text or json; run \"upgradesrv metamodel show --help\" for details"},
        SRefused{"CopyWithoutTarget",
                 {"metamodel", "copy", "a.json"},
                 "TARGET is required; run \"upgradesrv metamodel copy --help\" for details"},
        SRefused{"CopyToNoName",
                 {"metamodel", "copy", "a.json", ""},
                 "TARGET: the value is empty; run \"upgradesrv metamodel copy --help\" for details"},
        SRefused{"CopyOfThree",
                 {"metamodel", "copy", "a.json", "b.json", "c.json"},
                 "unexpected argument \"c.json\"; run \"upgradesrv metamodel copy --help\" for details"}),
    [](const auto& test) { return test.param.name; });

TEST(CommandLineTest, VersionGoesToStandardOutput) {
  const test::SProcessResult result = test::RunTool({"--version"});
  EXPECT_EQ(result.status, 0);
  std::vector<std::string> lines;
  std::istringstream output(result.output);
  for (std::string line; std::getline(output, line);) {
    lines.push_back(line);
  }
  const std::string modules = std::filesystem::path(UPGRADESRV_MODULE_DIRECTORY).string();
  EXPECT_THAT(lines, ElementsAre("upgradesrv " UPGRADESRV_VERSION,
                                 testing::MatchesRegex("commit:     ([0-9a-f]{7,40}([+]changes)?|unknown)"),
                                 "generation: 2024", "schema:     2", "modules:    checkmeta2024 in " + modules));
  EXPECT_EQ(result.errors, "");
}

TEST(CommandLineTest, VersionSaysWhereItHasFoundNoModules) {
  const test::CTemporaryDirectory directory;
  namespace fs = std::filesystem;
  fs::create_directory(directory.File("bin"));
  fs::copy(UPGRADESRV_EXECUTABLE, directory.File("bin/upgradesrv"));
  fs::create_directories(directory.File("lib/upgradesrv"));
  for (const auto& entry : fs::directory_iterator(fs::path(UPGRADESRV_MODULE_DIRECTORY).parent_path())) {
    if (entry.path() != UPGRADESRV_MODULE_DIRECTORY) {
      fs::create_symlink(entry.path(), fs::path(directory.File("lib/upgradesrv")) / entry.path().filename());
    }
  }
  const test::SProcessResult result = test::Run({directory.File("bin/upgradesrv"), "--version"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("\nmodules:    none in " + directory.File("lib/upgradesrv/modules") + "\n"));
}

TEST(CommandLineTest, HelpOfACommandIsWhatItsOptionPrints) {
  for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
           {}, {"run"}, {"review"}, {"metamodel"}, {"metamodel", "check"}, {"help"}}) {
    std::vector<std::string> words = {"help"};
    words.insert(words.end(), command.begin(), command.end());
    std::vector<std::string> option = command;
    option.emplace_back("--help");
    const test::SProcessResult result = test::RunTool(words);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, test::RunTool(option).output);
    EXPECT_EQ(result.errors, "");
  }
}

TEST(CommandLineTest, HelpOfNoCommandIsTrouble) {
  EXPECT_EQ(test::TroubleOf(test::RunTool({"help", "frob"})),
            "unknown command \"frob\"; the commands are init, run, review, decide, explain, metamodel, help");
  EXPECT_EQ(test::TroubleOf(test::RunTool({"help", "metamodel", "frob"})),
            "unknown command \"frob\"; the commands are show, check, copy");
  EXPECT_EQ(test::TroubleOf(test::RunTool({"help", "run", "frob"})),
            "\"upgradesrv run\" has no commands of its own; run \"upgradesrv run --help\" for details");
}

TEST(CommandLineTest, HelpNamesTheCommands) {
  for (const char* option : {"--help", "-h"}) {
    const test::SProcessResult result = test::RunTool({option});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, AllOf(HasSubstr("Usage: upgradesrv "), HasSubstr("\n  run "),
                                     HasSubstr("\n  metamodel "), HasSubstr("--version")));
    EXPECT_EQ(result.errors, "");
  }
}

TEST(CommandLineTest, HelpOfRunNamesItsOptionsAndExitStatuses) {
  const test::SProcessResult result = test::RunTool({"run", "--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output,
              AllOf(HasSubstr("Usage: upgradesrv run "), HasSubstr("--lang CODE"), HasSubstr("--original LOCATION"),
                    HasSubstr("--client LOCATION"), HasSubstr("--elements KIND[,KIND...]"),
                    HasSubstr("--module-dir DIR ..."), HasSubstr("UPGRADE_DIR"),
                    HasSubstr("Exit status: 0 nothing to report, 1 differences reported, 2 the run failed.")));
}

TEST(CommandLineTest, HelpOfMetamodelNamesItsCommandsAndTheirOptions) {
  EXPECT_THAT(test::RunTool({"metamodel", "--help"}).output, AllOf(HasSubstr("\n  show "), HasSubstr("\n  copy ")));
  EXPECT_THAT(test::RunTool({"metamodel", "show", "--help"}).output,
              AllOf(HasSubstr("LOCATION"), HasSubstr("--format FORMAT")));
  EXPECT_THAT(test::RunTool({"metamodel", "copy", "--help"}).output,
              AllOf(HasSubstr("SOURCE"), HasSubstr("TARGET"), HasSubstr("--replace")));
}

TEST(CommandLineTest, HelpRunsNothing) {
  const test::CUpgradeDirectory upgrade;
  const test::SProcessResult result = upgrade.Run({"--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, Not(HasSubstr(test::kClassReport)));
  EXPECT_TRUE(upgrade.HasEarlierDocument());
}

TEST(CommandLineTest, ThrowsNothingAndAnswersWithTheStatus) {
  const char* const arguments[] = {"upgradesrv", "metamodel", "show", "/nonexistent/metamodel.json"};
  testing::internal::CaptureStderr();
  EXPECT_EQ(upgradesrv::RunCommandLine(4, arguments), upgradesrv::kTrouble);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "upgradesrv: error: /nonexistent/metamodel.json: cannot be read: No such file or directory\n");
}

}  // namespace
