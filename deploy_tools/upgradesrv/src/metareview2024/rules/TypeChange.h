#pragma once

#include <optional>
#include <string_view>

#include "metareview2024/metareview2024_export.h"

namespace metareview {

enum class ETypeChange {
  /// The new type holds every value of the old one.
  kWidened,
  /// It does not.
  kNarrowed,
  /// It holds every value and more that the old one refuses.
  kRelaxed
};

/// What becomes of stored values when a property of the client's type gets the original's; nothing for two types that
/// do not turn into each other.
METAREVIEW2024_EXPORT std::optional<ETypeChange> TypeChangeOf(std::string_view client, std::string_view original);

}  // namespace metareview
