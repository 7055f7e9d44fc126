#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "metareview2024/data/CountStored.h"
#include "metareview2024/data/StoredDatabase.h"

namespace test {

constexpr std::chrono::seconds kCountLimit(30);

metareview::SLookup AnyRow(std::size_t finding, const std::string& table);
/// Texts of more than three characters.
metareview::SLookup Longer(std::size_t finding, const std::string& table, const std::string& column);

/// "FINDING: ROWS of OF in TABLES; PROBLEM".
std::vector<std::string> Texts(const std::vector<metareview::SCount>& counts);
std::vector<std::string> Count(const std::string& location, const std::vector<metareview::SLookup>& lookups,
                               std::chrono::milliseconds limit = kCountLimit,
                               const metareview::CountObserver& observer = {});

/// A database of an installation that is counted in.
class CCountFixture : public testing::TestWithParam<EStorage> {
 protected:
  CCountFixture() : database_(GetParam()) {}

  bool IsSqlite() const { return GetParam() == EStorage::kSqlite; }
  /// A table with that many texts of four letters in V.
  void MakeTable(const std::string& name, int rows);
  std::vector<std::string> CountHere(const std::vector<metareview::SLookup>& lookups);

  CStoredDatabase database_;
};

/// A server with a role that has no right but those granted to it, and is gone with the test.
class CRoleFixture : public CCountFixture {
 protected:
  void TearDown() override;

  std::string Schema() { return database_.Value("SELECT current_schema()"); }
  std::string Role();
  /// The location for that role, which it makes.
  std::string LocationOfRole();

 private:
  bool isRoleMade_ = false;
};

}  // namespace test
