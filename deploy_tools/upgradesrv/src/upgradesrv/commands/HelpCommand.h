#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "help": prints the help of another command of `parent`.
DefineCommand DefineHelp;

}  // namespace upgradesrv
