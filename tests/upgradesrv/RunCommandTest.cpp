// What becomes of the strategies of a chain, as the user of "upgradesrv run" sees it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "UpgradeDirectory.h"
#include "upgradesrv/modules/Bytes.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class RunCommandTest : public testing::Test {
 protected:
  std::string StrangerTrouble(const std::string& className) const {
    upgrade_.UseStranger(className);
    return upgrade_.TroubleWithTestModules();
  }

  test::SProcessResult RunStranger(const std::string& className) const {
    upgrade_.UseStranger(className);
    return upgrade_.RunTestModules();
  }

  test::SProcessResult RunChain(const std::string& strategies) const {
    upgrade_.WriteUpgrade({{"strategies", "[" + strategies + "]"}});
    return upgrade_.RunTestModules();
  }

  std::string Recorder(const std::string& name) const {
    return R"({"module": "recorder", "class": "CRecorder", "parameter": {"name": ")" + name + R"(", "record": ")" +
           upgrade_.File("record") + R"("}})";
  }

  test::CUpgradeDirectory upgrade_;
};

std::string CheckOf(const std::string& kinds) {
  return R"({"module": "checkmeta2024", "class": "CCheckMetaStrategy2024", "parameter": {"execute_elements": [)" +
         kinds + "]}}";
}

const std::string kCheck = CheckOf(R"("class", "link", "behavior")");
const std::string kThrower = R"({"module": "strangers", "class": "CThrowsMessage"})";
const std::string kSilent = R"({"module": "strangers", "class": "CSetsNoResult"})";

TEST_F(RunCommandTest, DifferencesArePrintedAndEndWithStatus1) {
  const test::SProcessResult result = upgrade_.Run();
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_EQ(result.errors, upgrade_.Notes() + "upgradesrv: CCheckMetaStrategy2024: differences reported\n");
  EXPECT_THAT(upgrade_.Document(), HasSubstr("deleted_classes"));
}

TEST_F(RunCommandTest, NothingToReportEndsWithStatus0) {
  upgrade_.WriteUpgrade({{"client_metamodel", R"("2024/metamodel.json")"}});
  const test::SProcessResult result = upgrade_.Run();
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, upgrade_.Notes("2024/metamodel.json") +
                               "upgradesrv: both metamodels are the same, so that no difference can be found\n"
                               "upgradesrv: CCheckMetaStrategy2024: nothing to report\n");
  EXPECT_EQ(upgrade_.Document(), "{}\n");
}

TEST_F(RunCommandTest, ExceptionOfTheHostIsShownWithMessageAndCode) {
  EXPECT_EQ(StrangerTrouble("CThrowsMessage"),
            "strategy CThrowsMessage of module strangers failed: the stranger's message (code 0xA4520008)");
}

TEST_F(RunCommandTest, ExceptionOfTheHostWithoutMessageIsShownWithItsCodeOnce) {
  EXPECT_EQ(StrangerTrouble("CThrowsCode"), "strategy CThrowsCode of module strangers failed: error 0xA4520008");
}

TEST_F(RunCommandTest, ExceptionOfTheStandardLibraryIsShown) {
  EXPECT_EQ(StrangerTrouble("CThrowsRuntimeError"),
            "strategy CThrowsRuntimeError of module strangers failed: a runtime error");
}

TEST_F(RunCommandTest, ExceptionWhoseCodeLiesInTheModuleIsShown) {
  EXPECT_EQ(StrangerTrouble("CThrowsOwnException"),
            "strategy CThrowsOwnException of module strangers failed: an exception of the module's own");
}

TEST_F(RunCommandTest, AnythingElseThrownIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CThrowsInt"),
            "strategy CThrowsInt of module strangers failed: it threw something that is not an exception of the "
            "standard library");
}

TEST_F(RunCommandTest, EndOfTheProcessInAStrategyIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CEndsTheProcess"),
            "strategy CEndsTheProcess of module strangers failed: it ended the process");
}

TEST_F(RunCommandTest, MessageOfTwoLinesIsShownOnOne) {
  EXPECT_EQ(StrangerTrouble("CThrowsTwoLines"),
            "strategy CThrowsTwoLines of module strangers failed: one\\nupgradesrv: two\\x1B[2J");
}

TEST_F(RunCommandTest, StrategyWithoutMemoryIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CThrowsBadAlloc"), "strategy CThrowsBadAlloc of module strangers failed: out of memory");
}

