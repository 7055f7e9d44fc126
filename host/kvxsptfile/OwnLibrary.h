#pragma once

#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// A function that a library of the host exports which only some runs need. It is loaded from where this library is,
/// and from nowhere else, and stays loaded: its threads, and what it does at the end of the process, need it. Throws
/// CKVXException (kvx::kFileError) for one that cannot be loaded, and what the library throws while it is loaded.
KVXSPTFILE_EXPORT void* FindInOwnLibrary(const std::string& library, const char* function);

}  // namespace kvx
