#pragma once

#include <string>
#include <vector>

#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/chain/UpgradeConfiguration.h"

namespace upgradesrv {

struct SRunArguments {
  std::string directory;
  /// Where modules are looked for before the default directory.
  std::vector<std::string> moduleDirectories;
  SConfigurationOverrides overrides;
};

/// Runs the chain of strategies in order and writes each one's "error_info" to standard output as soon as it ends.
/// The chain stops at the first strategy that fails, with CTrouble that names it. An error line logged during the run
/// is trouble as well.
EExitStatus RunUpgrade(const SRunArguments& arguments);

}  // namespace upgradesrv
