#pragma once

#include <cstdint>

/// The 32-bit codes that the host libraries throw with CKVXException.
namespace kvx {

/// A JSON member is missing, or null where an object is required.
constexpr std::uint32_t kJsonMemberMissing = 0xA4C0003E;
/// A JSON member, or the node that is to hold it, has the wrong type.
constexpr std::uint32_t kJsonWrongType = 0xA4C00004;
/// A file cannot be read or written; the message names it and the system's reason.
constexpr std::uint32_t kFileError = 0xA4C00010;
/// A file's text is not what it has to be; the message begins with FILE:LINE:COLUMN or with the file and the place.
constexpr std::uint32_t kMalformedDocument = 0xA4C00011;
/// A metamodel cannot be loaded or stored for another reason, an unusable location among them.
constexpr std::uint32_t kMetamodelError = 0xA4C00012;
/// A metamodel is not stored, because something is there already that must not be replaced.
constexpr std::uint32_t kMetamodelExists = 0xA4C00013;
/// What was asked for cannot be done as it was asked; the message says why.
constexpr std::uint32_t kRefused = 0xA4C00014;

}  // namespace kvx
