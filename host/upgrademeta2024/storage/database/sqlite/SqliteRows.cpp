#include "upgrademeta2024/storage/database/sqlite/SqliteRows.h"

#include <soci/sqlite3/soci-sqlite3.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <utility>

namespace metadb {
namespace {

using sqlite_api::sqlite3_context;
using sqlite_api::sqlite3_value;

std::uint64_t RandomNumber() {
  std::uint64_t number = 0;
  sqlite_api::sqlite3_randomness(sizeof(number), &number);
  return number;
}

/// A function of SQL that hands its arguments to a row handler, as long as this object lives. SQLite has a row's values
/// ready for it at once, where asking a statement for each of them takes half as long as reading them does.
class CRowFunction {
 public:
  CRowFunction(soci::session& session, const STable& table, const RowHandler& row)
      : connection_(static_cast<soci::sqlite3_session_backend*>(session.get_backend())->conn_),
        name_("meta_row_" + std::to_string(RandomNumber())),
        row_(row) {
    // Not of bool: its elements would share bytes.
    isNumber_.assign(KeyColumns(table).size(), 1);
    for (const SColumn& column : table.columns) {
      isNumber_.push_back(column.kind == SColumn::kNumber ? 1 : 0);
    }
    values_.resize(isNumber_.size());
    // Only for the query itself: what the file says is to be called must not reach it.
    const int result = Define(this, [](sqlite3_context* context, int count, sqlite3_value** values) {
      static_cast<CRowFunction*>(sqlite_api::sqlite3_user_data(context))->Call(context, values + count);
    });
    if (result != SQLITE_OK) {
      throw soci::sqlite3_soci_error(sqlite_api::sqlite3_errmsg(connection_), result);
    }
  }

  ~CRowFunction() { Define(nullptr, nullptr); }

  CRowFunction(const CRowFunction&) = delete;
  CRowFunction& operator=(const CRowFunction&) = delete;

  /// Not to be known in advance: an index of the file over a call of the function could stand in for the call.
  const std::string& Name() const { return name_; }
  std::uint64_t Calls() const { return calls_; }
  /// Throws what the row handler has thrown, if it has.
  void Rethrow() const {
    if (failure_ != nullptr) {
      std::rethrow_exception(failure_);
    }
  }

 private:
  using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

  int Define(CRowFunction* self, Function function) const {
    return sqlite_api::sqlite3_create_function_v2(connection_, name_.c_str(), static_cast<int>(isNumber_.size()),
                                                  SQLITE_UTF8 | SQLITE_DIRECTONLY, self, function, nullptr, nullptr,
                                                  nullptr);
  }

  /// Takes where the values end: the last column comes first.
  void Call(sqlite3_context* context, sqlite3_value** end) noexcept {
    ++calls_;
    auto value = values_.begin();
    for (const char isNumber : isNumber_) {
      Take(*--end, isNumber != 0, *value);
      ++value;
    }
    try {
      row_(values_);
    } catch (...) {
      // SQLite is C: nothing may be thrown through it.
      failure_ = std::current_exception();
      sqlite_api::sqlite3_result_error_code(context, SQLITE_ABORT);
    }
  }

  static void Take(sqlite3_value* from, bool isNumber, SValue& value) {
    // A column of texts gives numbers as texts as well, and a column of numbers whatever is no whole number.
    if (isNumber && sqlite_api::sqlite3_value_type(from) == SQLITE_INTEGER) {
      value.kind = SValue::kInteger;
      value.integer = sqlite_api::sqlite3_value_int64(from);
      return;
    }
    const void* const text = sqlite_api::sqlite3_value_text(from);
    if (text == nullptr) {
      // An empty blob has no text either. When memory has run out, the query fails.
      value.kind = sqlite_api::sqlite3_value_type(from) == SQLITE_NULL ? SValue::kNull : SValue::kText;
      value.text = {};
      return;
    }
    value.kind = SValue::kText;
    value.text = {static_cast<const char*>(text), static_cast<std::size_t>(sqlite_api::sqlite3_value_bytes(from))};
  }

  sqlite_api::sqlite3* connection_;
  std::string name_;
  const RowHandler& row_;
  std::vector<char> isNumber_;
  std::vector<SValue> values_;
  std::uint64_t calls_ = 0;
  std::exception_ptr failure_;
};

/// A call with AllColumns, the last one first. To find a column SQLite goes through those before it, and goes on from
/// there for the next: asked for the last one, it finds all at one go.
std::string CallText(const STable& table, const std::string& function) {
  std::vector<std::string> columns = AllColumns(table);
  std::reverse(columns.begin(), columns.end());
  std::string call = function + "(";
  for (const std::string& column : columns) {
    call += (&column == &columns.front() ? "" : ", ") + column;
  }
  return call + ")";
}

struct SQuery {
  SQuery(soci::session& session, std::string query) : text(std::move(query)), plan(SqliteQueryPlan(session, text)) {}

  std::string text;
  std::string plan;
};

/// What calls the function for each row, in order.
SQuery CallInOrder(soci::session& session, const STable& table, bool isStored, const std::string& function) {
  const std::string call = CallText(table, function);
  const std::string from = " FROM " + std::string(table.name);
  // A condition that never holds spares a step for each row. With a view it would be called, too, for rows that a
  // condition of the view then drops.
  const std::string direct = isStored ? "SELECT 1" + from + " WHERE " + call : "SELECT " + call + from;
  SQuery query(session, direct + OrderClause(table));
  if (std::count(query.plan.begin(), query.plan.end(), '\n') == 1) {
    // One pass, without anything between reading a row and the call.
    return query;
  }
  // Rows that have to be sorted or merged are given to a function before they are, unless it stands outside.
  return {session, "SELECT " + call + " FROM (" + SelectStatement(table) + " LIMIT -1 OFFSET 0)"};
}

}  // namespace

SSqliteReading ReadSqliteRows(soci::session& session, const STable& table, const RowHandler& row) {
  const CRowFunction function(session, table, row);
  const bool isStored = IsStoredTable(session, table.name);
  const SQuery call = CallInOrder(session, table, isStored, function.Name());
  soci::statement statement(session);
  statement.alloc();
  statement.prepare(call.text);
  sqlite_api::sqlite3_stmt* const rows = static_cast<soci::sqlite3_statement_backend*>(statement.get_backend())->stmt_;
  int result = SQLITE_ROW;
  while (result == SQLITE_ROW) {
    result = sqlite_api::sqlite3_step(rows);
  }
  function.Rethrow();
  if (result != SQLITE_DONE) {
    throw soci::sqlite3_soci_error(sqlite_api::sqlite3_errmsg(sqlite_api::sqlite3_db_handle(rows)), result);
  }
  return {call.plan, function.Calls(), isStored};
}

bool IsStoredTable(soci::session& session, const std::string& name) {
  int count = 0;
  session << "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND rootpage > 0 AND name = :name COLLATE NOCASE",
      soci::use(name, "name"), soci::into(count);
  return count != 0;
}

std::string SqliteQueryPlan(soci::session& session, const std::string& query) {
  int ignored = 0;
  std::string step;
  soci::statement explain = (session.prepare << "EXPLAIN QUERY PLAN " << query, soci::into(ignored),
                             soci::into(ignored), soci::into(ignored), soci::into(step));
  explain.execute();
  std::string plan;
  while (explain.fetch()) {
    plan += step + "\n";
  }
  return plan;
}

}  // namespace metadb
