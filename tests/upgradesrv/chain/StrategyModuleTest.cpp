#include "upgradesrv/chain/StrategyModule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "upgradesrv/Trouble.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kTestModules = UPGRADESRV_TEST_MODULE_DIRECTORY;
const std::string kModules = UPGRADESRV_MODULE_DIRECTORY;

class StrategyModuleTest : public testing::Test {
 protected:
  /// One strategy of class CSetsNoResult, which ends with status 0 where its module is the one with strangers.
  void UseModule(const std::string& name) const {
    upgrade_.WriteUpgrade({{"strategies", R"([{"module": ")" + name + R"(", "class": "CSetsNoResult"}])"}});
  }

  std::string TroubleWithModule(const std::string& name) const {
    UseModule(name);
    return upgrade_.TroubleWithTestModules();
  }

  /// What a run says of the module that UseModule() has named.
  std::string Place() const { return upgrade_.File("upgrade.json") + ": /strategies/0/module: "; }

  test::CUpgradeDirectory upgrade_;
};

TEST_F(StrategyModuleTest, IsFoundInTheGivenDirectory) {
  UseModule("strangers");
  const test::SProcessResult result = upgrade_.RunTestModules();
  EXPECT_EQ(result.status, 0) << result.errors;
}

TEST_F(StrategyModuleTest, ThatIsMissingIsTrouble) {
  EXPECT_EQ(TroubleWithModule("absent"), Place() + "there is no libabsent.so in " + kTestModules + " or " + kModules +
                                             "; give the bare name, NAME for libNAME.so, install the module there or "
                                             "name its directory with --module-dir");
}

TEST_F(StrategyModuleTest, DirectoryThatIsNotThereIsNoted) {
  const test::SProcessResult result = upgrade_.Run({"--module-dir", upgrade_.File("absent")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith("upgradesrv: --module-dir " + upgrade_.File("absent") +
                                        ": there is no such directory; modules are searched in the others\n"));
}

TEST_F(StrategyModuleTest, ThatEveryoneMayWriteToIsRefusedToRootAndNotedOnceOtherwise) {
  const std::string directory = upgrade_.File("modules");
  fs::create_directories(directory);
  fs::copy(kTestModules + "/libstrangers.so", directory);
  fs::permissions(directory, fs::perms::all);
  const std::string strategy = R"({"module": "strangers", "class": "CSetsNoResult"})";
  upgrade_.WriteUpgrade({{"strategies", "[" + strategy + ", " + strategy + "]"}});
  const std::vector<std::string> options = {"--module-dir", directory};
  if (geteuid() == 0) {
    EXPECT_EQ(upgrade_.Trouble(options), Place() + "the module is not loaded: everyone may write to " + directory +
                                             ", and would decide what root does; take that permission away or run as "
                                             "another user");
    return;
  }
  const std::string note = "upgradesrv: everyone may write to " + directory + ", and so decide what this run does\n";
  const test::SProcessResult result = upgrade_.Run(options);
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.errors, StartsWith(note));
  EXPECT_EQ(result.errors.find(note, 1), std::string::npos) << result.errors;
}

TEST_F(StrategyModuleTest, IsLookedUpInEachGivenDirectoryInTheirOrderThenInTheDefault) {
  fs::create_directories(upgrade_.File("first"));
  fs::create_directories(upgrade_.File("second"));
  const std::vector<std::string> both = {"--module-dir", upgrade_.File("first"), "--module-dir",
                                         upgrade_.File("second")};
  EXPECT_EQ(upgrade_.Run(both).status, 1) << "the default directory";
  fs::copy(kTestModules + "/libstrangers.so", upgrade_.File("second/libstrangers.so"));
  UseModule("strangers");
  EXPECT_EQ(upgrade_.Run(both).status, 0) << "the second directory";
  upgrade_.Write("first/libstrangers.so", "This is not a shared library.\n");
  EXPECT_THAT(test::TroubleOf(upgrade_.Run(both)), HasSubstr(upgrade_.File("first/libstrangers.so")))
      << "the first directory";
  upgrade_.Write("second/libcheckmeta2024.so", "This is not a shared library.\n");
  upgrade_.WriteUpgrade({});
  EXPECT_THAT(test::TroubleOf(upgrade_.Run(both)), HasSubstr(upgrade_.File("second/libcheckmeta2024.so")))
      << "a given directory before the default";
}

TEST_F(StrategyModuleTest, NameWithASeparatorIsRefusedEvenWhereItLeadsToAModule) {
  fs::create_directories(upgrade_.File("modules/libinner"));
  fs::copy(kTestModules + "/libstrangers.so", upgrade_.File("modules/libinner/strangers.so"));
  fs::copy(kTestModules + "/libstrangers.so", upgrade_.File("outer.so"));
  for (const std::string& name :
       {std::string("inner/strangers"), std::string("inner/../../outer"), kTestModules + "/libstrangers.so"}) {
    UseModule(name);
    EXPECT_EQ(
        upgrade_.Trouble({"--module-dir", upgrade_.File("modules")}),
        Place() + "\"" + name + "\" is not the bare name of a module; its file is looked up in the module directories");
  }
}

