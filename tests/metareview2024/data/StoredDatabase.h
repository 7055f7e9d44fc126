#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "metareview2024/data/Sql.h"
#include "support/TestStorage.h"

namespace test {

/// A database of an installation, past all that the program under test enforces; gone at the end of its scope.
class CStoredDatabase {
 public:
  using Row = std::vector<std::optional<std::string>>;

  /// EStorage::kSqlite or kPostgresql.
  explicit CStoredDatabase(EStorage storage);
  ~CStoredDatabase();
  CStoredDatabase(const CStoredDatabase&) = delete;
  CStoredDatabase& operator=(const CStoredDatabase&) = delete;

  metareview::EDialect Dialect() const;
  const std::string& Location() const { return storage_.Location(); }
  const CTestStorage& Storage() const { return storage_; }

  /// One statement. Fails the test when the database refuses it.
  std::vector<Row> Query(const std::string& statement);
  /// The only value of the only row.
  std::string Value(const std::string& query);
  /// A table T of a key and a column V of that type, with these values, as SQL writes them.
  void MakeTable(const std::string& type, const std::vector<std::string>& values);
  /// Closes the connection until the next statement.
  void Disconnect();

 private:
  struct SConnection;

  EStorage kind_;
  CTestStorage storage_;
  std::unique_ptr<SConnection> connection_;
};

}  // namespace test
