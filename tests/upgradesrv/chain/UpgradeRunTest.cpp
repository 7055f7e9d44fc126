// What becomes of the strategies of a chain, as the user of "upgradesrv run" sees it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <ostream>
#include <string>

#include "upgradesrv/UpgradeDirectory.h"
#include "upgradesrv/modules/Bytes.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class UpgradeRunTest : public testing::Test {
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

  /// Without a sanitizer's own handling of crashes, and without core files.
  test::SProcessResult Crash(const std::string& className) const {
    upgrade_.UseStranger(className);
    return test::RunInShell(
        "ulimit -c 0; ASAN_OPTIONS=\"$ASAN_OPTIONS:handle_segv=0:handle_abort=0\" exec \"$0\" run "
        "--module-dir '" UPGRADESRV_TEST_MODULE_DIRECTORY "' \"$1\"",
        upgrade_.Path());
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

TEST_F(UpgradeRunTest, DifferencesArePrintedAndEndWithStatus1) {
  const test::SProcessResult result = upgrade_.Run();
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_EQ(result.errors, upgrade_.Notes() + upgrade_.CheckNotes("differences reported"));
  EXPECT_THAT(upgrade_.Document(), HasSubstr("deleted_classes"));
}

TEST_F(UpgradeRunTest, NothingToReportEndsWithStatus0) {
  upgrade_.WriteUpgrade({{"client_metamodel", R"("2024/metamodel.json")"}});
  const test::SProcessResult result = upgrade_.Run();
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, upgrade_.Notes("2024/metamodel.json") +
                               "upgradesrv: both metamodels are the same, so that no difference can be found\n" +
                               upgrade_.CheckNotes("nothing to report"));
  EXPECT_EQ(upgrade_.Document(), "{}\n");
}

