#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "metamodel show": writes what a metamodel holds, counted by kind, to standard output.
DefineCommand DefineMetamodelShow;

}  // namespace upgradesrv
