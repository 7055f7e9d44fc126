#pragma once

#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// The one absolute path, without links and dots, of what a path names or will name: it need not be there yet.
KVXSPTFILE_EXPORT std::string CanonicalPath(const std::string& path);

/// Whether two paths lead to one file, which need not be there yet.
KVXSPTFILE_EXPORT bool IsSameFile(const std::string& a, const std::string& b);

}  // namespace kvx
