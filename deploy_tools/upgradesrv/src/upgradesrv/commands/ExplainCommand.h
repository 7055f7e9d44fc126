#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "explain": says what a rule of the review means.
DefineCommand DefineExplain;

}  // namespace upgradesrv
