#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "upgradesrv/RefusedArguments.h"
#include "upgradesrv/UpgradeDirectory.h"

// Usage errors that say the real problem, whatever else is among the arguments.
namespace {

using SRefused = test::SRefusedArguments;
using testing::Not;

class UsageProblemTest : public testing::TestWithParam<test::SRefusedArguments> {};

TEST_P(UsageProblemTest, IsTheRealOneAndShowsNoPassword) {
  const test::SProcessResult result = test::RunTool(GetParam().arguments);
  EXPECT_EQ(test::TroubleOf(result), GetParam().message);
  EXPECT_THAT(result.errors, Not(testing::ContainsRegex("geh|heim")));
}

INSTANTIATE_TEST_SUITE_P(
    ServerAmongTheArguments, UsageProblemTest,
    testing::Values(
        SRefused{"UnknownOption",
                 {"run", "--client", "postgresql://host=h password=geheim", "--frob", "d"},
                 "unknown option --frob; run \"upgradesrv run --help\" for details"},
        SRefused{"NoDirectory",
                 {"run", "--client", "postgresql://u:geheim@h/d"},
                 "UPGRADE_DIR is required; run \"upgradesrv run --help\" for details"},
        SRefused{"UnknownCommand",
                 {"postgres://u:geheim@h/d"},
                 "unknown command \"postgres://u:***@h/d\"; the commands are init, run, review, decide, explain, "
                 "metamodel, help; "
                 "run \"upgradesrv --help\" "
                 "for details"},
        SRefused{"LocationInAnUnknownOption",
                 {"run", "--clint=postgresql://host=h password=ge heim dbname=d", "d"},
                 "unknown option --clint=postgresql://host=h password=*** dbname=d; run \"upgradesrv run --help\" for "
                 "details"},
        SRefused{
            "UnexpectedLocation",
            {"metamodel", "show", "a.json", "postgresql://host=h password=ge heim"},
            "unexpected argument \"postgresql://host=h password=***\"; run \"upgradesrv metamodel show --help\" for "
            "details"},
        SRefused{
            "UnexpectedArgumentAfterAPassword",
            {"metamodel", "show", "postgresql://password=ge", "heim"},
            "unexpected argument after \"postgresql://password=***\"; run \"upgradesrv metamodel show --help\" for "
            "details"},
        SRefused{"OtherUnexpectedArgument",
                 {"metamodel", "copy", "postgresql://password=geheim", "b.json", "c.json"},
                 "unexpected argument \"c.json\"; run \"upgradesrv metamodel copy --help\" for details"}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    LocationThatFellApart, UsageProblemTest,
    testing::Values(
        SRefused{"AfterAnOption",
                 {"run", "--client", "postgresql://host=h", "password=geheim", "d"},
                 "the location in \"postgresql://host=h\" ends at its first space; put the whole of it in quotation "
                 "marks; run \"upgradesrv run --help\" for details"},
        SRefused{
            "InAnOption",
            {"run", "--client=PostgreSQL://password=geheim", "host=h", "d"},
            "the location in \"--client=PostgreSQL://password=***\" ends at its first space; put the whole of it in "
            "quotation marks; run \"upgradesrv run --help\" for details"}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Options, UsageProblemTest,
    testing::Values(SRefused{"Twice",
                             {"run", "--client", "a.json", "--client", "b.json", "d"},
                             "--client is given twice; run \"upgradesrv run --help\" for details"},
                    SRefused{"FourTimes",
                             {"run", "--lang=a", "--lang=b", "--lang=c", "--lang=d", "d"},
                             "--lang is given 4 times; run \"upgradesrv run --help\" for details"},
                    SRefused{"WithoutValue",
                             {"run", "d", "--original"},
                             "--original needs a value: LOCATION; run \"upgradesrv run --help\" for details"},
                    SRefused{
                        "KindsApart",
                        {"run", "--elements", "class", "link", "d"},
                        "unexpected argument \"d\"; separate kinds by commas, without spaces; run \"upgradesrv run "
                        "--help\" for details"},
                    SRefused{"KindsAfterTheDirectory",
                             {"run", "d", "--elements", "class", "link"},
                             "unexpected argument \"link\"; separate kinds by commas, without spaces; run \"upgradesrv "
                             "run --help\" for details"},
                    SRefused{"KindsBySemicolon",
                             {"run", "--elements", "class;link", "d"},
                             "--elements: unknown kind \"class;link\"; separate kinds by commas, without spaces; run "
                             "\"upgradesrv run --help\" for details"},
                    SRefused{"MetamodelsWithoutOptions",
                             {"run", "a.json", "b.json"},
                             "unexpected argument \"b.json\"; metamodels are named with --original and --client; run "
                             "\"upgradesrv run --help\" for details"}),
    [](const auto& test) { return test.param.name; });

}  // namespace
