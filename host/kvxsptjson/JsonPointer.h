#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "kvxsptjson/kvxsptjson_export.h"

/// Places in JSON documents, as JSON pointers (RFC 6901).
namespace kvx {

/// Appends a step to a pointer: "~" and "/" in the key become "~0" and "~1".
KVXSPTJSON_EXPORT void AppendToJsonPointer(std::string& pointer, std::string_view key);

/// The offset in `text`, which must be JSON, at which the value at a pointer begins; where there is none, that of the
/// innermost value around it. Of two members of one name, the last counts.
KVXSPTJSON_EXPORT std::size_t FindJsonValue(std::string_view text, std::string_view pointer);

}  // namespace kvx
