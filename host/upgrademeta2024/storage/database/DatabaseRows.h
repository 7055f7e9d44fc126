#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgrademeta2024/storage/database/DatabaseValue.h"

namespace metadb {

/// Content that is not a metamodel; the message names table, row and column. The database is added where it is caught.
struct SContentError {
  std::string message;
};

/// "table TABLE, row COLUMN 1, COLUMN 2", `keys` being the values of the key columns.
std::string RowPlace(const STable& table, const std::vector<std::string>& keys);

/// What is wrong with a column of a row.
std::string RowFault(const STable& table, const std::vector<std::string>& keys, const char* column,
                     const std::string& problem);

/// What hears of content that is not a metamodel's; `message` is as in SContentError.
using RowFaultHandler = std::function<void(const std::string& message)>;

/// The greatest number that a column of every database holds.
constexpr std::uint64_t kMaxInteger = std::numeric_limits<std::int64_t>::max();
/// The number that decimal digits say, if it is not greater.
std::optional<std::uint64_t> ParseNumber(std::string_view digits, std::uint64_t max);

/// Why a text cannot be in a metamodel in a database, null when it can.
const char* TextFault(std::string_view text);

/// One pass over a table in the order of its lists. Checks what it hands out: the database may have been filled by
/// another program, with tables that enforce nothing. `onFault` hears of what does not belong into the table; if it
/// returns, the value counts as empty or 0. Throws SFailure for rows that do not come in order.
class CRows {
 public:
  CRows(const STable& table, const RowFaultHandler& onFault);

  /// Goes to the next row, whose values stay where they are until the one after it. False when its place in the table
  /// is not known.
  bool Next(const std::vector<SValue>& values);

  std::uint64_t Owner() const { return owner_; }
  std::uint64_t Ordinal() const { return ordinal_; }
  /// How many rows there have been.
  std::uint64_t Count() const { return count_; }
  /// The values of the current row by the column's position in STable::columns; texts are valid until Next().
  std::string_view Text(std::size_t column) const;
  std::uint32_t Number(std::size_t column) const;

  /// Tells what is wrong with a column of the current row.
  void Fail(const char* column, const std::string& problem) const;

 private:
  void FailOrder() const;
  bool HasValue(std::size_t index, const char* column) const;
  // None after a fault.
  std::optional<std::uint64_t> WholeNumber(std::size_t index, const char* column, std::uint64_t max) const;
  std::optional<std::uint64_t> NumberInText(std::size_t index, const char* column, std::uint64_t max) const;

  const STable& table_;
  const RowFaultHandler& onFault_;
  std::size_t keyCount_;
  const SValue* values_ = nullptr;
  std::uint64_t count_ = 0;
  bool hasPlace_ = false;
  std::uint64_t owner_ = 0;
  std::uint64_t ordinal_ = 0;
};

}  // namespace metadb
