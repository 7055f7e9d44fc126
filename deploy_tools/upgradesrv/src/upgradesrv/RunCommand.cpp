#include "upgradesrv/RunCommand.h"

#include <cstdlib>
#include <memory>
#include <new>
#include <optional>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/ProtectedFiles.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptlog/Log.h"
#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradecontext/UpgradeStrategy.h"
#include "upgrademeta2024/MetaMgr2024.h"
#include "upgrademeta2024/MetaReadAhead.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/RunInputs.h"
#include "upgradesrv/RunNotes.h"
#include "upgradesrv/StrategyModule.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/UpgradeFiles.h"

namespace upgradesrv {
namespace {

/// The text that a strategy hands back; none when it reports nothing.
std::optional<std::string> Invoke(const CStrategyModule& module, const SStrategyConfiguration& configuration,
                                  CUpgradeContext& context) {
  const std::unique_ptr<CUpgradeStrategy> strategy = module.CreateStrategy(configuration.className);
  strategy->SetParameter(configuration.parameter);
  CHandlerContext handlerContext(configuration.className);
  strategy->Invoke(handlerContext, context);
  const std::shared_ptr<CJsonObject> result = strategy->GetResult();
  if (result == nullptr) {
    return std::nullopt;
  }
  if (!result->IsString("error_info")) {
    throw CTrouble("its result has no string \"error_info\"");
  }
  return result->GetStringValue("error_info");
}

/// The strategy that is running, for the end of the process; null between strategies.
const std::string* runningStrategy = nullptr;

/// A module that ends the process must not make the run look clean.
void RefuseExit() {
  if (runningStrategy != nullptr) {
    WriteError(*runningStrategy + " failed: it ended the process");
    std::_Exit(kTrouble);
  }
}

class CRunningStrategy {
 public:
  explicit CRunningStrategy(const std::string& name) { runningStrategy = &name; }
  ~CRunningStrategy() { runningStrategy = nullptr; }
  CRunningStrategy(const CRunningStrategy&) = delete;
  CRunningStrategy& operator=(const CRunningStrategy&) = delete;
};

/// Invoke with every failure turned into CTrouble while the module, whose code an exception may need, is still loaded.
std::optional<std::string> RunStrategy(const std::string& moduleDirectory, const SStrategyConfiguration& configuration,
                                       CUpgradeContext& context) {
  const std::string strategy = "strategy " + configuration.className + " of module " + configuration.module;
  const CRunningStrategy running(strategy);
  const CStrategyModule module(moduleDirectory, configuration.module);
  const auto readAhead = std::make_shared<CMetaReadAhead>();
  CMetaMgr2024::Instance().SetReadAhead(readAhead);
  std::string problem;
  try {
    return Invoke(module, configuration, context);
  } catch (const CKVXException& error) {
    problem = error.what();
    if (error.HasMessage()) {
      problem += " (code " + error.GetCodeText() + ")";
    }
    if (error.GetCode() == kvx::kJsonMemberMissing || error.GetCode() == kvx::kJsonWrongType) {
      problem += "; look at " + configuration.place + "/parameter and at the documents that the strategy reads in " +
                 context.GetUpgradeCfgPath();
    }
  } catch (const std::bad_alloc&) {
    problem = "out of memory";
  } catch (const std::exception& error) {
    problem = error.what();
  } catch (...) {
    problem = "it threw something that is not an exception of the standard library";
  }
  throw CTrouble(strategy + " failed: " + problem);
}

}  // namespace

EExitStatus RunUpgrade(const SRunArguments& arguments) {
  if (std::atexit(RefuseExit) != 0) {
    throw CTrouble("no room to register what is done at the end of the process");
  }
  const CUpgradeConfiguration configuration(arguments.directory, arguments.overrides);
  CLog::Configure(configuration.GetDirectory() + kLogConfigurationFile);
  const kvx::CProtectedFiles inputs(RunInputs(configuration, arguments.moduleDirectory));
  CUpgradeContext context;
  configuration.FillContext(context);
  for (const std::string& note : RunNotes(context)) {
    WriteNote(note);
  }

  EExitStatus status = kNothingToReport;
  for (const SStrategyConfiguration& strategy : configuration.GetStrategies()) {
    if (const auto [found, elements] = strategy.parameter->GetPropertyStringArrayValue("execute_elements");
        found && elements.empty()) {
      WriteNote(strategy.className + ": \"execute_elements\" is empty, so nothing is checked");
    }
    const std::size_t errorsBefore = CLog::GetErrorCount();
    const std::optional<std::string> text = RunStrategy(arguments.moduleDirectory, strategy, context);
    if (text) {
      status = kDifferencesReported;
      WriteOutput(*text);
    }
    const bool complete = CLog::GetErrorCount() == errorsBefore;
    const std::string outcome = text       ? "differences reported"
                                : complete ? "nothing to report"
                                           : "no differences reported";
    WriteNote(strategy.className + ": " + outcome + (complete ? "" : ", but not complete: it logged errors"));
  }
  if (const std::size_t errors = CLog::GetErrorCount(); errors != 0) {
    throw CTrouble("the strategies logged " + std::to_string(errors) + (errors == 1 ? " error" : " errors") +
                   "; clear up what the log says and run again");
  }
  return status;
}

}  // namespace upgradesrv
