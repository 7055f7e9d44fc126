#include "upgradesrv/chain/RunningStrategy.h"

#include <cstdlib>

#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {
namespace {

/// The strategy that is running, for the end of the process; null between strategies.
const std::string* runningStrategy = nullptr;

void RefuseExit() {
  if (runningStrategy != nullptr) {
    WriteError(CRunningStrategy::Named("it ended the process"));
    std::_Exit(kTrouble);
  }
}

void RegisterRefusal() {
  static const bool registered = std::atexit(RefuseExit) == 0;
  if (!registered) {
    throw CTrouble("no room to register what is done at the end of the process");
  }
}

}  // namespace

CRunningStrategy::CRunningStrategy(const std::string& name) : crashLines_(name) {
  RegisterRefusal();
  runningStrategy = &name;
}

CRunningStrategy::~CRunningStrategy() {
  runningStrategy = nullptr;
}

std::string CRunningStrategy::Named(const std::string& problem) {
  return runningStrategy == nullptr ? problem : problem + " (" + *runningStrategy + ")";
}

}  // namespace upgradesrv
