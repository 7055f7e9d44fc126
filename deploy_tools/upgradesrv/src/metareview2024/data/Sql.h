#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "metareview2024/data/Lookups.h"
#include "metareview2024/metareview2024_export.h"

/// Lookups as SQL. Names are always quoted, and columns named with their table, so that none is taken for a text. What
/// is in quotes cannot end them; everything else is made here or a number.
namespace metareview {

enum class EDialect { kSqlite, kPostgresql };

/// What a column is known to hold.
enum class EColumnKind {
  /// Whatever can be shown as text. Numbers are read from it where it holds some.
  kAny,
  kInteger,
  /// Exact decimal numbers.
  kDecimal,
  /// float64 and float32.
  kFloat,
  kSingle
};

/// A column as the database spells it.
struct SSqlColumn {
  std::string name;
  EColumnKind kind = EColumnKind::kAny;
};

/// What is counted in one pass over a table.
struct SSqlCount {
  EMeasure measure = EMeasure::kAnyRow;
  std::vector<SSqlColumn> columns;
  std::string limit;
};

METAREVIEW2024_EXPORT std::string QuoteIdentifier(const std::string& name);
METAREVIEW2024_EXPORT std::string QuoteLiteral(EDialect dialect, const std::string& text);

/// A query of one row: how many rows the table has, then each count, NULL where the column holds values that are no
/// numbers but should be. `table` is quoted, with its schema if need be. Databases take no more than kMostCounts.
METAREVIEW2024_EXPORT std::string CountQuery(EDialect dialect, const std::string& table,
                                             const std::vector<SSqlCount>& counts);
constexpr std::size_t kMostCounts = 1000;

/// A query that gives a row for each of its lookups: path, rule, rows, of. It reads the table once.
struct STableQuery {
  std::string table;
  /// Places in the list of lookups.
  std::vector<std::size_t> lookups;
  /// Neither ended nor commented.
  std::string query;
};

/// Tables in the order in which lookups name them; one with more than kMostCounts lookups has several queries.
METAREVIEW2024_EXPORT std::vector<STableQuery> TableQueries(EDialect dialect, const std::vector<SLookup>& lookups);

/// Several such queries, each with comments before it if need be, as one that gives all their rows; empty for none. It
/// is not ended.
METAREVIEW2024_EXPORT std::string UnionAll(const std::vector<std::string>& queries);

/// What else a session is told so that counts are right.
METAREVIEW2024_EXPORT const std::vector<std::string>& ReadingSettings(EDialect dialect);

/// Statements without results that make a session unable to change anything, let it see one moment, and end what takes
/// longer than `limit`, for which SQLite has no statement. Then those that leave that again. A line each.
METAREVIEW2024_EXPORT std::vector<std::string> BeginReading(EDialect dialect, std::chrono::seconds limit);
METAREVIEW2024_EXPORT std::vector<std::string> EndReading(EDialect dialect);

}  // namespace metareview
