#include "upgradesrv/chain/UpgradeRun.h"

#include <filesystem>
#include <list>
#include <optional>
#include <system_error>

#include "kvxsptfile/ProtectedFiles.h"
#include "kvxsptlog/Log.h"
#include "metareview2024/render/ShellWord.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/CheckStrategy.h"
#include "upgradesrv/chain/LoadedStrategy.h"
#include "upgradesrv/chain/RunInputs.h"
#include "upgradesrv/chain/RunNotes.h"
#include "upgradesrv/chain/UpgradeFiles.h"

namespace upgradesrv {
namespace {

using Chain = std::list<CLoadedStrategy>;

/// All strategies, before the first one runs: what is wrong with a later one would otherwise show only after the work
/// of those before it.
Chain LoadChain(const CUpgradeConfiguration& configuration, std::vector<std::string> moduleDirectories) {
  for (const std::string& directory : moduleDirectories) {
    std::error_code error;
    if (!std::filesystem::is_directory(directory, error)) {
      WriteNote("--module-dir " + directory + ": there is no such directory; modules are searched in the others");
    }
  }
  moduleDirectories.push_back(DefaultModuleDirectory());
  Chain chain;
  for (const SStrategyConfiguration& strategy : configuration.GetStrategies()) {
    if (IsCheck(strategy)) {
      RequireCheckParameter(strategy);
    }
    chain.emplace_back(strategy, moduleDirectories);
  }
  return chain;
}

void WriteNotes(const Chain& chain, const CUpgradeContext& context) {
  std::vector<std::string> notes = RunNotes(context);
  for (const CLoadedStrategy& strategy : chain) {
    if (IsCheck(strategy.GetConfiguration())) {
      const std::vector<std::string> more = CheckNotes(strategy.GetConfiguration(), context);
      notes.insert(notes.end(), more.begin(), more.end());
    }
  }
  for (const std::string& note : notes) {
    WriteNoteOnce(note);
  }
}

std::string Outcome(const SStrategyConfiguration& strategy, bool reported, bool complete) {
  const std::string what = IsCheck(strategy) ? "differences" : "findings";
  const std::string outcome = reported   ? what + " reported"
                              : complete ? "nothing to report"
                                         : "no " + what + " reported";
  return strategy.className + ": " + outcome + (complete ? "" : ", but not complete: it logged errors");
}

/// Reviews the metamodels that the run takes.
std::string ReviewCommand(const SRunArguments& arguments) {
  std::string command = "upgradesrv review";
  const auto add = [&command](const char* option, const std::optional<std::string>& location) {
    if (location) {
      command.append(" ").append(option).append(" ").append(metareview::ShellWord(*location));
    }
  };
  add("--original", arguments.overrides.originalLocation);
  add("--client", arguments.overrides.clientLocation);
  return command + " " + metareview::ShellWord(arguments.directory);
}

/// Whether the strategy has reported anything.
bool Run(CLoadedStrategy& strategy, CUpgradeContext& context, const SRunArguments& arguments) {
  CMetaMgr2024::Instance().SetKept(IsCheck(strategy.GetConfiguration()) ? arguments.kept : nullptr);
  const std::size_t errorsBefore = CLog::GetErrorCount();
  const std::optional<std::string> text = strategy.Run(context);
  if (text) {
    WriteOutput(*text);
  }
  const SStrategyConfiguration& configuration = strategy.GetConfiguration();
  WriteNote(Outcome(configuration, text.has_value(), CLog::GetErrorCount() == errorsBefore));
  if (IsCheck(configuration)) {
    WriteNote(NoteOnReport(configuration, ReviewCommand(arguments)));
  }
  return text.has_value();
}

}  // namespace

EExitStatus RunUpgrade(const SRunArguments& arguments) {
  const CUpgradeConfiguration configuration(arguments.directory, arguments.overrides);
  CLog::Configure(configuration.GetDirectory() + kLogConfigurationFile);
  const std::size_t errorsBefore = CLog::GetErrorCount();
  CUpgradeContext context;
  configuration.FillContext(context);
  Chain chain = LoadChain(configuration, arguments.moduleDirectories);
  std::vector<std::string> modules;
  for (const CLoadedStrategy& strategy : chain) {
    modules.push_back(strategy.GetModulePath());
  }
  const kvx::CProtectedFiles inputs(RunInputs(context, modules));
  WriteNotes(chain, context);

  EExitStatus status = kNothingToReport;
  // Each is gone, with its module, before the next begins.
  for (; !chain.empty(); chain.pop_front()) {
    if (Run(chain.front(), context, arguments)) {
      status = kDifferencesReported;
    }
  }
  if (const std::size_t errors = CLog::GetErrorCount() - errorsBefore; errors != 0) {
    throw CTrouble("the strategies logged " + std::to_string(errors) + (errors == 1 ? " error" : " errors") +
                   "; see the log for the cause");
  }
  return status;
}

}  // namespace upgradesrv
