#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace metadb {

/// A value as a database hands it out: a database may have turned numbers into texts, and texts stand where it keeps
/// them.
struct SValue {
  enum EKind { kNull, kText, kInteger };

  EKind kind = kNull;
  std::string_view text;
  std::int64_t integer = 0;
};

/// The rows of one table of a metamodel, in the order of its lists. Judges no value: CRows does.
class CCursor {
 public:
  CCursor() = default;
  virtual ~CCursor() = default;
  CCursor(const CCursor&) = delete;
  CCursor& operator=(const CCursor&) = delete;

  /// Goes to the next row and fills in its values, the key columns before STable::columns; false when there is none.
  /// `values` has one element per column; texts are valid until the next call. Throws soci::soci_error.
  virtual bool Fetch(std::vector<SValue>& values) = 0;
};

}  // namespace metadb
