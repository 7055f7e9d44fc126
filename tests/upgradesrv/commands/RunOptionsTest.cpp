// Options of "upgradesrv run", which override upgrade.json.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "upgradesrv/RefusedArguments.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace {

using SRefused = test::SRefusedArguments;
using testing::HasSubstr;
using testing::StartsWith;

TEST(RunOptionsTest, LangOverridesTheUpgradeFile) {
  const test::CUpgradeDirectory upgrade;
  const test::SProcessResult result = upgrade.Run({"--lang", "de", "--elements", "link"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "\nEntfernt: Verbindung:\n Name:Uses,Anzeige:Uses\n\n");
}

TEST(RunOptionsTest, OriginalAndClientOverrideTheUpgradeFileAndStartAtTheCurrentDirectory) {
  const test::CUpgradeDirectory upgrade;
  const test::CTemporaryDirectory elsewhere;
  elsewhere.Write("shipped.json", R"({"generation": 2024, "links": [{"internal_name": "Uses"}]})");
  elsewhere.Write("2024/metamodel.json", R"({"generation": 2024})");

  const auto run = [&](const std::string& option, const std::string& value) {
    return test::RunTool({"run", option, value, upgrade.Path()}, elsewhere.Path());
  };
  // Against the installation, which has no link Uses but elements that the other file lacks.
  EXPECT_EQ(run("--original", "shipped.json").output,
            "\nNew link:\n name:Refers,shown as:Refers to\n\nDeleted link:\n name:Uses,shown as:\n\n");
  EXPECT_EQ(run("--original", "2024/metamodel.json").status, 0);
  // An empty client: everything of the original is deleted, and what the upgrade file names is not read.
  std::filesystem::remove(upgrade.File("installation.json"));
  EXPECT_THAT(run("--client", "2024/metamodel.json").output,
              StartsWith("\nDeleted behavior:\n name:Versioned,shown as:Versioned\n name:Approvable,"));
  EXPECT_THAT(test::TroubleOf(run("--client", "installation.json")),
              HasSubstr("client metamodel: installation.json: cannot be read: "));
}

TEST(RunOptionsTest, OriginalAndClientAreInTheCommandThatShowsEveryDifference) {
  const test::CUpgradeDirectory upgrade;
  const test::CTemporaryDirectory elsewhere;
  elsewhere.Write("plm 2022.json", R"({"generation": 2024})");
  const test::SProcessResult run = test::RunTool(
      {"run", "--client", "plm 2022.json", "--original", "plm 2022.json", upgrade.Path()}, elsewhere.Path());
  EXPECT_THAT(run.errors, HasSubstr("run \"upgradesrv review --original 'plm 2022.json' --client 'plm 2022.json' " +
                                    upgrade.Path() + "\" for every difference\n"));
}

TEST(RunOptionsTest, ElementsOverrideTheParameterAndRunInTheirOrder) {
  const test::CUpgradeDirectory upgrade;
  ASSERT_EQ(upgrade.Run({"--elements", "link,class"}).output, test::kClassReport + test::kLinkReport);
  const std::string linkFirst = upgrade.Document();
  EXPECT_LT(linkFirst.find("deleted_links"), linkFirst.find("deleted_classes"));
  ASSERT_EQ(upgrade.Run({"--elements=class,link"}).status, 1);
  const std::string classFirst = upgrade.Document();
  EXPECT_LT(classFirst.find("deleted_classes"), classFirst.find("deleted_links"));
  EXPECT_EQ(upgrade.Run({"--elements", "behavior"}).output, test::kBehaviorReport);
}

TEST(RunOptionsTest, ElementsDoNotSwallowTheDirectory) {
  const test::CUpgradeDirectory upgrade;
  EXPECT_EQ(upgrade.Trouble({"--elements", "class", "link"}),
            "unexpected argument \"" + upgrade.Path() +
                "\"; separate kinds by commas, without spaces; run \"upgradesrv run --help\" for details");
}

TEST(RunOptionsTest, ElementsWithoutAStrategyThatHasSomeAreTrouble) {
  const test::CUpgradeDirectory upgrade;
  upgrade.WriteUpgrade({{"strategies", R"([{"module": "checkmeta2024", "class": "CCheckMetaStrategy2024"}])"}});
  EXPECT_EQ(upgrade.Trouble({"--elements", "class"}), "--elements: no strategy of " + upgrade.File("upgrade.json") +
                                                          " has a parameter that lists kinds of elements");
}

TEST(RunOptionsTest, MayStandAfterTheDirectory) {
  const test::CUpgradeDirectory upgrade;
  const test::SProcessResult result = test::RunTool({"run", upgrade.Path(), "--elements", "class"});
  EXPECT_EQ(result.output, test::kClassReport) << result.errors;
}

TEST(RunOptionsTest, DirectoryMayBeRelativeAndEndInASeparator) {
  const test::CUpgradeDirectory upgrade;
  for (const char* directory : {".", "./", "2024/.."}) {
    const test::SProcessResult result = test::RunTool({"run", directory}, upgrade.Path());
    EXPECT_EQ(result.output, test::kFullReport) << directory << ": " << result.errors;
  }
}

class RefusedOptionTest : public testing::TestWithParam<test::SRefusedArguments> {};

TEST_P(RefusedOptionTest, IsOneErrorThatLeadsToTheHelp) {
  const test::CUpgradeDirectory upgrade;
  EXPECT_EQ(upgrade.Trouble(GetParam().arguments),
            test::Replaced(GetParam().message, "DIR", upgrade.Path()) + "; run \"upgradesrv run --help\" for details");
}

INSTANTIATE_TEST_SUITE_P(
    Options, RefusedOptionTest,
    testing::Values(SRefused{"Unknown", {"--frob"}, "unknown option --frob"},
                    SRefused{"UnknownShort", {"-x"}, "unknown option -x"},
                    SRefused{"EmptyLang", {"--lang", ""}, "--lang: the value is empty"},
                    SRefused{"EmptyOriginal", {"--original", ""}, "--original: the value is empty"},
                    SRefused{"EmptyClient", {"--client", ""}, "--client: the value is empty"},
                    SRefused{"EmptyModuleDirectory", {"--module-dir", ""}, "--module-dir: the value is empty"},
                    SRefused{"EmptyElements", {"--elements", ""}, "--elements: a kind is empty"},
                    SRefused{"ElementsOfACommaAlone", {"--elements", ","}, "--elements: a kind is empty"},
                    SRefused{"EmptyElementBetween", {"--elements", "class,,link"}, "--elements: a kind is empty"},
                    SRefused{"EmptyElementAtTheEnd", {"--elements", "class,"}, "--elements: a kind is empty"},
                    SRefused{"UnknownKind",
                             {"--elements", "class,Link"},
                             "--elements: unknown kind \"Link\"; the kinds are class, link, behavior"},
                    SRefused{"KindWithASpace",
                             {"--elements", "class, link"},
                             "--elements: unknown kind \" link\"; separate kinds by commas, without spaces"},
                    SRefused{"LangTwice", {"--lang", "en", "--lang", "de"}, "--lang is given twice"},
                    SRefused{"TwoDirectories",
                             {"."},
                             "unexpected argument \"DIR\"; metamodels are named with --original and --client"}),
    [](const auto& test) { return test.param.name; });

}  // namespace
