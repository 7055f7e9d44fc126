#include "upgrademeta2024/storage/database/postgresql/PostgresqlRows.h"

#include <libpq-fe.h>
#include <soci/postgresql/soci-postgresql.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "upgrademeta2024/storage/database/Statements.h"

namespace metadb {
namespace {

// A query's rows all come at once unless a cursor fetches them part by part. 2,000 properties are a few hundred
// kilobytes; larger parts are not faster.
constexpr const char* kFetchPart = "FETCH 2000 FROM meta_rows";
constexpr const char* kDeclareCursor = "DECLARE meta_rows NO SCROLL CURSOR FOR ";
constexpr const char* kCloseCursor = "CLOSE meta_rows";

/// What a column of the rows holds where it is not NULL: whole numbers, or whatever else.
SValue::EKind KindOf(soci::statement& rows, std::size_t column) {
  // The numbers of the types bigint, smallint and integer, which never change.
  constexpr std::array<Oid, 3> kIntegers = {20, 21, 23};
  const PGresult* result = static_cast<soci::postgresql_statement_backend*>(rows.get_backend())->result_;
  const Oid type = PQftype(result, static_cast<int>(column));
  return std::find(kIntegers.begin(), kIntegers.end(), type) != kIntegers.end() ? SValue::kInteger : SValue::kText;
}

}  // namespace

void ReadPostgresqlRows(soci::session& session, const STable& table, const std::string& select, const RowHandler& row) {
  Execute(session, kDeclareCursor + select);
  // Everything is fetched as text: a column of another type would otherwise turn what is no number into one.
  std::vector<SValue> values(AllColumns(table).size());
  std::vector<std::string> texts(values.size());
  std::vector<soci::indicator> indicators(values.size(), soci::i_ok);
  soci::statement part(session);
  part.alloc();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    part.exchange(soci::into(texts[i], indicators[i]));
  }
  part.prepare(kFetchPart);
  part.define_and_bind();
  std::vector<SValue::EKind> kinds(values.size());
  bool partHasRows = true;
  while (partHasRows) {
    partHasRows = false;
    part.execute();
    for (std::size_t i = 0; i < kinds.size(); ++i) {
      kinds[i] = KindOf(part, i);
    }
    while (part.fetch()) {
      partHasRows = true;
      for (std::size_t i = 0; i < texts.size(); ++i) {
        values[i].kind = indicators[i] == soci::i_null ? SValue::kNull : kinds[i];
        values[i].text = texts[i];
        if (values[i].kind == SValue::kInteger) {
          values[i].integer = std::stoll(texts[i]);
        }
      }
      row(values);
    }
  }
  Execute(session, kCloseCursor);
}

}  // namespace metadb
