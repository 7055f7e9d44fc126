#pragma once

#include <optional>
#include <string_view>

#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// Compares two decimal numbers, -?[0-9]+(\.[0-9]+)?, exactly: negative, 0 or positive as `a` is less than, equal to or
/// greater than `b`. Nothing where one of the texts is not a number.
METAREVIEW2024_EXPORT std::optional<int> CompareNumbers(std::string_view a, std::string_view b);

}  // namespace metareview
