#pragma once

#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/Terms.h"

class CMetaDictionary2024;

namespace metareview {

/// What is peculiar about a base, as far as the kinds go.
std::vector<ENote> NotesOnBase(const CMetaDictionary2024& client, const CMetaDictionary2024& original,
                               const CMetaDictionary2024& base, const std::vector<EKind>& kinds);

}  // namespace metareview
