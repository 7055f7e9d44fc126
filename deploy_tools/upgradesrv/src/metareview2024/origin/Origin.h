#pragma once

#include <optional>

#include "metareview2024/Finding.h"
#include "metareview2024/Terms.h"
#include "metareview2024/origin/Content.h"

namespace metareview {

/// Who changed an attribute; `base` is empty where the base has no such element, method or property.
EOrigin OriginOfValue(EAttribute attribute, const std::optional<Value>& base, const Value& original,
                      const Value& client);

/// Who added or removed something that only one side has: whether the base has it, and the same content.
EOrigin OriginOfWhole(EChange change, bool inBase, bool sameInBase);

/// The same for the side's thing and the base's, which may be null.
template <typename Thing>
EOrigin OriginOfWhole(EChange change, const Thing* base, const Thing& present) {
  return OriginOfWhole(change, base != nullptr, base != nullptr && HaveSameContent(*base, present));
}

}  // namespace metareview
