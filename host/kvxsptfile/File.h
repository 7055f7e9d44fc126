#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// Told, while a file is read, how many bytes have been read and how many there are; 0 when that is not known.
using ReadObserver = std::function<void(std::size_t done, std::size_t total)>;

/// Reads a whole file. The string's capacity exceeds its size by at least `padding` bytes, which are 0. `observer` may
/// be empty. Throws CKVXException(kFileError, "PATH: cannot be read: reason").
KVXSPTFILE_EXPORT std::string ReadFile(const std::string& path, std::size_t padding = 0,
                                       const ReadObserver& observer = {});

/// "LINE:COLUMN" of a byte offset in a UTF-8 text, both counted from 1, columns in characters.
KVXSPTFILE_EXPORT std::string LineAndColumn(const char* text, std::size_t offset);

}  // namespace kvx
