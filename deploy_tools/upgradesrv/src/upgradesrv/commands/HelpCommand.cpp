#include "upgradesrv/commands/HelpCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>
#include <vector>

#include "upgradesrv/Output.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/UsageProblem.h"

namespace upgradesrv {
namespace {

/// The command of that name among the commands of `parent`; `path` is how one calls the parent.
const CLI::App& FindCommand(const CLI::App& parent, const std::string& path, const std::string& name) {
  const std::string names = CommandNames(parent);
  if (names.empty()) {
    throw CTrouble("\"" + path + "\" has no commands of its own; run \"" + path + " --help\" for details");
  }
  const std::vector<const CLI::App*> found =
      parent.get_subcommands([&name](const CLI::App* known) { return known->get_name() == name; });
  if (found.empty()) {
    throw CTrouble("unknown command \"" + name + "\"; the commands are " + names);
  }
  return *found.front();
}

EExitStatus Help(const CLI::App& app, const std::vector<std::string>& words) {
  const CLI::App* command = &app;
  std::string path = app.get_name();
  for (const std::string& word : words) {
    command = &FindCommand(*command, path, word);
    path.append(" ").append(word);
  }
  WriteOutput(command->get_formatter()->make_help(command, path, CLI::AppFormatMode::Normal));
  return kNothingToReport;
}

}  // namespace

void DefineHelp(CLI::App& parent, SRequest& request) {
  const auto words = std::make_shared<std::vector<std::string>>();
  CLI::App& help = *parent.add_subcommand("help", "Print the help of a command");
  help.add_option("COMMAND", *words, "The command, for example review or metamodel check");
  help.callback([&parent, words, &request] { request.action = [&parent, words] { return Help(parent, *words); }; });
}

}  // namespace upgradesrv
