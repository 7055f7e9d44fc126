#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "metamodel check": writes what is wrong with a metamodel to standard output. For whoever writes a program that
/// exports one.
DefineCommand DefineMetamodelCheck;

}  // namespace upgradesrv
