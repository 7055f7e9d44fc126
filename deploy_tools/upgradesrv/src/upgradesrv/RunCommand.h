#pragma once

#include <string>

#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/UpgradeConfiguration.h"

namespace upgradesrv {

struct SRunArguments {
  std::string directory;
  std::string moduleDirectory;
  SConfigurationOverrides overrides;
};

/// Runs the chain of strategies in order and writes each one's "error_info" to standard output as soon as it ends.
/// The chain stops at the first strategy that fails, with CTrouble that names it. An error line logged during the run
/// is trouble as well.
EExitStatus RunUpgrade(const SRunArguments& arguments);

}  // namespace upgradesrv
