#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "decide": records that findings are accepted.
DefineCommand DefineDecide;

}  // namespace upgradesrv