TEST_F(RunCommandTest, QuietMayStandBeforeTheCommandToo) {
  EXPECT_EQ(test::RunTool({"--quiet", "run", upgrade_.Path()}).output, test::kFullReport);
}

TEST_F(RunCommandTest, StrategyWithoutResultHasNothingToReport) {
  const test::SProcessResult result = RunStranger("CSetsNoResult");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, upgrade_.Notes() + "upgradesrv: CSetsNoResult: nothing to report\n");
}

TEST_F(RunCommandTest, ResultWithoutErrorInfoIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CSetsNoText"),
            "strategy CSetsNoText of module strangers failed: its result has no string \"error_info\"");
}

TEST_F(RunCommandTest, ErrorInfoThatIsNotAStringIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CSetsNumber"),
            "strategy CSetsNumber of module strangers failed: its result has no string \"error_info\"");
  EXPECT_EQ(StrangerTrouble("CSetsArray"),
            "strategy CSetsArray of module strangers failed: its result has no string \"error_info\"");
}

TEST_F(RunCommandTest, EmptyErrorInfoIsAReportOfDifferencesAllTheSame) {
  const test::SProcessResult result = RunStranger("CSetsEmptyText");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, upgrade_.Notes() + "upgradesrv: CSetsEmptyText: differences reported\n");
}

TEST_F(RunCommandTest, ErrorInfoIsPrintedByteForByte) {
  const test::SProcessResult result = RunStranger("CSetsBytes");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, kBytes);
}

TEST_F(RunCommandTest, StrategyGetsContextAndParameter) {
  upgrade_.WriteUpgrade({{"lang", R"("zh")"}, {"strategies", R"([{"module": "strangers", "class": "CTellsContext",
                                            "parameter": {"b": 1, "a": [null]}}])"}});
  const std::string directory = upgrade_.Path();
  EXPECT_EQ(upgrade_.RunTestModules().output, "CTellsContext\n" + directory + "\n" + directory + "/2024\nzh\n" +
                                                  directory + "/2024/metamodel.json\n" + directory +
                                                  "/installation.json\n{\n  \"b\": 1,\n  \"a\": [\n    null\n  ]\n}\n");
}

TEST_F(RunCommandTest, LoggedErrorIsTroubleAfterTheStrategyHasEnded) {
  const test::SProcessResult result = RunStranger("CLogsError");
  EXPECT_EQ(test::TroubleOf(result), "the strategies logged 1 error; clear up what the log says and run again");
  EXPECT_THAT(result.errors, HasSubstr("ERROR stranger.cpp:12 CStranger::Invoke - the stranger's log line\n"));
}

TEST_F(RunCommandTest, ReportOfAStrategyThatLoggedAnErrorIsPrinted) {
  const test::SProcessResult result = RunStranger("CLogsErrorAndReports");
  EXPECT_EQ(result.output, "what was found\n");
  EXPECT_THAT(test::ErrorOf(result), HasSubstr("logged 1 error;"));
}

TEST_F(RunCommandTest, LoggedErrorsAreCountedOverTheWholeChain) {
  const std::string logs = R"({"module": "strangers", "class": "CLogsError"})";
  EXPECT_THAT(test::TroubleOf(RunChain(logs + "," + kSilent + "," + logs)), HasSubstr("logged 2 errors;"));
}

TEST_F(RunCommandTest, LoggedWarningIsNoTrouble) {
  const test::SProcessResult result = RunStranger("CLogsWarning");
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.errors, HasSubstr("WARN stranger.cpp:12"));
}

TEST_F(RunCommandTest, ChainRunsInOrder) {
  const test::SProcessResult result = RunChain(Recorder("zulu") + "," + Recorder("alpha") + "," + Recorder("mike"));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "zulu\nalpha\nmike\n");
  EXPECT_THAT(test::ReadFile(upgrade_.File("record")),
              testing::ContainsRegex("invoked zulu\n(.*\n)*invoked alpha\n(.*\n)*invoked mike\n"));
}

TEST_F(RunCommandTest, ChainKeepsStatus1WhenALaterStrategyHasNothingToReport) {
  const test::SProcessResult result = RunChain(kCheck + "," + kSilent);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_EQ(
      result.errors,
      upgrade_.Notes() +
          "upgradesrv: CCheckMetaStrategy2024: differences reported\nupgradesrv: CSetsNoResult: nothing to report\n");
}

TEST_F(RunCommandTest, ChainReportsWhatComesAfterAStrategyWithNothingToReport) {
  const test::SProcessResult result = RunChain(kSilent + "," + kCheck);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, test::kFullReport);
}

