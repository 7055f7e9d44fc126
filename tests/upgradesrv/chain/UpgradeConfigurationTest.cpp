#include "upgradesrv/chain/UpgradeConfiguration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>

#include "kvxsptjson/JsonObject.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace {

using upgradesrv::CUpgradeConfiguration;

/// An upgrade.json that is refused. In the message DIR stands for the upgrade directory.
struct SRefused {
  const char* name;
  test::UpgradeChanges changes;
  const char* message;
};

void PrintTo(const SRefused& refused, std::ostream* output) {
  *output << refused.name;
}

class RefusedUpgradeTest : public testing::TestWithParam<SRefused> {};

TEST_P(RefusedUpgradeTest, IsOneErrorThatNamesFileAndPlace) {
  const test::CUpgradeDirectory upgrade;
  upgrade.WriteUpgrade(GetParam().changes);
  EXPECT_EQ(upgrade.Trouble(), test::Replaced(GetParam().message, "DIR", upgrade.Path()));
}

constexpr const char* kNotText = "must be a string that is not empty and holds no NUL";
const std::string kBadLang = std::string("DIR/upgrade.json: /lang: ") + kNotText;
const std::string kBadVersionName =
    "DIR/upgrade.json: /version: must be the name of a directory beside upgrade.json, without separators";
const std::string kBadStrategies = "DIR/upgrade.json: /strategies: must be an array of objects, at least one";
const std::string kBadParameter = "DIR/upgrade.json: /strategies/0/parameter: must be an object";

