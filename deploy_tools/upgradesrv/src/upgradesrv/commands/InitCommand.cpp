#include "upgradesrv/commands/InitCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>

#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/init/InitUpgrade.h"

namespace upgradesrv {

void DefineInit(CLI::App& parent, SRequest& request) {
  const auto owner = std::make_shared<SInitArguments>();
  SInitArguments& arguments = *owner;
  CLI::App& init = *parent.add_subcommand("init", "Make an upgrade configuration directory");
  init.add_option("DIR", arguments.directory, "The directory to make; one that is there must be empty")->required();
  AddText(init, "--original", arguments.original, "The metamodel as shipped with the upgrade")->type_name("LOCATION");
  AddText(init, "--client", arguments.client, "The metamodel of the installation")->type_name("LOCATION");
  AddText(init, "--base", arguments.base, "The metamodel as shipped with the version in use")->type_name("LOCATION");
  init.add_option("--lang", arguments.lang, "Language of reports, for example de")
      ->type_name("CODE")
      ->capture_default_str();
  AddLoadingOptions(init, request);
  RequireValues(init);
  init.footer(
      "Metamodels that are named are checked, not copied: upgrade.json names them where they are. Without them the\n"
      "directory waits for two documents, and the command says where they belong.\n"
      "Exit status: 0 done, 2 failed; then nothing was made.\n"
      "\n"
      "  upgradesrv init DIR\n"
      "  upgradesrv init --original shipped.json --client postgresql:// DIR\n"
      "\n" +
      std::string(kLocationHelp));
  init.callback([owner, &request] { request.action = [owner] { return InitUpgrade(*owner); }; });
}

}  // namespace upgradesrv
