#pragma once

#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// Why a file cannot be opened, for an errno; a symbolic link that leads nowhere is called that.
KVXSPTFILE_EXPORT std::string OpeningProblem(const std::string& path, int error);

}  // namespace kvx
