#pragma once

#include <array>
#include <string_view>

#include "kvxsptjson/JsonDocument.h"

namespace kvx {

/// Copies values into the document that allocates them. Objects of a list mostly repeat the names and many texts of the
/// object before: a long text that is the same as the last one at its place is stored once.
class CDeepCopy {
 public:
  using Allocator = JsonDocument::AllocatorType;

  explicit CDeepCopy(Allocator& allocator) : allocator_(allocator) {}

  JsonValue Copy(const JsonValue& value);

 private:
  /// Of the last object's members at one place.
  struct SPlace {
    std::string_view name;
    std::string_view text;
  };

  bool Put(const JsonValue& value, JsonDocumentBase& target);
  bool PutObject(const JsonValue& object, JsonDocumentBase& target);
  bool PutText(const JsonValue& value, std::string_view& last, JsonDocumentBase& target);

  Allocator& allocator_;
  std::array<SPlace, 16> places_;
};

}  // namespace kvx
