#pragma once

#include <string>

#include "metareview2024/Terms.h"
#include "metareview2024/data/Lookups.h"

namespace metareview {

/// 16 hexadecimal digits that are others as soon as anything else is to be counted for elements of the kind. The script
/// of "-o sql" gives them with its counts, so that these are not taken for those of another script: what a finding
/// touches changes with every limit, though path and rule stay the same.
std::string LookupsDigest(const SLookups& lookups, EKind kind);

}  // namespace metareview
