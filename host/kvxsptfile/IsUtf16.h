#pragma once

#include <string_view>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// Whether a JSON text is in UTF-16, by its byte order mark or by the NULs in its first four bytes.
KVXSPTFILE_EXPORT bool IsUtf16(std::string_view text);

/// What a reader of UTF-8 says of such a text.
constexpr const char* kUtf16Problem = "the text is in UTF-16; save it as UTF-8";

}  // namespace kvx