INSTANTIATE_TEST_SUITE_P(
    Members, RefusedUpgradeTest,
    testing::Values(
        SRefused{"LangMissing", {{"lang", ""}}, "DIR/upgrade.json: /: member \"lang\" is missing"},
        SRefused{"VersionMissing", {{"version", ""}}, "DIR/upgrade.json: /: member \"version\" is missing"},
        SRefused{"OriginalMissing",
                 {{"original_metamodel", ""}},
                 "DIR/upgrade.json: /: member \"original_metamodel\" is missing"},
        SRefused{
            "ClientMissing", {{"client_metamodel", ""}}, "DIR/upgrade.json: /: member \"client_metamodel\" is missing"},
        SRefused{"StrategiesMissing", {{"strategies", ""}}, "DIR/upgrade.json: /: member \"strategies\" is missing"},
        SRefused{"UnknownMember",
                 {{"language", R"("en")"}},
                 "DIR/upgrade.json: /: unknown member \"language\"; known here: lang, version, original_metamodel, "
                 "client_metamodel, base_metamodel, strategies"},
        SRefused{"MemberInCapitals",
                 {{"lang", ""}, {"LANG", R"("en")"}},
                 "DIR/upgrade.json: /: unknown member \"LANG\"; known here: lang, version, original_metamodel, "
                 "client_metamodel, base_metamodel, strategies"},
        SRefused{
            "RepeatedMember", {{"lang", R"("en", "lang": "de")"}}, "DIR/upgrade.json: /: duplicate member \"lang\""},
        SRefused{"LangNumber", {{"lang", "5"}}, kBadLang.c_str()},
        SRefused{"LangNull", {{"lang", "null"}}, kBadLang.c_str()},
        SRefused{"LangObject", {{"lang", "{}"}}, kBadLang.c_str()},
        SRefused{"LangEmpty", {{"lang", R"("")"}}, kBadLang.c_str()},
        SRefused{"LangWithNul", {{"lang", R"("en\u0000")"}}, kBadLang.c_str()},
        SRefused{"VersionNumber",
                 {{"version", "2024"}},
                 "DIR/upgrade.json: /version: must be a string that is not empty and holds no NUL"},
        SRefused{"OriginalArray",
                 {{"original_metamodel", "[]"}},
                 "DIR/upgrade.json: /original_metamodel: must be a string that is not empty and holds no NUL"},
        SRefused{"ClientBoolean",
                 {{"client_metamodel", "true"}},
                 "DIR/upgrade.json: /client_metamodel: must be a string that is not empty and holds no NUL"},
        SRefused{"VersionParent", {{"version", R"("..")"}}, kBadVersionName.c_str()},
        SRefused{"VersionSelf", {{"version", R"(".")"}}, kBadVersionName.c_str()},
        SRefused{"VersionWithSeparator", {{"version", R"("2024/")"}}, kBadVersionName.c_str()},
        SRefused{"VersionWithoutDirectory",
                 {{"version", R"("2023")"}},
                 "DIR/upgrade.json: /version: there is no directory DIR/2023; create it or correct the version"},
        SRefused{"VersionOfAFile",
                 {{"version", R"("installation.json")"}},
                 "DIR/upgrade.json: /version: there is no directory DIR/installation.json; create it or correct the "
                 "version"}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Strategies, RefusedUpgradeTest,
    testing::Values(
        SRefused{"StrategiesEmpty", {{"strategies", "[]"}}, kBadStrategies.c_str()},
        SRefused{"StrategiesObject", {{"strategies", "{}"}}, kBadStrategies.c_str()},
        SRefused{"StrategiesNull", {{"strategies", "null"}}, kBadStrategies.c_str()},
        SRefused{"StrategyNotAnObject",
                 {{"strategies", R"([{"module": "checkmeta2024", "class": "CCheckMetaStrategy2024"}, "second"])"}},
                 kBadStrategies.c_str()},
        SRefused{"ModuleMissing",
                 {{"strategies", R"([{"class": "C"}])"}},
                 "DIR/upgrade.json: /strategies/0: member \"module\" is missing"},
        SRefused{"ClassMissingInTheSecond",
                 {{"strategies", R"([{"module": "m", "class": "C"}, {"module": "m"}])"}},
                 "DIR/upgrade.json: /strategies/1: member \"class\" is missing"},
        SRefused{"ModuleEmpty",
                 {{"strategies", R"([{"module": "", "class": "C"}])"}},
                 "DIR/upgrade.json: /strategies/0/module: must be a string that is not empty and holds no NUL"},
        SRefused{"ClassNumber",
                 {{"strategies", R"([{"module": "m", "class": 1}])"}},
                 "DIR/upgrade.json: /strategies/0/class: must be a string that is not empty and holds no NUL"},
        SRefused{"UnknownMemberOfAStrategy",
                 {{"strategies", R"([{"module": "m", "class": "C", "parameters": {}}])"}},
                 "DIR/upgrade.json: /strategies/0: unknown member \"parameters\"; known here: module, class, "
                 "parameter"},
        SRefused{"RepeatedMemberOfAStrategy",
                 {{"strategies", R"([{"module": "m", "class": "C", "module": "n"}])"}},
                 "DIR/upgrade.json: /strategies/0: duplicate member \"module\""},
        SRefused{"ParameterArray",
                 {{"strategies", R"([{"module": "m", "class": "C", "parameter": ["class"]}])"}},
                 kBadParameter.c_str()},
        SRefused{"ParameterNull",
                 {{"strategies", R"([{"module": "m", "class": "C", "parameter": null}])"}},
                 kBadParameter.c_str()},
        SRefused{"RepeatedMemberOfAParameter",
                 {{"strategies", R"([{"module": "checkmeta2024", "class": "CCheckMetaStrategy2024",
                    "parameter": {"execute_elements": [], "execute_elements": ["class"]}}])"}},
                 "DIR/upgrade.json: /strategies/0/parameter: duplicate member \"execute_elements\""}),
    [](const auto& test) { return test.param.name; });

TEST(UpgradeDirectoryTest, ThatIsMissingIsTrouble) {
  EXPECT_EQ(test::TroubleOf(test::RunTool({"run", "/nonexistent/upgrade/"})),
            "/nonexistent/upgrade: No such file or directory; give the upgrade configuration directory, which holds "
            "upgrade.json");
}

