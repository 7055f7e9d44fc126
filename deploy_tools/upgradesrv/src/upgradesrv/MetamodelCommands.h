#pragma once

#include <string>

#include "upgradesrv/ExitStatus.h"

namespace upgradesrv {

/// Writes what a metamodel holds, counted by kind, to standard output; as a JSON object with `json`.
EExitStatus ShowMetamodel(const std::string& location, bool json);

/// Copies a metamodel. The source is read completely before the target is touched; a target that exists is replaced
/// only with `replace`.
EExitStatus CopyMetamodel(const std::string& source, const std::string& target, bool replace);

}  // namespace upgradesrv
