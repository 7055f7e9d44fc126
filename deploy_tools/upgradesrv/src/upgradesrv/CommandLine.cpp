#include "upgradesrv/CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <array>
#include <exception>
#include <map>
#include <new>
#include <string>
#include <vector>

#include "kvxsptfile/FileNotes.h"
#include "kvxsptfile/LoadDeadline.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/ProgressLine.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/UsageProblem.h"
#include "upgradesrv/VersionText.h"
#include "upgradesrv/commands/CheckCommand.h"
#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/commands/CopyCommand.h"
#include "upgradesrv/commands/DecideCommand.h"
#include "upgradesrv/commands/ExplainCommand.h"
#include "upgradesrv/commands/HelpCommand.h"
#include "upgradesrv/commands/InitCommand.h"
#include "upgradesrv/commands/ReviewCommand.h"
#include "upgradesrv/commands/RunCommand.h"
#include "upgradesrv/commands/ShowCommand.h"

namespace upgradesrv {
namespace {

struct SGroup {
  const char* name;
  const char* help;
};

constexpr SGroup kNoGroup = {"", ""};
constexpr SGroup kMetamodel = {"metamodel", "Show, check and copy metamodels"};

struct SCommand {
  const SGroup* group;
  DefineCommand* define;
};

/// All commands, in the order of the help. Those of a group follow its name on the command line.
constexpr std::array<SCommand, 9> kCommands = {{
    {&kNoGroup, &DefineInit},
    {&kNoGroup, &DefineRun},
    {&kNoGroup, &DefineReview},
    {&kNoGroup, &DefineDecide},
    {&kNoGroup, &DefineExplain},
    {&kMetamodel, &DefineMetamodelShow},
    {&kMetamodel, &DefineMetamodelCheck},
    {&kMetamodel, &DefineMetamodelCopy},
    {&kNoGroup, &DefineHelp},
}};

CLI::App* AddGroup(CLI::App& app, const SGroup& group) {
  CLI::App* added = app.add_subcommand(group.name, group.help);
  added->require_subcommand(1);
  added->footer(kLocationHelp);
  return added;
}

void DefineCommands(CLI::App& app, SRequest& request) {
  std::map<const SGroup*, CLI::App*> parents = {{&kNoGroup, &app}};
  for (const auto& command : kCommands) {
    CLI::App*& parent = parents[command.group];
    if (parent == nullptr) {
      parent = AddGroup(app, *command.group);
    }
    command.define(*parent, request);
  }
}

EExitStatus ParseAndRun(int argumentCount, const char* const* argumentValues) {
  CLI::App app("Checks and reviews the metamodels of an upgrade.", "upgradesrv");
  app.set_version_flag("--version", &VersionText, "Print the version, and what was built and is found");
  app.require_subcommand(1);
  app.footer("Run \"upgradesrv help COMMAND\" for details.");
  SRequest request;
  AddLoadingOptions(app, request);
  DefineCommands(app, request);
  try {
    app.parse(argumentCount, argumentValues);
  } catch (const CLI::CallForHelp&) {
    WriteOutput(app.help());
    return kNothingToReport;
  } catch (const CLI::CallForVersion& version) {
    WriteOutput(std::string(version.what()) + "\n");
    return kNothingToReport;
  } catch (const CLI::ParseError& error) {
    const std::vector<std::string> arguments(argumentValues + (argumentCount > 0 ? 1 : 0),
                                             argumentValues + argumentCount);
    const std::string problem = CTrouble(UsageProblem(app, error, arguments, request)).what();
    for (const CLI::App* command : app.get_subcommands()) {
      if (const auto refusal = request.refusals.find(command); refusal != request.refusals.end()) {
        refusal->second(problem, arguments);
      }
    }
    throw CTrouble(problem);
  }
  kvx::CFileNotes::SetReceiver([](const std::string& note) {
    CProgressLine::Erase();
    WriteNoteOnce(note);
  });
  kvx::CLoadDeadline::Set(request.timeout);
  const CProgressLine progress(!request.quiet);
  return request.action();
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
