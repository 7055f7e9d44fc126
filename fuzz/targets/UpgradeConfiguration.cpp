// upgrade.json of any text is refused on one line that names it, or gives a chain that can be run.
#include <filesystem>

#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "kvxsptjson/JsonObject.h"
#include "support/TemporaryDirectory.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/StrategyModule.h"
#include "upgradesrv/chain/UpgradeConfiguration.h"

namespace {

using fuzz::Require;

/// The message of the failure of `action`; empty when it ends normally.
template <typename Action>
std::string MessageOf(Action&& action) {
  std::string message;
  try {
    const test::SError error = test::ErrorOf(action);
    message = fuzz::Succeeded(error) ? "" : error.message;
  } catch (const upgradesrv::CTrouble& trouble) {
    message = trouble.what();
  }
  fuzz::RequireOneLine(message);
  return message;
}

void RequireRunnable(const upgradesrv::CUpgradeConfiguration& configuration,
                     const test::CTemporaryDirectory& directory) {
  CUpgradeContext context;
  configuration.FillContext(context);
  Require(context.GetUpgradeCfgPath() == directory.Path(), "the directory is the one that was given");
  Require(std::filesystem::path(context.GetVersionUpgradeCfgPath()).parent_path() == directory.Path(),
          "the version's directory lies in it", context.GetVersionUpgradeCfgPath());
  Require(!context.GetLang().empty(), "there is a language");
  Require(!context.GetOriginalMetaLocation().empty() && !context.GetClientMetaLocation().empty(),
          "there are two metamodels");
  Require(!configuration.GetStrategies().empty(), "there is a strategy");
  for (const upgradesrv::SStrategyConfiguration& strategy : configuration.GetStrategies()) {
    Require(strategy.parameter != nullptr && strategy.parameter->IsObject(), "a strategy has a parameter");
    // Nothing lies in the module directory, so whatever a name reaches lies elsewhere.
    const std::string message =
        MessageOf([&] { const upgradesrv::CStrategyModule module({directory.File("modules")}, strategy.module); });
    Require(!message.empty(), "a module's name does not leave the module directory", strategy.module);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::CTemporaryDirectory directory;
  static const bool created = std::filesystem::create_directory(directory.File("2024"));
  Require(created, "the version's directory is new");
  directory.Write("upgrade.json", fuzz::Text(data, size));

  upgradesrv::SConfigurationOverrides overrides;
  const std::string plain = MessageOf(
      [&] { RequireRunnable(upgradesrv::CUpgradeConfiguration(directory.Path() + "//", overrides), directory); });
  overrides.lang = "de";
  overrides.clientLocation = "client.json";
  overrides.elements = {{"class", "link"}};
  const std::string overridden = MessageOf([&] {
    const upgradesrv::CUpgradeConfiguration configuration(directory.Path(), overrides);
    RequireRunnable(configuration, directory);
    CUpgradeContext context;
    configuration.FillContext(context);
    Require(context.GetLang() == "de" && context.GetClientMetaLocation() == "client.json", "options override the file");
  });
  Require(plain.empty() || !overridden.empty(), "options do not make a bad file good", plain);
  for (const std::string& message : {plain, overridden}) {
    Require(message.empty() || message.find("upgrade.json") != std::string::npos, "the file is named", message);
  }
  return 0;
}
