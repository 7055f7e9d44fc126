#pragma once

#include <string>
#include <vector>

class CUpgradeContext;

namespace upgradesrv {

/// The files that a run reads, whether or not they are there: configuration, display texts, metamodels, and the modules
/// given.
std::vector<std::string> RunInputs(const CUpgradeContext& context, std::vector<std::string> modules);

}  // namespace upgradesrv
