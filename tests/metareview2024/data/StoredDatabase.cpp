#include "metareview2024/data/StoredDatabase.h"

#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <sqlite3.h>

namespace test {

struct CStoredDatabase::SConnection {
  std::unique_ptr<sqlite3, int (*)(sqlite3*)> file{nullptr, &sqlite3_close};
  std::unique_ptr<PGconn, void (*)(PGconn*)> server{nullptr, &PQfinish};
};

namespace {

using Row = CStoredDatabase::Row;

std::vector<Row> QueryFile(sqlite3* file, const std::string& statement) {
  sqlite3_stmt* prepared = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(file, statement.c_str(), -1, &prepared, nullptr), SQLITE_OK)
      << sqlite3_errmsg(file) << "\n"
      << statement;
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(prepared, &sqlite3_finalize);
  std::vector<Row> rows;
  int result = SQLITE_DONE;
  while (prepared != nullptr && (result = sqlite3_step(prepared)) == SQLITE_ROW) {
    Row row;
    for (int i = 0; i < sqlite3_column_count(prepared); ++i) {
      const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, i));
      row.push_back(text != nullptr ? std::optional<std::string>(text) : std::nullopt);
    }
    rows.push_back(row);
  }
  EXPECT_EQ(result, SQLITE_DONE) << sqlite3_errmsg(file) << "\n" << statement;
  return rows;
}

std::vector<Row> QueryServer(PGconn* server, const std::string& statement) {
  const std::unique_ptr<PGresult, void (*)(PGresult*)> result(PQexec(server, statement.c_str()), &PQclear);
  const ExecStatusType status = PQresultStatus(result.get());
  EXPECT_TRUE(status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK) << PQerrorMessage(server) << "\n" << statement;
  std::vector<Row> rows;
  for (int i = 0; i < PQntuples(result.get()); ++i) {
    Row row;
    for (int j = 0; j < PQnfields(result.get()); ++j) {
      const bool isNull = PQgetisnull(result.get(), i, j) != 0;
      row.push_back(isNull ? std::nullopt : std::optional<std::string>(PQgetvalue(result.get(), i, j)));
    }
    rows.push_back(row);
  }
  return rows;
}

}  // namespace

CStoredDatabase::CStoredDatabase(EStorage storage) : kind_(storage), storage_(storage) {}

CStoredDatabase::~CStoredDatabase() = default;

metareview::EDialect CStoredDatabase::Dialect() const {
  return kind_ == EStorage::kSqlite ? metareview::EDialect::kSqlite : metareview::EDialect::kPostgresql;
}

std::vector<Row> CStoredDatabase::Query(const std::string& statement) {
  const bool isNew = connection_ == nullptr;
  if (isNew) {
    connection_ = std::make_unique<SConnection>();
  }
  if (kind_ == EStorage::kSqlite) {
    if (isNew) {
      sqlite3* file = nullptr;
      EXPECT_EQ(sqlite3_open(storage_.File().c_str(), &file), SQLITE_OK);
      connection_->file.reset(file);
      QueryFile(file, "PRAGMA synchronous = OFF");
    }
    return QueryFile(connection_->file.get(), statement);
  }
  if (isNew) {
    // Behind the scheme the location has connection words.
    connection_->server.reset(PQconnectdb(Location().substr(Location().find("://") + 3).c_str()));
    EXPECT_EQ(PQstatus(connection_->server.get()), CONNECTION_OK) << PQerrorMessage(connection_->server.get());
    QueryServer(connection_->server.get(), "SET client_min_messages TO error");
  }
  return QueryServer(connection_->server.get(), statement);
}

std::string CStoredDatabase::Value(const std::string& query) {
  const std::vector<Row> rows = Query(query);
  return rows.size() == 1 && rows.front().size() == 1 ? rows.front().front().value_or("NULL") : "not one value";
}

void CStoredDatabase::MakeTable(const std::string& type, const std::vector<std::string>& values) {
  Query("CREATE TABLE \"T\" (k integer PRIMARY KEY, \"V\" " + type + ")");
  for (std::size_t i = 0; i < values.size(); ++i) {
    Query("INSERT INTO \"T\" VALUES (" + std::to_string(i) + ", " + values[i] + ")");
  }
}

void CStoredDatabase::Disconnect() {
  connection_.reset();
}

}  // namespace test
