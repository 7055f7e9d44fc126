#pragma once

#include <cstddef>
#include <string>

#include "kvxsptjson/kvxsptjson_export.h"

namespace kvx {

/// Reads a whole file. The string's capacity exceeds its size by at least `padding` bytes, which are 0.
/// Throws CKVXException(kFileError, "PATH: cannot be read: reason").
KVXSPTJSON_EXPORT std::string ReadFile(const std::string& path, std::size_t padding = 0);

/// "LINE:COLUMN" of a byte offset in a UTF-8 text, both counted from 1, columns in characters.
KVXSPTJSON_EXPORT std::string LineAndColumn(const char* text, std::size_t offset);

}  // namespace kvx
