#pragma once

#include <memory>
#include <string>
#include <vector>

#include "upgrademeta2024/MetaMgr2024.h"
#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/chain/UpgradeConfiguration.h"

namespace upgradesrv {

struct SRunArguments {
  std::string directory;
  /// Where modules are looked for before the default directory.
  std::vector<std::string> moduleDirectories;
  SConfigurationOverrides overrides;
  /// Takes the metamodels that the check loads; null for nobody who wants them. What other strategies load is theirs to
  /// change, and is not kept.
  std::shared_ptr<LoadedMetamodels2024> kept;
};

/// Runs the chain of strategies in order and writes each one's "error_info" to standard output as soon as it ends.
/// The chain stops at the first strategy that fails, with CTrouble that names it. An error line logged during the run
/// is trouble as well.
EExitStatus RunUpgrade(const SRunArguments& arguments);

}  // namespace upgradesrv
