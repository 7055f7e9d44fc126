#include "upgradesrv/CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <exception>
#include <functional>
#include <new>
#include <optional>
#include <string>

#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"
#include "upgradesrv/MetamodelCommands.h"
#include "upgradesrv/RunCommand.h"
#include "upgradesrv/StrategyModule.h"

namespace upgradesrv {
namespace {

constexpr const char* kLocationHelp =
    "A metamodel LOCATION is one of\n"
    "  NAME.json                       a metamodel document\n"
    "  NAME.db, NAME.sqlite            an SQLite database\n"
    "  sqlite3://PATH                  the same, whatever its name ends in\n"
    "  'postgresql://host=H dbname=D'  a PostgreSQL database, in libpq's connection words\n"
    "  postgresql://USER@HOST/DATABASE the same as a URI; what is left out, libpq finds in PGHOST, PGDATABASE and\n"
    "                                  its other variables, PGSERVICE and PGPASSFILE. A password belongs into the\n"
    "                                  password file: command lines can be seen by others.";

/// The command that the parsed arguments ask for.
using Command = std::function<EExitStatus()>;

/// Defines one option whose value overrides something only when it is given.
template <typename Value>
CLI::Option* AddOverride(CLI::App& app, const std::string& name, std::optional<Value>& value, const std::string& help) {
  return app.add_option_function<Value>(
      name, [&value](const Value& given) { value = given; }, help);
}

void DefineRun(CLI::App& app, SRunArguments& arguments, Command& command) {
  CLI::App& run = *app.add_subcommand("run", "Run the upgrade strategies that UPGRADE_DIR/upgrade.json names");
  run.add_option("UPGRADE_DIR", arguments.directory, "The upgrade configuration directory")->required();
  AddOverride(run, "--lang", arguments.overrides.lang, "Language of the report, for example en")->type_name("CODE");
  AddOverride(run, "--original", arguments.overrides.originalLocation,
              "Metamodel as shipped, relative to the current directory")
      ->type_name("LOCATION");
  AddOverride(run, "--client", arguments.overrides.clientLocation,
              "Metamodel of the installation, relative to the current directory")
      ->type_name("LOCATION");
  AddOverride(run, "--elements", arguments.overrides.elements,
              "Kinds of elements to check, in this order: class, link, behavior")
      ->type_name("KIND[,KIND...]")
      ->delimiter(',');
  run.add_option("--module-dir", arguments.moduleDirectory, "Where modules are found, lib<name>.so")
      ->type_name("DIR")
      ->default_str("the directory \"modules\" beside the executable");
  run.footer(
      "Reports go to standard output, notes and log lines to standard error.\n"
      "Exit status: 0 nothing to report, 1 differences reported, 2 trouble.\n" +
      std::string(kLocationHelp));
  run.callback([&] { command = [&] { return RunUpgrade(arguments); }; });
}

struct SMetamodelArguments {
  std::string source;
  std::string target;
  std::string format = "text";
  bool replace = false;
};

void DefineMetamodel(CLI::App& app, SMetamodelArguments& arguments, Command& command) {
  CLI::App& metamodel = *app.add_subcommand("metamodel", "Look at metamodels and copy them");
  metamodel.require_subcommand(1);
  metamodel.footer(kLocationHelp);

  CLI::App& show = *metamodel.add_subcommand("show", "Count what a metamodel holds");
  show.add_option("LOCATION", arguments.source, "The metamodel")->required();
  show.add_option("--format", arguments.format, "text or json")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
  show.footer(kLocationHelp);
  show.callback([&] { command = [&] { return ShowMetamodel(arguments.source, arguments.format == "json"); }; });

  CLI::App& copy = *metamodel.add_subcommand("copy", "Copy a metamodel");
  copy.add_option("SOURCE", arguments.source, "The metamodel to read")->required();
  copy.add_option("TARGET", arguments.target, "Where to write it")->required();
  copy.add_flag("--replace", arguments.replace, "Replace a target that exists");
  copy.footer(kLocationHelp);
  copy.callback(
      [&] { command = [&] { return CopyMetamodel(arguments.source, arguments.target, arguments.replace); }; });
}

/// A location whose spaces were not quoted falls apart into arguments, one of them perhaps with a password.
std::string ShowableProblem(const std::string& problem) {
  std::string lower = problem;
  CStringHelper::ToLower(lower);
  if (lower.find("password") == std::string::npos && lower.find("://") == std::string::npos) {
    return problem;
  }
  return "the arguments cannot be understood; a location with spaces needs quotation marks";
}

EExitStatus ParseAndRun(int argumentCount, const char* const* argumentValues) {
  CLI::App app("Runs the strategies of an upgrade, the metamodel check among them.", "upgradesrv");
  app.set_version_flag("--version", std::string("upgradesrv ") + UPGRADESRV_VERSION);
  app.require_subcommand(1);
  app.footer("upgradesrv COMMAND --help tells more.");
  SRunArguments runArguments;
  SMetamodelArguments metamodelArguments;
  Command command;
  DefineRun(app, runArguments, command);
  DefineMetamodel(app, metamodelArguments, command);
  try {
    app.parse(argumentCount, argumentValues);
  } catch (const CLI::CallForHelp&) {
    WriteOutput(app.help());
    return kNothingToReport;
  } catch (const CLI::CallForVersion& version) {
    WriteOutput(std::string(version.what()) + "\n");
    return kNothingToReport;
  } catch (const CLI::ParseError& error) {
    throw CTrouble(ShowableProblem(error.what()) + "; see upgradesrv --help");
  }
  if (runArguments.moduleDirectory.empty()) {
    runArguments.moduleDirectory = DefaultModuleDirectory();
  }
  return command();
}

}  // namespace

EExitStatus RunCommandLine(int argumentCount, const char* const* arguments) noexcept {
  std::string problem;
  try {
    return ParseAndRun(argumentCount, arguments);
  } catch (const std::bad_alloc&) {
    problem = "out of memory";
  } catch (const std::exception& error) {
    problem = error.what();
  } catch (...) {
    problem = "unexpected failure";
  }
  WriteError(problem);
  return kTrouble;
}

}  // namespace upgradesrv
