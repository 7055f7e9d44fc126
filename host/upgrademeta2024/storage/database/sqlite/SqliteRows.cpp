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

SValue::EKind KindOf(int type) {
  switch (type) {
    case SQLITE_NULL:
      return SValue::kNull;
    case SQLITE_INTEGER:
      return SValue::kInteger;
    case SQLITE_FLOAT:
      return SValue::kReal;
    case SQLITE_BLOB:
      return SValue::kBlob;
    default:
      return SValue::kText;
  }
}

/// A column of texts gives whole numbers as texts as well. The value is asked for once: each call for a column looks
/// for it again, which takes longer than the answer. Only one thread uses the connection.
void Take(sqlite3_stmt* statement, int column, bool isNumber, SValue& value) {
  sqlite_api::sqlite3_value* const found = sqlite_api::sqlite3_column_value(statement, column);
  value.kind = KindOf(sqlite_api::sqlite3_value_type(found));
  if (value.kind == SValue::kInteger && isNumber) {
    value.integer = sqlite_api::sqlite3_value_int64(found);
    return;
  }
  if (value.kind == SValue::kNull || value.kind == SValue::kBlob) {
    return;
  }
  if (value.kind == SValue::kInteger) {
    value.kind = SValue::kText;
  }
  const auto* text = reinterpret_cast<const char*>(sqlite_api::sqlite3_value_text(found));
  if (text == nullptr) {
    FailStatement(statement, SQLITE_NOMEM);
  }
  value.text = {text, static_cast<std::size_t>(sqlite_api::sqlite3_value_bytes(found))};
}

}  // namespace

void ReadSqliteRows(soci::session& session, const STable& table, const std::string& select, const RowHandler& row) {
  soci::statement statement(session);
  statement.alloc();
  statement.prepare(select);
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