TEST_F(RunCommandTest, ChainStopsAtTheFirstStrategyThatThrows) {
  const test::SProcessResult result = RunChain(kCheck + "," + kThrower + "," + Recorder("never"));
  EXPECT_THAT(test::ErrorOf(result), HasSubstr("strategy CThrowsMessage of module strangers failed: "));
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_THAT(result.errors, Not(HasSubstr("CRecorder")));
  EXPECT_FALSE(upgrade_.HasEarlierDocument());
}

TEST_F(RunCommandTest, StrategyThatThrowsFirstLeavesTheRestUndone) {
  EXPECT_THAT(test::TroubleOf(RunChain(kThrower + "," + kCheck)), HasSubstr("CThrowsMessage"));
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_F(RunCommandTest, ChainStopsAtAModuleThatIsMissing) {
  const test::SProcessResult result = RunChain(kSilent + R"(, {"module": "absent", "class": "C"}, )" + kCheck);
  EXPECT_THAT(test::TroubleOf(result), HasSubstr("module absent: there is no "));
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_F(RunCommandTest, SecondRunReplacesTheDocumentOfTheFirst) {
  ASSERT_EQ(upgrade_.Run().status, 1);
  const std::string first = upgrade_.Document();
  ASSERT_EQ(upgrade_.Run({"--elements", "link"}).status, 1);
  EXPECT_NE(upgrade_.Document(), first);
  ASSERT_EQ(upgrade_.Run().status, 1);
  EXPECT_EQ(upgrade_.Document(), first);
}

/// A parameter without which no check can run; the message ends with the places to look at.
struct SParameter {
  const char* name;
  const char* text;
  const char* message;
};

class ParameterTest : public testing::TestWithParam<SParameter> {};

TEST_P(ParameterTest, IsTroubleThatNamesThePlace) {
  const test::CUpgradeDirectory upgrade;
  upgrade.WriteUpgrade({{"strategies", R"([{"module": "checkmeta2024", "class": "CCheckMetaStrategy2024")" +
                                           std::string(GetParam().text) + "}]"}});
  EXPECT_EQ(upgrade.Trouble(), std::string("strategy CCheckMetaStrategy2024 of module checkmeta2024 failed: ") +
                                   GetParam().message + "; look at " + upgrade.File("upgrade.json") +
                                   ": /strategies/0/parameter and at the documents that the strategy reads in " +
                                   upgrade.Path());
}

constexpr const char* kMissing = "json member [execute_elements] not exist! (code 0xA4C0003E)";
constexpr const char* kWrongType = "json member [execute_elements] is not Array String! (code 0xA4C00004)";

INSTANTIATE_TEST_SUITE_P(
    ExecuteElements, ParameterTest,
    testing::Values(SParameter{"NoParameter", "", kMissing}, SParameter{"Missing", R"(, "parameter": {})", kMissing},
                    SParameter{"OtherCase", R"(, "parameter": {"Execute_Elements": ["class"]})", kMissing},
                    SParameter{"Text", R"(, "parameter": {"execute_elements": "class"})", kWrongType},
                    SParameter{"Null", R"(, "parameter": {"execute_elements": null})", kWrongType},
                    SParameter{"ItemNumber", R"(, "parameter": {"execute_elements": ["class", 1]})", kWrongType}),
    [](const auto& test) { return test.param.name; });

TEST_F(RunCommandTest, UnknownKindIsLoggedTheOthersAreCheckedAndTheRunEndsWithStatus2) {
  const test::SProcessResult result = RunChain(CheckOf(R"("method", "link")"));
  EXPECT_EQ(test::ErrorOf(result), "the strategies logged 1 error; clear up what the log says and run again");
  EXPECT_THAT(result.errors, HasSubstr("ERROR deploy_tools/upgradesrv/src/checkmeta2024/CheckMetaStrategy2024.cpp:59 "
                                       "CCheckMetaStrategy2024::Invoke - meta element check type "
                                       "error.type:method<hr=0xA4520008>\n"));
  EXPECT_EQ(result.output, test::kLinkReport);
  EXPECT_THAT(upgrade_.Document(), HasSubstr("deleted_links"));
}

TEST_F(RunCommandTest, UnknownKindsAloneStillWriteTheDocumentAndNeverLookClean) {
  const test::SProcessResult result = RunChain(CheckOf(R"("Class", "links")"));
  EXPECT_THAT(test::TroubleOf(result), HasSubstr("logged 2 errors;"));
  EXPECT_EQ(upgrade_.Document(), "{}\n");
}

}  // namespace
