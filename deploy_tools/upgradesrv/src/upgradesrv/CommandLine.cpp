#include "upgradesrv/CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "kvxsptstring/StringHelper.h"
#include "upgradesrv/CommandLineParts.h"
#include "upgradesrv/MetamodelCommands.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/ProgressLine.h"
#include "upgradesrv/ReviewOptions.h"
#include "upgradesrv/RunCommand.h"
#include "upgradesrv/StrategyModule.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {
namespace {

void DefineRun(CLI::App& app, SRunArguments& arguments, bool& quiet, Command& command) {
  CLI::App& run = *app.add_subcommand("run", "Run the upgrade strategies that UPGRADE_DIR/upgrade.json names");
  run.add_option("UPGRADE_DIR", arguments.directory, "The upgrade configuration directory")->required();
  const auto addOverride = [&run](const std::string& name, std::optional<std::string>& value, const std::string& help) {
    return run.add_option_function<std::string>(
        name, [&value](const std::string& given) { value = given; }, help);
  };
  addOverride("--lang", arguments.overrides.lang, "Language of the report, for example en")->type_name("CODE");
  addOverride("--original", arguments.overrides.originalLocation,
              "Metamodel as shipped, relative to the current directory")
      ->type_name("LOCATION");
  addOverride("--client", arguments.overrides.clientLocation,
              "Metamodel of the installation, relative to the current directory")
      ->type_name("LOCATION");
  // A list of our own: the parser's would drop empty items and go on into the arguments that follow.
  run.add_option_function<std::string>(
         "--elements", [&arguments](const std::string& list) { arguments.overrides.elements = SplitAtCommas(list); },
         "Kinds of elements to check, in this order: class, link, behavior")
      ->type_name("KIND[,KIND...]")
      ->check(&ElementsProblem);
  run.add_option("--module-dir", arguments.moduleDirectory,
                 "Where modules are found, lib<name>.so; without it the directory \"modules\" beside the executable")
      ->type_name("DIR");
  DefineQuiet(run, quiet);
  RequireValues(run);
  run.footer(
      "Reports go to standard output, notes and log lines to standard error.\n"
      "Exit status: 0 nothing to report, 1 differences reported, 2 trouble.\n" +
      std::string(kLocationHelp));
  run.callback([&] {
    command = [&] {
      if (arguments.moduleDirectory.empty()) {
        arguments.moduleDirectory = DefaultModuleDirectory();
      }
      return RunUpgrade(arguments);
    };
  });
}

struct SMetamodelArguments {
  std::string source;
  std::string target;
  std::string format = "text";
  bool replace = false;
};

void DefineMetamodel(CLI::App& app, SMetamodelArguments& arguments, bool& quiet, Command& command) {
  CLI::App& metamodel = *app.add_subcommand("metamodel", "Look at metamodels and copy them");
  metamodel.require_subcommand(1);
  metamodel.footer(kLocationHelp);

  CLI::App& show = *metamodel.add_subcommand("show", "Count what a metamodel holds");
  show.add_option("LOCATION", arguments.source, "The metamodel")->required();
  show.add_option("--format", arguments.format, "text or json")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
  DefineQuiet(show, quiet);
  RequireValues(show);
  show.footer(kLocationHelp);
  show.callback([&] { command = [&] { return ShowMetamodel(arguments.source, arguments.format == "json"); }; });

  CLI::App& copy = *metamodel.add_subcommand("copy", "Copy a metamodel");
  copy.add_option("SOURCE", arguments.source, "The metamodel to read")->required();
  copy.add_option("TARGET", arguments.target, "Where to write it")->required();
  copy.add_flag("--replace", arguments.replace, "Replace a target that exists");
  DefineQuiet(copy, quiet);
  RequireValues(copy);
  copy.footer(kLocationHelp);
  copy.callback(
      [&] { command = [&] { return CopyMetamodel(arguments.source, arguments.target, arguments.replace); }; });
}

/// Whether the arguments hold a password: a location whose spaces were not quoted falls apart into several of them.
bool MayShowSecret(const std::vector<std::string>& arguments) {
  return std::any_of(arguments.begin(), arguments.end(), [](std::string argument) {
    CStringHelper::ToLower(argument);
    return argument.find("password") != std::string::npos || argument.find("postgresql://") == 0;
  });
}

/// What is wrong with the arguments and where help is found. The parser's own words, unless they leave out the argument
/// that is the cause.
std::string UsageProblem(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App* command = &app;
  std::string path = app.get_name();
  while (!command->get_subcommands().empty()) {
    command = command->get_subcommands().front();
    path += " " + command->get_name();
  }
  const std::vector<std::string> unexpected = app.remaining(/*recurse=*/true);
  std::string problem = error.what();
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::RequiredError) ||
      error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError)) {
    std::string commands;
    for (const CLI::App* known : command->get_subcommands([](const CLI::App*) { return true; })) {
      commands += (commands.empty() ? "" : ", ") + known->get_name();
    }
    if (!unexpected.empty() && unexpected.front().rfind('-', 0) == 0) {
      problem = "unknown option " + unexpected.front();
    } else if (!commands.empty()) {
      problem = unexpected.empty() ? "no command is given" : "unknown command \"" + unexpected.front() + "\"";
      problem += "; the commands are " + commands;
    } else if (!unexpected.empty()) {
      problem = "unexpected argument \"" + unexpected.front() + "\"";
    }
  }
  return problem + "; see " + path + " --help";
}

EExitStatus ParseAndRun(int argumentCount, const char* const* argumentValues) {
  CLI::App app("Runs the strategies of an upgrade, the metamodel check among them.", "upgradesrv");
  app.set_version_flag("--version", std::string("upgradesrv ") + UPGRADESRV_VERSION);
  app.require_subcommand(1);
  app.footer("upgradesrv COMMAND --help tells more.");
  SRunArguments runArguments;
  SMetamodelArguments metamodelArguments;
  SReviewOptions reviewOptions;
  bool quiet = false;
  DefineQuiet(app, quiet);
  Command command;
  DefineRun(app, runArguments, quiet, command);
  DefineReview(app, reviewOptions, quiet, command);
  DefineDecide(app, reviewOptions, quiet, command);
  DefineExplain(app, reviewOptions, command);
  DefineMetamodel(app, metamodelArguments, quiet, command);
  try {
    app.parse(argumentCount, argumentValues);
  } catch (const CLI::CallForHelp&) {
    WriteOutput(app.help());
    return kNothingToReport;
  } catch (const CLI::CallForVersion& version) {
    WriteOutput(std::string(version.what()) + "\n");
    return kNothingToReport;
  } catch (const CLI::ParseError& error) {
    throw CTrouble(MayShowSecret({argumentValues, argumentValues + argumentCount})
                       ? "the arguments cannot be understood; a location with spaces needs quotation marks; "
                         "see upgradesrv --help"
                       : UsageProblem(app, error));
  }
  kvx::CFileNotes::SetReceiver(WriteNote);
  const CProgressLine progress(!quiet);
  return command();
}

}  // namespace

EExitStatus RunCommandLine(int argumentCount, const char* const* arguments) noexcept {
  try {
    try {
      return ParseAndRun(argumentCount, arguments);
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const std::exception& error) {
      WriteError(error.what());
    } catch (...) {
      WriteError("unexpected failure");
    }
  } catch (const std::exception&) {
    // There may not even have been memory for the words about another failure.
    WriteOutOfMemory();
  }
  return kTrouble;
}

}  // namespace upgradesrv
