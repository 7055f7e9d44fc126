#include "upgrademeta2024/storage/SqliteCursor2024.h"

#include <soci/sqlite3/soci-sqlite3.h>

#include <cstddef>

namespace metadb {
namespace {

class CSqliteCursor : public CCursor {
 public:
  CSqliteCursor(soci::session& session, const STable& table) : statement_(session) {
    isNumber_.assign(KeyColumns(table).size(), true);
    for (const SColumn& column : table.columns) {
      isNumber_.push_back(column.kind == SColumn::kNumber);
    }
    statement_.alloc();
    statement_.prepare(SelectStatement(table));
    sqlite_ = static_cast<soci::sqlite3_statement_backend*>(statement_.get_backend())->stmt_;
  }

  bool Fetch(std::vector<SValue>& values) override {
    const int result = sqlite_api::sqlite3_step(sqlite_);
    if (result != SQLITE_ROW) {
      if (result != SQLITE_DONE) {
        throw soci::sqlite3_soci_error(sqlite_api::sqlite3_errmsg(sqlite_api::sqlite3_db_handle(sqlite_)), result);
      }
      return false;
    }
    for (std::size_t i = 0; i < isNumber_.size(); ++i) {
      // What SQLite calls unprotected may be looked at as long as the connection stays on one thread.
      FetchValue(sqlite_api::sqlite3_column_value(sqlite_, static_cast<int>(i)), isNumber_[i], values[i]);
    }
    return true;
  }

 private:
  static void FetchValue(sqlite_api::sqlite3_value* from, bool isNumber, SValue& value) {
    // A column of texts gives numbers as texts as well, and a column of numbers whatever is no whole number.
    if (isNumber && sqlite_api::sqlite3_value_type(from) == SQLITE_INTEGER) {
      value.kind = SValue::kInteger;
      value.integer = sqlite_api::sqlite3_value_int64(from);
      return;
    }
    const void* const text = sqlite_api::sqlite3_value_text(from);
    if (text == nullptr) {
      // An empty blob has no text either. Without memory the next step fails.
      value.kind = sqlite_api::sqlite3_value_type(from) == SQLITE_NULL ? SValue::kNull : SValue::kText;
      value.text = {};
      return;
    }
    value.kind = SValue::kText;
    value.text = {static_cast<const char*>(text), static_cast<std::size_t>(sqlite_api::sqlite3_value_bytes(from))};
  }

  std::vector<bool> isNumber_;
  soci::statement statement_;
  sqlite_api::sqlite3_stmt* sqlite_ = nullptr;
};

}  // namespace

std::unique_ptr<CCursor> OpenSqliteCursor(soci::session& session, const STable& table) {
  return std::make_unique<CSqliteCursor>(session, table);
}

}  // namespace metadb