TEST_F(UpgradeRunTest, ExceptionOfTheHostIsShownWithMessageAndCode) {
  EXPECT_EQ(StrangerTrouble("CThrowsMessage"),
            "the stranger's message, code 0xA4520008 (strategy CThrowsMessage of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, ExceptionOfTheHostWithoutMessageIsShownWithItsCodeOnce) {
  EXPECT_EQ(StrangerTrouble("CThrowsCode"),
            "error 0xA4520008 (strategy CThrowsCode of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, MemberThatIsMissingSomewhereIsLookedForInTheParameterAndTheDocuments) {
  EXPECT_EQ(StrangerTrouble("CLacksAMember"),
            "json member [fr] not exist!, code 0xA4C0003E; look at " + upgrade_.File("upgrade.json") +
                ": /strategies/0/parameter and at the documents that the strategy reads in " + upgrade_.Path() +
                " (strategy CLacksAMember of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, StrategyThatNamesItsDocumentIsNotContradicted) {
  EXPECT_EQ(StrangerTrouble("CNamesItsDocument"),
            "texts.json: the text \"title\" is missing; add it, code 0xA4C0003E (strategy CNamesItsDocument of module "
            "strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, ExceptionOfTheStandardLibraryIsShown) {
  EXPECT_EQ(StrangerTrouble("CThrowsRuntimeError"),
            "a runtime error (strategy CThrowsRuntimeError of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, ExceptionWhoseCodeLiesInTheModuleIsShown) {
  EXPECT_EQ(StrangerTrouble("CThrowsOwnException"),
            "an exception of the module's own (strategy CThrowsOwnException of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, AnythingElseThrownIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CThrowsInt"),
            "it threw something that is not an exception of the standard library (strategy CThrowsInt of module "
            "strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, EndOfTheProcessInAStrategyIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CEndsTheProcess"),
            "it ended the process (strategy CEndsTheProcess of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, StrategyThatCrashesIsNamedAndTheSignalTakesItsCourse) {
  struct SCrash {
    std::string className;
    std::string signal;
    int number;
  };
  for (const SCrash& crash :
       {SCrash{"CAborts", "SIGABRT", SIGABRT}, SCrash{"CReadsForbiddenMemory", "SIGSEGV", SIGSEGV},
        SCrash{"CReadsForbiddenMemoryInAThread", "SIGSEGV", SIGSEGV}, SCrash{"CUsesUpTheStack", "SIGSEGV", SIGSEGV}}) {
    const test::SProcessResult result = Crash(crash.className);
    EXPECT_EQ(result.status, 128 + crash.number) << crash.className;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, upgrade_.Notes() + "upgradesrv: error: it crashed with " + crash.signal + " (strategy " +
                                 crash.className + " of module strangers, /strategies/0)\n");
    EXPECT_TRUE(upgrade_.HasEarlierDocument());
  }
}

TEST_F(UpgradeRunTest, StrategyThatThrowsWhereNobodyCatchesIsNamed) {
  EXPECT_EQ(StrangerTrouble("CThrowsInAThread"),
            "nobody catches this (strategy CThrowsInAThread of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, MessageOfTwoLinesIsShownOnOne) {
  EXPECT_EQ(StrangerTrouble("CThrowsTwoLines"),
            "one\\nupgradesrv: two\\x1B[2J (strategy CThrowsTwoLines of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, StrategyWithoutMemoryIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CThrowsBadAlloc"),
            "out of memory (strategy CThrowsBadAlloc of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, QuietMayStandBeforeTheCommandToo) {
  EXPECT_EQ(test::RunTool({"--quiet", "run", upgrade_.Path()}).output, test::kFullReport);
}

TEST_F(UpgradeRunTest, StrategyWithoutResultHasNothingToReport) {
  const test::SProcessResult result = RunStranger("CSetsNoResult");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, upgrade_.Notes() + "upgradesrv: CSetsNoResult: nothing to report\n");
}

TEST_F(UpgradeRunTest, ResultWithoutErrorInfoIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CSetsNoText"),
            "its result has no string \"error_info\" (strategy CSetsNoText of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, ErrorInfoThatIsNotAStringIsTrouble) {
  EXPECT_EQ(StrangerTrouble("CSetsNumber"),
            "its result has no string \"error_info\" (strategy CSetsNumber of module strangers, /strategies/0)");
  EXPECT_EQ(StrangerTrouble("CSetsArray"),
            "its result has no string \"error_info\" (strategy CSetsArray of module strangers, /strategies/0)");
}

TEST_F(UpgradeRunTest, EmptyErrorInfoIsAReportAllTheSame) {
  const test::SProcessResult result = RunStranger("CSetsEmptyText");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, upgrade_.Notes() + "upgradesrv: CSetsEmptyText: findings reported\n");
}

TEST_F(UpgradeRunTest, ErrorInfoIsPrintedByteForByte) {
  const test::SProcessResult result = RunStranger("CSetsBytes");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, kBytes);
}

TEST_F(UpgradeRunTest, StrategyGetsContextAndParameter) {
  upgrade_.WriteUpgrade({{"lang", R"("zh")"}, {"strategies", R"([{"module": "strangers", "class": "CTellsContext",
                                            "parameter": {"b": 1, "a": [null]}}])"}});
  const std::string directory = upgrade_.Path();
  EXPECT_EQ(upgrade_.RunTestModules().output, "CTellsContext\n" + directory + "\n" + directory + "/2024\nzh\n" +
                                                  directory + "/2024/metamodel.json\n" + directory +
                                                  "/installation.json\n{\n  \"b\": 1,\n  \"a\": [\n    null\n  ]\n}\n");
}

TEST_F(UpgradeRunTest, LoggedErrorIsTroubleAfterTheStrategyHasEnded) {
  const test::SProcessResult result = RunStranger("CLogsError");
  EXPECT_EQ(test::TroubleOf(result), "the strategies logged 1 error; see the log for the cause");
  EXPECT_THAT(result.errors, HasSubstr("ERROR stranger.cpp:12 CStranger::Invoke - the stranger's log line\n"));
}

TEST_F(UpgradeRunTest, ReportOfAStrategyThatLoggedAnErrorIsPrinted) {
  const test::SProcessResult result = RunStranger("CLogsErrorAndReports");
  EXPECT_EQ(result.output, "what was found\n");
  EXPECT_THAT(test::ErrorOf(result), HasSubstr("logged 1 error;"));
}

TEST_F(UpgradeRunTest, LoggedErrorsAreCountedOverTheWholeChain) {
  const std::string logs = R"({"module": "strangers", "class": "CLogsError"})";
  EXPECT_THAT(test::TroubleOf(RunChain(logs + "," + kSilent + "," + logs)), HasSubstr("logged 2 errors;"));
}

TEST_F(UpgradeRunTest, LoggedWarningIsNoTrouble) {
  const test::SProcessResult result = RunStranger("CLogsWarning");
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.errors, HasSubstr("WARN stranger.cpp:12"));
}

TEST_F(UpgradeRunTest, ChainRunsInOrder) {
  const test::SProcessResult result = RunChain(Recorder("zulu") + "," + Recorder("alpha") + "," + Recorder("mike"));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "zulu\nalpha\nmike\n");
  EXPECT_THAT(test::ReadFile(upgrade_.File("record")),
              testing::ContainsRegex("invoked zulu\n(.*\n)*invoked alpha\n(.*\n)*invoked mike\n"));
}

TEST_F(UpgradeRunTest, ChainKeepsStatus1WhenALaterStrategyHasNothingToReport) {
  const test::SProcessResult result = RunChain(kCheck + "," + kSilent);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_EQ(result.errors, upgrade_.Notes() + upgrade_.CheckNotes("differences reported") +
                               "upgradesrv: CSetsNoResult: nothing to report\n");
}

TEST_F(UpgradeRunTest, ChainReportsWhatComesAfterAStrategyWithNothingToReport) {
  const test::SProcessResult result = RunChain(kSilent + "," + kCheck);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, test::kFullReport);
}

TEST_F(UpgradeRunTest, ChainStopsAtTheFirstStrategyThatThrows) {
  const test::SProcessResult result = RunChain(kCheck + "," + kThrower + "," + Recorder("never"));
  EXPECT_THAT(test::ErrorOf(result), HasSubstr(" (strategy CThrowsMessage of module strangers, /strategies/1)"));
  EXPECT_EQ(result.output, test::kFullReport);
  EXPECT_THAT(result.errors, Not(HasSubstr("CRecorder")));
  EXPECT_FALSE(upgrade_.HasEarlierDocument());
}

