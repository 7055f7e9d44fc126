#include "upgradesrv/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RefusedArguments.h"
#include "UpgradeDirectory.h"

namespace {

using SRefused = test::SRefusedArguments;
using testing::AllOf;
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
        SRefused{
            "None",
            {},
            "no command is given; the commands are init, run, review, decide, explain, metamodel; run \"upgradesrv "
            "--help\" for details"},
        SRefused{"Unknown",
                 {"frob", "x"},
                 "unknown command \"frob\"; the commands are init, run, review, decide, explain, metamodel; run "
                 "\"upgradesrv "
                 "--help\" for details"},
        SRefused{
            "Empty",
            {""},
            "unknown command \"\"; the commands are init, run, review, decide, explain, metamodel; run \"upgradesrv "
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
  EXPECT_EQ(result.output, "upgradesrv " UPGRADESRV_VERSION "\n");
  EXPECT_EQ(result.errors, "");
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
