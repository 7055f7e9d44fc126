#include "support/TestStorage.h"

#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>
#include <unistd.h>

namespace test {
namespace {

std::unique_ptr<soci::session> OpenServer() {
  auto session = std::make_unique<soci::session>(soci::postgresql, "");
  *session << "SET client_min_messages TO error";
  return session;
}

std::string NewSchema() {
  static int count = 0;
  return "test_" + std::to_string(getpid()) + "_" + std::to_string(++count);
}

}  // namespace

std::string Name(EStorage storage) {
  switch (storage) {
    case EStorage::kDocument:
      return "Document";
    case EStorage::kSqlite:
      return "Sqlite";
    default:
      return "Postgresql";
  }
}

void PrintTo(EStorage storage, std::ostream* output) {
  *output << Name(storage);
}

CTestStorage::CTestStorage(EStorage storage) : storage_(storage) {
  switch (storage) {
    case EStorage::kDocument:
      location_ = directory_.File("metamodel.json");
      break;
    case EStorage::kSqlite:
      location_ = File();
      break;
    case EStorage::kPostgresql:
      schema_ = NewSchema();
      *OpenServer() << "CREATE SCHEMA " << schema_;
      location_ = "postgresql://options=-csearch_path=" + schema_;
  }
}

CTestStorage::~CTestStorage() {
  if (schema_.empty()) {
    return;
  }
  try {
    *OpenServer() << "DROP SCHEMA " << schema_ << " CASCADE";
  } catch (const soci::soci_error&) {
    // The test has stopped the server.
  }
}

std::string CTestStorage::LocationWith(const std::string& words) const {
  return location_ + " " + words;
}

std::unique_ptr<soci::session> CTestStorage::OpenSession() const {
  if (storage_ == EStorage::kSqlite) {
    auto session = std::make_unique<soci::session>(soci::sqlite3, File());
    *session << "PRAGMA synchronous = OFF";
    return session;
  }
  std::unique_ptr<soci::session> session = OpenServer();
  *session << "SET search_path TO " << schema_;
  return session;
}

void CTestStorage::Execute(const std::vector<std::string>& statements) const {
  const std::unique_ptr<soci::session> session = OpenSession();
  for (const std::string& statement : statements) {
    *session << statement;
  }
}

std::string CTestStorage::Query(const std::string& query) const {
  std::string value;
  *OpenSession() << query, soci::into(value);
  return value;
}

}  // namespace test