TEST_F(UpgradeRunTest, StrategyThatThrowsFirstLeavesTheRestUndone) {
  EXPECT_THAT(test::TroubleOf(RunChain(kThrower + "," + kCheck)), HasSubstr("CThrowsMessage"));
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_F(UpgradeRunTest, ModuleThatCannotBeLoadedIsTroubleBeforeAnyStrategyRuns) {
  EXPECT_THAT(
      test::TroubleOf(RunChain(kCheck + R"(, {"module": "absent", "class": "C"}, )" + kSilent)),
      testing::StartsWith(upgrade_.File("upgrade.json") + ": /strategies/1/module: there is no libabsent.so in "));
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_F(UpgradeRunTest, ClassThatItsModuleDoesNotKnowIsTroubleBeforeAnyStrategyRuns) {
  EXPECT_THAT(test::TroubleOf(RunChain(kCheck + R"(, {"module": "strangers", "class": "CNobody"})")),
              testing::StartsWith(upgrade_.File("upgrade.json") + ": /strategies/1/class: "));
  EXPECT_TRUE(upgrade_.HasEarlierDocument());
}

TEST_F(UpgradeRunTest, SecondRunReplacesTheDocumentOfTheFirst) {
  ASSERT_EQ(upgrade_.Run().status, 1);
  const std::string first = upgrade_.Document();
  ASSERT_EQ(upgrade_.Run({"--elements", "link"}).status, 1);
  EXPECT_NE(upgrade_.Document(), first);
  ASSERT_EQ(upgrade_.Run().status, 1);
  EXPECT_EQ(upgrade_.Document(), first);
}

/// A parameter with which the check would fail, or skip a kind. In the message PLACE is that of the parameter.
struct SParameter {
  const char* name;
  const char* text;
  const char* message;
};

void PrintTo(const SParameter& parameter, std::ostream* output) {
  *output << parameter.name;
}

class ParameterTest : public testing::TestWithParam<SParameter> {};

TEST_P(ParameterTest, IsTroubleThatNamesThePlaceBeforeAnyStrategyRuns) {
  const test::CUpgradeDirectory upgrade;
  upgrade.WriteUpgrade({{"strategies", "[" + CheckOf(R"("class")") +
                                           R"(, {"module": "checkmeta2024", "class": "CCheckMetaStrategy2024")" +
                                           GetParam().text + "}]"}});
  EXPECT_EQ(upgrade.Trouble(),
            test::Replaced(GetParam().message, "PLACE", upgrade.File("upgrade.json") + ": /strategies/1/parameter"));
}

constexpr const char* kMissing =
    "PLACE: member \"execute_elements\" is missing; it lists the kinds to check: class, link, behavior";
constexpr const char* kWrongType =
    "PLACE/execute_elements: must be an array of strings, the kinds to check: class, link, behavior";

INSTANTIATE_TEST_SUITE_P(
    ExecuteElements, ParameterTest,
    testing::Values(SParameter{"NoParameter", "", kMissing}, SParameter{"Missing", R"(, "parameter": {})", kMissing},
                    SParameter{"OtherCase", R"(, "parameter": {"Execute_Elements": ["class"]})", kMissing},
                    SParameter{"Text", R"(, "parameter": {"execute_elements": "class"})", kWrongType},
                    SParameter{"Null", R"(, "parameter": {"execute_elements": null})", kWrongType},
                    SParameter{"ItemNumber", R"(, "parameter": {"execute_elements": ["class", 1]})", kWrongType},
                    SParameter{
                        "UnknownKind", R"(, "parameter": {"execute_elements": ["class", "method", "x"]})",
                        "PLACE/execute_elements/1: unknown kind \"method\"; the kinds are class, link, behavior"},
                    SParameter{"KindInCapitals", R"(, "parameter": {"execute_elements": ["Class"]})",
                               "PLACE/execute_elements/0: unknown kind \"Class\"; the kinds are class, link, behavior"},
                    SParameter{"EmptyKind", R"(, "parameter": {"execute_elements": [""]})",
                               "PLACE/execute_elements/0: unknown kind \"\"; the kinds are class, link, behavior"}),
    [](const auto& test) { return test.param.name; });

TEST_F(UpgradeRunTest, ParameterOfAStrategyThatIsNotTheCheckIsItsOwnAffair) {
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "strangers", "class": "CSetsNoResult",
                                          "parameter": {"execute_elements": ["method"]}}])"}});
  EXPECT_EQ(upgrade_.RunTestModules().status, 0);
}

TEST_F(UpgradeRunTest, CheckIsKnownByItsClassInWhateverCase) {
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "checkmeta2024", "class": "CCHECKMETAstrategy2024",
                                          "parameter": {"execute_elements": ["method"]}}])"}});
  EXPECT_THAT(upgrade_.Trouble(), HasSubstr("/execute_elements/0: unknown kind \"method\""));
}

}  // namespace
