// All tables are seen at one moment, and nothing is changed.

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <sqlite3.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>

#include "metareview2024/data/CountFixture.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

using test::AnyRow;
using test::Count;
using test::EStorage;
using test::Longer;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class CountMomentTest : public test::CCountFixture {};

INSTANTIATE_TEST_SUITE_P(Sqlite, CountMomentTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, CountMomentTest, testing::Values(EStorage::kPostgresql));

TEST_P(CountMomentTest, AllTablesAreSeenAtOneMoment) {
  MakeTable("T_A", 1);
  MakeTable("T_B", 1);
  if (IsSqlite()) {
    database_.Query("PRAGMA journal_mode = WAL");
  }
  const auto observer = [this](const metareview::SCountProgress& /*progress*/) {
    database_.Query("INSERT INTO \"T_A\" VALUES ('abcd')");
    database_.Query("INSERT INTO \"T_B\" VALUES ('abcd')");
  };
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_A"), AnyRow(1, "T_B")}, test::kCountLimit, observer),
              ElementsAre("0: 1 of 1 in T_A", "1: 1 of 1 in T_B"));
  EXPECT_NE(database_.Value("SELECT count(*) FROM \"T_B\""), "1");
}

/// The rows of T, or why there are none.
std::string RowsOfT(CDatabaseQueries& queries) {
  const SDatabaseAnswer answer = queries.Query("SELECT count(*) FROM \"T\"");
  return answer.outcome == SDatabaseAnswer::kRows ? answer.rows.at(0).at(0).value_or("NULL") : answer.problem;
}

TEST_P(CountMomentTest, ASecondConnectionSeesTheMomentOfTheFirst) {
  MakeTable("T", 1);
  if (IsSqlite()) {
    // Kept open, so that there is a log.
    database_.Query("PRAGMA journal_mode = WAL");
  }
  const auto storage = OpenMetaStorage(database_.Location());
  const auto first = storage->OpenQueries(test::kCountLimit);
  database_.Query("INSERT INTO \"T\" VALUES ('later')");
  const auto second = first->OpenSecond();
  ASSERT_NE(second, nullptr);
  database_.Query("INSERT INTO \"T\" VALUES ('still later')");
  EXPECT_EQ(RowsOfT(*first), "1");
  EXPECT_EQ(RowsOfT(*second), "1");
  EXPECT_EQ(database_.Value("SELECT count(*) FROM \"T\""), "3");
}

TEST_P(CountMomentTest, ManyTablesAreCountedOnTwoConnections) {
  std::vector<metareview::SLookup> lookups;
  std::vector<std::string> expected;
  for (int i = 0; i < 20; ++i) {
    const std::string table = "T_" + std::to_string(i);
    MakeTable(table, i);
    lookups.push_back(Longer(lookups.size(), table, "V"));
    const std::string rows = std::to_string(i);
    expected.push_back(rows + ": " + rows + " of " + rows + " in " + table);
  }
  EXPECT_EQ(CountHere(lookups), expected);
}

class SqliteCountMomentTest : public test::CCountFixture {
 protected:
  std::string Bytes() const {
    std::ifstream file(database_.Storage().File(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(database_.Storage().Directory().Path())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }
};

INSTANTIATE_TEST_SUITE_P(Sqlite, SqliteCountMomentTest, testing::Values(EStorage::kSqlite));

TEST_P(SqliteCountMomentTest, TheFileIsLeftAsItIs) {
  for (const std::string mode : {"DELETE", "WAL"}) {
    database_.Query("PRAGMA journal_mode = " + mode);
    MakeTable("T_" + mode, 2);
    database_.Disconnect();
    const std::string before = Bytes();
    const auto time = std::filesystem::last_write_time(database_.Storage().File());
    EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_" + mode)}), ElementsAre("0: 2 of 2 in T_" + mode));
    EXPECT_EQ(Bytes(), before) << mode;
    EXPECT_EQ(std::filesystem::last_write_time(database_.Storage().File()), time) << mode;
    EXPECT_THAT(Files(), ElementsAre("metamodel.db")) << mode;
  }
}

TEST_P(SqliteCountMomentTest, ADatabaseThatChangesWithoutALogIsReadAgain) {
  database_.Query("PRAGMA journal_mode = WAL");
  MakeTable("T_A", 1);
  MakeTable("T_B", 1);
  database_.Disconnect();
  bool isChanged = false;
  const auto observer = [&](const metareview::SCountProgress& progress) {
    if (progress.done == 1 && !isChanged) {
      isChanged = true;
      database_.Query("INSERT INTO \"T_A\" VALUES ('abcd')");
      database_.Query("INSERT INTO \"T_B\" VALUES ('abcd')");
      database_.Disconnect();
    }
  };
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_A"), AnyRow(1, "T_B")}, test::kCountLimit, observer),
              ElementsAre("0: 2 of 2 in T_A", "1: 2 of 2 in T_B"));
}

TEST_P(SqliteCountMomentTest, ADatabaseThatKeepsChangingIsAProblem) {
  database_.Query("PRAGMA journal_mode = WAL");
  MakeTable("T_A", 1);
  database_.Disconnect();
  const auto observer = [&](const metareview::SCountProgress& /*progress*/) {
    database_.Query("INSERT INTO \"T_A\" VALUES ('abcd')");
    database_.Disconnect();
  };
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_A")}, test::kCountLimit, observer),
              ElementsAre("0: 0 of 0 in; the database was changed while it was read"));
}

