#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace metadb {

/// A value as a database hands it out; texts are where it keeps them. kText may also be a number of a kind that is
/// handed out as text.
struct SValue {
  enum EKind { kNull, kText, kInteger, kReal, kBlob };

  EKind kind = kNull;
  /// Of a floating point number its digits, as far as the database shows them.
  std::string_view text;
  std::int64_t integer = 0;
};

/// Takes a row, the key columns before STable::columns. Texts are valid during the call only.
using RowHandler = std::function<void(const std::vector<SValue>&)>;

}  // namespace metadb
