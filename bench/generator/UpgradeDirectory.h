#pragma once

#include <cstdint>
#include <filesystem>

#include "generator/Sizes.h"

namespace bench {

/// Writes a complete upgrade configuration directory, its metamodels as documents, and creates the
/// directories above it. Files that exist are replaced. Throws CKVXException, std::filesystem::filesystem_error.
void WriteUpgradeDirectory(const SSize& size, const SVariant& variant, std::uint32_t seed,
                           const std::filesystem::path& directory);

}  // namespace bench
