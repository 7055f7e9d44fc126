#pragma once

#include <memory>
#include <optional>
#include <string>

#include "metareview2024/Finding.h"
#include "metareview2024/Terms.h"

class CMetaProperty2024;

namespace metareview {

/// A difference as the comparison comes upon it, before it is judged. What it refers to lives as long as the call that
/// hands it out.
struct SDifference {
  EKind kind = EKind::kClass;
  EThing thing = EThing::kClass;
  EAttribute attribute = EAttribute::kNone;
  EChange change = EChange::kChanged;
  EOrigin origin = EOrigin::kUnknown;

  /// Names, spelled as the client has them, else as the original; `part` is empty where the thing is the element.
  std::string element;
  std::string part;
  std::optional<std::string> displayName;

  /// Of a changed attribute.
  std::optional<Value> base;
  std::optional<Value> original;
  std::optional<Value> client;

  /// Both sides of a property; null where the thing is none, and for the side that has none.
  const CMetaProperty2024* clientProperty = nullptr;
  const CMetaProperty2024* originalProperty = nullptr;

  /// Of an inserted behavior or listed behavior: whether it has properties on the client's side.
  bool hasColumns = false;
  /// Of something deleted: what holds its identity or field; null for nothing.
  std::shared_ptr<const STaken> taken;
};

}  // namespace metareview