TEST(UpgradeDirectoryTest, ThatIsADanglingLinkIsCalledOne) {
  const test::CUpgradeDirectory upgrade;
  std::filesystem::create_symlink("gone", upgrade.File("link"));
  EXPECT_EQ(test::TroubleOf(test::RunTool({"run", upgrade.File("link")})),
            upgrade.File("link") +
                ": is a symbolic link to gone, which leads nowhere; give the upgrade configuration directory, which "
                "holds upgrade.json");
  upgrade.WriteUpgrade({{"version", "\"link\""}});
  EXPECT_EQ(upgrade.Trouble(),
            upgrade.File("upgrade.json") + ": /version: " + upgrade.File("link") +
                " is a symbolic link to gone, which leads nowhere; create it or correct the version");
}

TEST(UpgradeDirectoryTest, ThatIsAFileIsTrouble) {
  const test::CUpgradeDirectory upgrade;
  EXPECT_EQ(test::TroubleOf(test::RunTool({"run", upgrade.File("upgrade.json")})),
            upgrade.File("upgrade.json") +
                ": not a directory; give the upgrade configuration directory, which holds upgrade.json");
}

TEST(UpgradeFileTest, ThatIsMissingIsTrouble) {
  const test::CUpgradeDirectory upgrade;
  std::filesystem::remove(upgrade.File("upgrade.json"));
  EXPECT_EQ(upgrade.Trouble(), upgrade.File("upgrade.json") +
                                   ": cannot be read: No such file or directory; give the upgrade configuration "
                                   "directory, which holds upgrade.json");
}

TEST(UpgradeFileTest, ThatIsADirectoryIsTrouble) {
  const test::CUpgradeDirectory upgrade;
  std::filesystem::remove(upgrade.File("upgrade.json"));
  std::filesystem::create_directory(upgrade.File("upgrade.json"));
  EXPECT_EQ(upgrade.Trouble(), upgrade.File("upgrade.json") + ": cannot be read: is a directory, not a regular file");
}

TEST(UpgradeFileTest, ThatIsMalformedIsTroubleAtLineAndColumn) {
  const test::CUpgradeDirectory upgrade;
  upgrade.Write("upgrade.json", "{\n  \"lang\": \"\xE4\xB8\xAD\" \"en\"\n}\n");
  EXPECT_EQ(upgrade.Trouble(), upgrade.File("upgrade.json") + ":2:15: Missing a comma or '}' after an object member.");
}

TEST(UpgradeFileTest, ThatIsNotAnObjectIsTrouble) {
  const test::CUpgradeDirectory upgrade;
  for (const char* text : {"[]", "\"upgrade\"", "null"}) {
    upgrade.Write("upgrade.json", text);
    EXPECT_EQ(upgrade.Trouble(), upgrade.File("upgrade.json") + ": /: must be an object") << text;
  }
}

TEST(UpgradeFileTest, WithALineEndInAMemberNameIsStillOneErrorLine) {
  const test::CUpgradeDirectory upgrade;
  upgrade.WriteUpgrade({{R"(la\n\u009Bng)", "1"}});
  EXPECT_THAT(upgrade.Trouble(), testing::HasSubstr(R"(: /: unknown member "la\n\u009Bng"; known here: )"));
}

TEST(UpgradeFileTest, WithANulInAMemberNameIsAWholeError) {
  const test::CUpgradeDirectory upgrade;
  upgrade.WriteUpgrade({{R"(lang\u0000)", "1"}});
  EXPECT_THAT(upgrade.Trouble(), testing::HasSubstr(R"(: /: unknown member "lang\x00"; known here: lang, )"));
}

TEST(UpgradeFileTest, MayBeginWithAByteOrderMark) {
  const test::CUpgradeDirectory upgrade;
  upgrade.Write("upgrade.json", "\xEF\xBB\xBF" + test::ReadFile(upgrade.File("upgrade.json")));
  EXPECT_EQ(upgrade.Run().status, 1);
}

class UpgradeConfigurationTest : public testing::Test {
 protected:
  CUpgradeContext Context(const upgradesrv::SConfigurationOverrides& overrides = {}) const {
    CUpgradeContext context;
    CUpgradeConfiguration(upgrade_.Path(), overrides).FillContext(context);
    return context;
  }

  test::CUpgradeDirectory upgrade_;
};