TEST_P(SqliteCountMomentTest, WhoChangesTheDatabaseWaitsForBothConnections) {
  MakeTable("T", 1);
  database_.Disconnect();
  const auto storage = OpenMetaStorage(database_.Location());
  auto first = storage->OpenQueries(test::kCountLimit);
  const auto second = first->OpenSecond();
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(RowsOfT(*second), "1");
  first.reset();
  EXPECT_NONFATAL_FAILURE(database_.Query("INSERT INTO \"T\" VALUES ('later')"), "locked");
  EXPECT_EQ(RowsOfT(*second), "1");
}

/// Adds rows to T as long as it lives. A process of its own: who reads a file as its bytes loses the locks that the
/// same process has on it.
class CWriter {
 public:
  explicit CWriter(const std::string& file) : process_(fork()) {
    if (process_ < 0) {
      throw std::runtime_error("fork failed");
    }
    if (process_ == 0) {
      Write(file);
      _exit(1);
    }
  }
  ~CWriter() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  CWriter(const CWriter&) = delete;
  CWriter& operator=(const CWriter&) = delete;

 private:
  static void Write(const std::string& file) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    sqlite3* connection = nullptr;
    sqlite3_open(file.c_str(), &connection);
    // Whoever opens or leaves the database may lock it for a moment.
    sqlite3_busy_timeout(connection, 60000);
    const char* row = "INSERT INTO \"T\" VALUES ('abcd')";
    while (sqlite3_exec(connection, row, nullptr, nullptr, nullptr) == SQLITE_OK) {
    }
  }

  pid_t process_;
};

TEST_P(SqliteCountMomentTest, BothConnectionsSeeTheSameWhileOthersWrite) {
  MakeTable("T", 1);
  database_.Query("PRAGMA journal_mode = WAL");
  database_.Disconnect();
  const CWriter writer(database_.Location());
  const auto storage = OpenMetaStorage(database_.Location());
  int pairs = 0;
  std::set<std::string> seen;
  // The writer may be slow to begin.
  for (int i = 0; i < 300 || (seen.size() < 2 && i < 30000); ++i) {
    const auto first = storage->OpenQueries(test::kCountLimit);
    if (const auto second = first->OpenSecond(); second != nullptr) {
      ++pairs;
      EXPECT_EQ(RowsOfT(*second), RowsOfT(*first));
    }
    seen.insert(RowsOfT(*first));
  }
  EXPECT_GT(pairs, 0);
  EXPECT_GT(seen.size(), 1U);
}

class PostgresqlCountMomentTest : public test::CRoleFixture {};

INSTANTIATE_TEST_SUITE_P(Postgresql, PostgresqlCountMomentTest, testing::Values(EStorage::kPostgresql));

TEST_P(PostgresqlCountMomentTest, NothingIsWritten) {
  MakeTable("T_A", 2);
  const std::string next = "SELECT pg_snapshot_xmax(pg_current_snapshot())";
  const std::string before = database_.Value(next);
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_A")}), ElementsAre("0: 2 of 2 in T_A"));
  // A transaction that changes anything takes a number.
  EXPECT_EQ(database_.Value(next), before);
}

TEST_P(PostgresqlCountMomentTest, AFunctionOfAViewCannotWrite) {
  MakeTable("T_A", 2);
  database_.Query(
      "CREATE FUNCTION add_row() RETURNS text LANGUAGE sql AS 'INSERT INTO \"T_A\" VALUES (''x'') RETURNING \"V\"'");
  database_.Query("CREATE VIEW \"T_VIEW\" AS SELECT add_row() AS \"V\"");
  EXPECT_THAT(Count(database_.Location(), {Longer(0, "T_VIEW", "V"), AnyRow(1, "T_A")}),
              ElementsAre(HasSubstr("read-only transaction"), "1: 2 of 2 in T_A"));
}

TEST_P(PostgresqlCountMomentTest, ARoleWithOneConnectionCountsOnOne) {
  MakeTable("T_A", 1);
  MakeTable("T_B", 2);
  const std::string location = LocationOfRole();
  database_.Query("GRANT SELECT ON \"T_A\", \"T_B\" TO " + Role());
  database_.Query("ALTER ROLE " + Role() + " CONNECTION LIMIT 1");
  EXPECT_THAT(Count(location, {AnyRow(0, "T_A"), AnyRow(1, "T_B")}),
              ElementsAre("0: 1 of 1 in T_A", "1: 2 of 2 in T_B"));
}

TEST_P(PostgresqlCountMomentTest, AServerThatSharesNoMomentIsAskedOnOneConnection) {
  MakeTable("T_A", 1);
  MakeTable("T_B", 2);
  const std::string location = LocationOfRole();
  database_.Query("GRANT SELECT ON \"T_A\", \"T_B\" TO " + Role());
  database_.Query("REVOKE EXECUTE ON FUNCTION pg_export_snapshot() FROM PUBLIC");
  EXPECT_THAT(Count(location, {AnyRow(0, "T_A"), AnyRow(1, "T_B")}),
              ElementsAre("0: 1 of 1 in T_A", "1: 2 of 2 in T_B"));
  database_.Query("GRANT EXECUTE ON FUNCTION pg_export_snapshot() TO PUBLIC");
}

}  // namespace
