#pragma once

#include <string>
#include <vector>

#include "upgradesrv/UpgradeConfiguration.h"

namespace upgradesrv {

/// The files that a run reads, whether or not they are there: configuration, display texts, metamodels, modules.
std::vector<std::string> RunInputs(const CUpgradeConfiguration& configuration, const std::string& moduleDirectory);

}  // namespace upgradesrv
