#pragma once

#include "upgradesrv/commands/Command.h"

namespace upgradesrv {

/// "review": judges every difference between the metamodels of an upgrade.
DefineCommand DefineReview;

}  // namespace upgradesrv
