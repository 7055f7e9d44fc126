#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "metamodel copy": copies a metamodel. The source is read completely before the target is touched; a target that
/// exists is replaced only with --replace.
DefineCommand DefineMetamodelCopy;

}  // namespace upgradesrv