TEST_F(StrategyModuleTest, NameWithANulIsRefusedEvenWhereItLeadsToAModule) {
  try {
    const upgradesrv::CStrategyModule module({kTestModules}, std::string("strangers.so\0x", 14));
    ADD_FAILURE() << "loaded";
  } catch (const upgradesrv::CTrouble& trouble) {
    EXPECT_THAT(trouble.what(), HasSubstr(" is not the bare name of a module; "));
  }
}

TEST_F(StrategyModuleTest, NameIsCompletedToAFileName) {
  EXPECT_THAT(TroubleWithModule("libstrangers.so"), HasSubstr("there is no liblibstrangers.so.so in "));
}

TEST_F(StrategyModuleTest, ThatIsDamagedIsTrouble) {
  upgrade_.Write("modules/libdamaged.so", "This is not a shared library.\n");
  UseModule("damaged");
  const std::string file = upgrade_.File("modules/libdamaged.so");
  EXPECT_THAT(upgrade_.Trouble({"--module-dir", upgrade_.File("modules")}),
              StartsWith(Place() + "the module cannot be loaded: " + file + ": "));
}

TEST_F(StrategyModuleTest, ThatIsCutOffAnywhereIsTrouble) {
  const std::string whole = test::ReadFile(kTestModules + "/libstrangers.so");
  UseModule("cut");
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{1}, std::size_t{63}, std::size_t{64}, std::size_t{100}, std::size_t{4096},
        whole.size() / 20, whole.size() / 10, whole.size() / 4, whole.size() / 2, whole.size() - 1}) {
    const std::string file = upgrade_.Write("modules/libcut.so", whole.substr(0, size));
    EXPECT_THAT(upgrade_.Trouble({"--module-dir", upgrade_.File("modules")}),
                StartsWith(Place() + "the module cannot be loaded: " + file + ": "))
        << size;
  }
  upgrade_.Write("modules/libcut.so", whole);
  const test::SProcessResult result = upgrade_.Run({"--module-dir", upgrade_.File("modules")});
  EXPECT_EQ(result.status, 0) << result.errors;
}

TEST_F(StrategyModuleTest, ThatIsOfAnotherKindOfMachineIsTrouble) {
  std::string foreign = test::ReadFile(kTestModules + "/libstrangers.so");
  foreign[4] = foreign[4] == 1 ? '\2' : '\1';
  upgrade_.Write("modules/libforeign.so", foreign);
  UseModule("foreign");
  EXPECT_THAT(upgrade_.Trouble({"--module-dir", upgrade_.File("modules")}), EndsWith("wrong ELF class: ELFCLASS32"));
}

TEST_F(StrategyModuleTest, ThatIsADirectoryIsTrouble) {
  fs::create_directories(upgrade_.File("modules/libfolder.so"));
  UseModule("folder");
  EXPECT_THAT(upgrade_.Trouble({"--module-dir", upgrade_.File("modules")}),
              StartsWith(Place() + "the module cannot be loaded: " + upgrade_.File("modules/libfolder.so") + ": "));
}

TEST_F(StrategyModuleTest, ThatNeedsWhatTheHostDoesNotHaveIsTrouble) {
  const std::string trouble = TroubleWithModule("undefinedsymbol");
  EXPECT_THAT(trouble, StartsWith(Place() + "the module cannot be loaded: " + kTestModules));
  EXPECT_THAT(trouble, HasSubstr("OperationOfAnotherHost"));
}

TEST_F(StrategyModuleTest, WithoutFactoryIsTrouble) {
  EXPECT_EQ(TroubleWithModule("nofactory"),
            Place() + kTestModules +
                "/libnofactory.so is not a strategy module: it does not export CreateReflectionClassObject");
}

TEST_F(StrategyModuleTest, WhoseFactoryReturnsNullIsTrouble) {
  EXPECT_EQ(TroubleWithModule("nullfactory"), upgrade_.File("upgrade.json") + ": /strategies/0/class: " + kTestModules +
                                                  "/libnullfactory.so has no strategy class \"CSetsNoResult\"");
}

