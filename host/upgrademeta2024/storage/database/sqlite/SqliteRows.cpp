#include "upgrademeta2024/storage/database/sqlite/SqliteRows.h"

#include <soci/sqlite3/soci-sqlite3.h>

#include <cstddef>
#include <vector>

namespace metadb {
namespace {

using sqlite_api::sqlite3_stmt;

[[noreturn]] void FailStatement(sqlite3_stmt* statement, int result) {
  throw soci::sqlite3_soci_error(sqlite_api::sqlite3_errmsg(sqlite_api::sqlite3_db_handle(statement)), result);
}

/// A column of texts gives numbers as texts as well, and a column of numbers whatever is no whole number.
void Take(sqlite3_stmt* statement, int column, bool isNumber, SValue& value) {
  const int type = sqlite_api::sqlite3_column_type(statement, column);
  if (type == SQLITE_NULL) {
    value.kind = SValue::kNull;
    return;
  }
  if (type == SQLITE_INTEGER && isNumber) {
    value.kind = SValue::kInteger;
    value.integer = sqlite_api::sqlite3_column_int64(statement, column);
    return;
  }
  const auto* text = reinterpret_cast<const char*>(sqlite_api::sqlite3_column_text(statement, column));
  const auto size = static_cast<std::size_t>(sqlite_api::sqlite3_column_bytes(statement, column));
  // An empty blob has no text either.
  if (text == nullptr && sqlite_api::sqlite3_errcode(sqlite_api::sqlite3_db_handle(statement)) == SQLITE_NOMEM) {
    FailStatement(statement, SQLITE_NOMEM);
  }
  value.kind = SValue::kText;
  value.text = text == nullptr ? std::string_view() : std::string_view(text, size);
}

}  // namespace

void ReadSqliteRows(soci::session& session, const STable& table, const RowHandler& row) {
  soci::statement statement(session);
  statement.alloc();
  statement.prepare(SelectStatement(table));
  sqlite3_stmt* const rows = static_cast<soci::sqlite3_statement_backend*>(statement.get_backend())->stmt_;
  const std::size_t keyCount = KeyColumns(table).size();
  std::vector<SValue> values(keyCount + table.columns.size());
  int result = sqlite_api::sqlite3_step(rows);
  for (; result == SQLITE_ROW; result = sqlite_api::sqlite3_step(rows)) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      const bool isNumber = i < keyCount || table.columns[i - keyCount].kind == SColumn::kNumber;
      Take(rows, static_cast<int>(i), isNumber, values[i]);
    }
    row(values);
  }
  if (result != SQLITE_DONE) {
    FailStatement(rows, result);
  }
}

}  // namespace metadb
