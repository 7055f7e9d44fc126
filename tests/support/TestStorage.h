#pragma once

#include <soci/soci.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "support/TemporaryDirectory.h"

namespace test {

enum class EStorage { kDocument, kSqlite, kPostgresql };

/// A name for the test's name.
void PrintTo(EStorage storage, std::ostream* output);
std::string Name(EStorage storage);

/// A place for metamodels, empty at first and gone at the end of its scope. That of PostgreSQL is a schema of the
/// server that libpq's environment variables name.
class CTestStorage {
 public:
  explicit CTestStorage(EStorage storage);
  ~CTestStorage();
  CTestStorage(const CTestStorage&) = delete;
  CTestStorage& operator=(const CTestStorage&) = delete;

  const std::string& Location() const { return location_; }
  /// What is in the location beside the connection words given here, for example "host=… port=…".
  std::string LocationWith(const std::string& words) const;
  /// The database's file; none has PostgreSQL.
  std::string File() const { return directory_.File("metamodel.db"); }
  const CTemporaryDirectory& Directory() const { return directory_; }

  /// A session of the database, past all that the program under test enforces.
  std::unique_ptr<soci::session> OpenSession() const;
  /// Executes statements in a session of their own.
  void Execute(const std::vector<std::string>& statements) const;
  /// The one value that a query gives.
  std::string Query(const std::string& query) const;

 private:
  EStorage storage_;
  CTemporaryDirectory directory_;
  std::string location_;
  std::string schema_;
};

}  // namespace test
