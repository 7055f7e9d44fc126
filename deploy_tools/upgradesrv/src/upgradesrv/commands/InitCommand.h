#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "init": makes an upgrade configuration directory.
DefineCommand DefineInit;

}  // namespace upgradesrv
