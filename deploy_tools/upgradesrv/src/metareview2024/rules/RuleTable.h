#pragma once

#include "metareview2024/Rule.h"
#include "metareview2024/compare/Difference.h"

namespace metareview {

/// The first rule that applies.
const SRule& RuleFor(const SDifference& difference);

}  // namespace metareview