TEST_F(UpgradeConfigurationTest, GivesDirectoriesWithoutTrailingSeparator) {
  CUpgradeContext context;
  const CUpgradeConfiguration configuration(upgrade_.Path() + "//", {});
  configuration.FillContext(context);
  EXPECT_EQ(configuration.GetDirectory(), upgrade_.Path());
  EXPECT_EQ(context.GetUpgradeCfgPath(), upgrade_.Path());
  EXPECT_EQ(context.GetVersionUpgradeCfgPath(), upgrade_.Path() + "/2024");
}

TEST_F(UpgradeConfigurationTest, RelativeMetamodelPathsStartAtTheDirectory) {
  const CUpgradeContext context = Context();
  EXPECT_EQ(context.GetOriginalMetaLocation(), upgrade_.Path() + "/2024/metamodel.json");
  EXPECT_EQ(context.GetClientMetaLocation(), upgrade_.Path() + "/installation.json");
}

TEST_F(UpgradeConfigurationTest, AbsolutePathsAndConnectionsStandAsTheyAre) {
  upgrade_.WriteUpgrade(
      {{"original_metamodel", R"("/srv/shipped.json")"}, {"client_metamodel", R"("postgresql://dbname=plm")"}});
  const CUpgradeContext context = Context();
  EXPECT_EQ(context.GetOriginalMetaLocation(), "/srv/shipped.json");
  EXPECT_EQ(context.GetClientMetaLocation(), "postgresql://dbname=plm");
}

TEST_F(UpgradeConfigurationTest, OverridesStandAsTheyAre) {
  upgradesrv::SConfigurationOverrides overrides;
  overrides.lang = "de";
  overrides.originalLocation = "a.json";
  overrides.clientLocation = "b.json";
  const CUpgradeContext context = Context(overrides);
  EXPECT_EQ(context.GetLang(), "de");
  EXPECT_EQ(context.GetOriginalMetaLocation(), "a.json");
  EXPECT_EQ(context.GetClientMetaLocation(), "b.json");
}

TEST_F(UpgradeConfigurationTest, KeepsStrategiesInOrderWithTheirPlaces) {
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "b", "class": "B", "parameter": {"x": "1"}},
                                           {"module": "a", "class": "A"}])"}});
  const CUpgradeConfiguration configuration(upgrade_.Path(), {});
  const auto& strategies = configuration.GetStrategies();
  ASSERT_EQ(strategies.size(), 2U);
  EXPECT_EQ(strategies[0].module, "b");
  EXPECT_EQ(strategies[0].className, "B");
  EXPECT_EQ(strategies[0].parameter->GetStringValue("x"), "1");
  EXPECT_EQ(strategies[0].place, upgrade_.File("upgrade.json") + ": /strategies/0");
  EXPECT_EQ(strategies[1].module, "a");
  EXPECT_EQ(strategies[1].place, upgrade_.File("upgrade.json") + ": /strategies/1");
}

TEST_F(UpgradeConfigurationTest, AStrategyWithoutParameterGetsAnEmptyObject) {
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "a", "class": "A"}])"}});
  EXPECT_EQ(CUpgradeConfiguration(upgrade_.Path(), {}).GetStrategies().front().parameter->ToText(), "{}");
}

TEST_F(UpgradeConfigurationTest, ElementsReplaceThoseOfEachStrategyThatHasSome) {
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "a", "class": "A", "parameter": {"execute_elements": 1}},
                                           {"module": "b", "class": "B", "parameter": {"other": ["class"]}},
                                           {"module": "c", "class": "C", "parameter": {"execute_elements": []}}])"}});
  upgradesrv::SConfigurationOverrides overrides;
  overrides.elements = {"link", "class"};
  const CUpgradeConfiguration configuration(upgrade_.Path(), overrides);
  const auto& strategies = configuration.GetStrategies();
  const std::list<std::string> expected = {"link", "class"};
  EXPECT_EQ(strategies[0].parameter->GetStringArrayValue("execute_elements"), expected);
  EXPECT_FALSE(strategies[1].parameter->HasMember("execute_elements"));
  EXPECT_EQ(strategies[2].parameter->GetStringArrayValue("execute_elements"), expected);
}

}  // namespace
