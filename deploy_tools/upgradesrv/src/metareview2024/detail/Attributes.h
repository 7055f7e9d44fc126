#pragma once

#include <vector>

#include "metareview2024/Terms.h"

namespace metareview {

/// What an element of the kind is as a thing.
EThing ThingOf(EKind kind);

/// The attributes that are compared, in the order of findings; none for a listed behavior.
const std::vector<EAttribute>& AttributesOf(EThing thing);

}  // namespace metareview
