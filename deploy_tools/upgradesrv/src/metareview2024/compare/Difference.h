#pragma once

#include <memory>
#include <optional>
#include <string>

#include "metareview2024/Finding.h"
#include "metareview2024/Path.h"
#include "metareview2024/Terms.h"

class CMetaProperty2024;

namespace metareview {

/// A difference as the comparison comes upon it, before it is judged. What it refers to lives as long as the call that
/// hands it out.
struct SDifference {
  /// Names are spelled as the client has them, else as the original.
  SPath path;
  EChange change = EChange::kChanged;
  EOrigin origin = EOrigin::kUnknown;

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
