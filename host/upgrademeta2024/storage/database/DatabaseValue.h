#pragma once

#include <cstdint>
#include <functional>
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

/// Takes a row, the key columns before STable::columns. Texts are valid during the call only.
using RowHandler = std::function<void(const std::vector<SValue>&)>;

}  // namespace metadb
