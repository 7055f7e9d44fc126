#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "kvxsptstring/kvxsptstring_export.h"

namespace kvx {

KVXSPTSTRING_EXPORT bool IsUtf8(std::string_view text);

/// How many bytes the UTF-8 character at a position takes; 0 when there is none.
KVXSPTSTRING_EXPORT std::size_t Utf8CharacterSize(std::string_view text, std::size_t position);

/// The character of that size at a position.
KVXSPTSTRING_EXPORT std::uint32_t Utf8CodePoint(std::string_view text, std::size_t position, std::size_t size);

}  // namespace kvx
