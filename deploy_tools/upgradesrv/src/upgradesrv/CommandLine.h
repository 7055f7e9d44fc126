#pragma once

#include "upgradesrv/ExitStatus.h"

namespace upgradesrv {

/// Runs the command that the arguments name. Throws nothing: trouble is written to standard error as one line.
EExitStatus RunCommandLine(int argumentCount, const char* const* arguments) noexcept;

}  // namespace upgradesrv
