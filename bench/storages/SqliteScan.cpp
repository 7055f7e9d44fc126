#include "storages/SqliteScan.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string_view>

namespace bench {
namespace {

struct STable {
  const char* name;
  const char* key;
  /// One letter per column: "n" for a number, "t" for a text.
  std::string_view columns;
};

constexpr STable kTables[] = {
    {"metamodel", "generation", "nnnnnnnnnnn"},
    {"meta_classes", "ordinal", "nttnt"},
    {"meta_class_behaviors", "class_ordinal, ordinal", "nnt"},
    {"meta_class_properties", "class_ordinal, ordinal", "nnttttntnttt"},
    {"meta_links", "ordinal", "nttnt"},
    {"meta_link_behaviors", "link_ordinal, ordinal", "nnt"},
    {"meta_link_properties", "link_ordinal, ordinal", "nnttttntnttt"},
    {"meta_behaviors", "ordinal", "ntt"},
    {"meta_methods", "behavior_ordinal, ordinal", "nntt"},
    {"meta_behavior_properties", "behavior_ordinal, ordinal", "nnttttntnttt"},
};

using Database = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;
using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

[[noreturn]] void Fail(const Database& database) {
  throw std::runtime_error(sqlite3_errmsg(database.get()));
}

void ScanTable(const Database& database, const STable& table, SScanned& scanned) {
  const std::string query = std::string("SELECT * FROM ") + table.name + " ORDER BY " + table.key;
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v2(database.get(), query.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
    Fail(database);
  }
  const Statement statement(prepared, &sqlite3_finalize);
  const int columns = sqlite3_column_count(prepared);
  if (columns != static_cast<int>(table.columns.size())) {
    throw std::runtime_error(std::string(table.name) + " has other columns");
  }
  int result = sqlite3_step(prepared);
  for (; result == SQLITE_ROW; result = sqlite3_step(prepared)) {
    ++scanned.rows;
    for (int i = 0; i < columns; ++i) {
      if (table.columns[static_cast<std::size_t>(i)] == 'n') {
        scanned.sum += static_cast<std::uint64_t>(sqlite3_column_int64(prepared, i));
      } else {
        const unsigned char* const text = sqlite3_column_text(prepared, i);
        scanned.bytes += static_cast<std::uint64_t>(sqlite3_column_bytes(prepared, i));
        scanned.sum += text == nullptr ? 0U : *text;
      }
    }
  }
  if (result != SQLITE_DONE) {
    Fail(database);
  }
}

}  // namespace

SScanned ScanSqlite(const std::string& path) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  const Database database(opened, &sqlite3_close);
  if (result != SQLITE_OK) {
    Fail(database);
  }
  SScanned scanned;
  for (const STable& table : kTables) {
    ScanTable(database, table, scanned);
  }
  return scanned;
}

}  // namespace bench
