#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "run": runs the strategies of an upgrade configuration directory.
DefineCommand DefineRun;

}  // namespace upgradesrv
