#pragma once

#include <cstddef>
#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// "LINE:COLUMN" of a byte offset in a UTF-8 text, both counted from 1, columns in characters.
KVXSPTFILE_EXPORT std::string LineAndColumn(const char* text, std::size_t offset);

}  // namespace kvx