TEST_F(StrategyModuleTest, WhoseFactoryThrowsIsTrouble) {
  const auto trouble = [this](const std::string& className) {
    upgrade_.WriteUpgrade({{"strategies", R"([{"module": "throwingfactory", "class": ")" + className + R"("}])"}});
    return upgrade_.TroubleWithTestModules();
  };
  EXPECT_EQ(trouble("CAny"), "no licence for CAny (strategy CAny of module throwingfactory, /strategies/0)");
  EXPECT_EQ(
      trouble("CHostException"),
      "the factory's message, code 0xA4520008 (strategy CHostException of module throwingfactory, /strategies/0)");
  EXPECT_EQ(trouble("CInt"),
            "it threw something that is not an exception of the standard library (strategy CInt of module "
            "throwingfactory, /strategies/0)");
}

TEST_F(StrategyModuleTest, ThatDoesNotKnowTheClassIsTrouble) {
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "checkmeta2024", "class": "CCheckMeta2024Helper"}])"}});
  EXPECT_EQ(upgrade_.Trouble(), upgrade_.File("upgrade.json") + ": /strategies/0/class: " + kModules +
                                    "/libcheckmeta2024.so has no strategy class \"CCheckMeta2024Helper\"");
}

TEST_F(StrategyModuleTest, IsNeverLookedUpInTheCurrentDirectory) {
  UseModule("strangers");
  fs::copy(kTestModules + "/libstrangers.so", upgrade_.File("libstrangers.so"));
  EXPECT_THAT(test::TroubleOf(test::RunTool({"run", "."}, upgrade_.Path())),
              HasSubstr("there is no libstrangers.so in " + kModules + ";"));
}

TEST_F(StrategyModuleTest, NothingElseIsLoadedFromTheCurrentDirectoryEither) {
  const fs::path libraries = fs::path(kModules).parent_path();
  for (const auto& library : fs::recursive_directory_iterator(libraries)) {
    if (!library.is_directory()) {
      upgrade_.Write(library.path().filename(), "This is not a shared library.\n");
    }
  }
  ASSERT_TRUE(fs::exists(upgrade_.File("libkvxsptjson.so"))) << libraries;
  ASSERT_TRUE(fs::exists(upgrade_.File("libcheckmeta2024.so"))) << libraries;
  const test::SProcessResult result = test::RunTool({"run", "."}, upgrade_.Path());
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_EQ(result.output, test::kFullReport);
}

TEST_F(StrategyModuleTest, IsNeverLookedUpWhereTheLoaderSearches) {
  UseModule("strangers");
  EXPECT_THAT(test::TroubleOf(
                  test::RunInShell("LD_LIBRARY_PATH='" + kTestModules + "' exec \"$0\" run \"$1\"", upgrade_.Path())),
              HasSubstr("there is no libstrangers.so in " + kModules + ";"));
}

TEST_F(StrategyModuleTest, DirectoryMayBeRelativeToTheCurrentOne) {
  UseModule("strangers");
  for (const char* directory : {".", "modules", "modules/"}) {
    const fs::path file = fs::path(upgrade_.File(directory)) / "libstrangers.so";
    fs::create_directories(file.parent_path());
    fs::copy(kTestModules + "/libstrangers.so", file, fs::copy_options::overwrite_existing);
    const test::SProcessResult result = test::RunTool({"run", "--module-dir", directory, "."}, upgrade_.Path());
    EXPECT_EQ(result.status, 0) << directory << ": " << result.errors;
    fs::remove(file);
  }
}

TEST_F(StrategyModuleTest, DirectoryIsByDefaultThatOfTheExecutableAndNotOfALinkToIt) {
  fs::create_symlink(UPGRADESRV_EXECUTABLE, upgrade_.File("tool"));
  const test::SProcessResult result = test::Run({upgrade_.File("tool"), "run", upgrade_.Path()});
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_EQ(result.output, test::kFullReport);
}

TEST_F(StrategyModuleTest, IsUnloadedAfterItsLastStrategyIsDeleted) {
  const std::string record = upgrade_.File("record");
  const auto strategy = [&record](const std::string& name) {
    return R"({"module": "recorder", "class": "C", "parameter": {"name": ")" + name + R"(", "record": ")" + record +
           R"("}})";
  };
  upgrade_.WriteUpgrade({{"strategies", "[" + strategy("first") + "," + strategy("second") + "]"}});
  const test::SProcessResult result = upgrade_.RunTestModules();
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_EQ(test::ReadFile(record), "invoked first\ndestroyed first\ninvoked second\ndestroyed second\nunloaded\n");
}

TEST_F(StrategyModuleTest, ClassNameIsPassedOnAsItStands) {
  upgrade_.WriteUpgrade({{"strategies", R"([{"module": "checkmeta2024", "class": "ccheckmetaSTRATEGY2024",
                          "parameter": {"execute_elements": ["link"]}}])"}});
  const test::SProcessResult result = upgrade_.Run();
  EXPECT_EQ(result.output, test::kLinkReport);
  EXPECT_THAT(result.errors, HasSubstr("upgradesrv: ccheckmetaSTRATEGY2024: differences reported\n"));
}

}  // namespace
