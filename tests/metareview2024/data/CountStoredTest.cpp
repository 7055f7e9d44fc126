#include "metareview2024/data/CountStored.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "kvxsptexception/KVXException.h"
#include "metareview2024/data/StoredDatabase.h"
#include "support/Error.h"

using metareview::EMeasure;
using metareview::SCount;
using metareview::SLookup;
using metareview::SLookups;
using test::EStorage;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr std::chrono::seconds kLimit(30);

SLookup AnyRow(std::size_t finding, const std::string& table) {
  return {finding, "class/P" + std::to_string(finding), "class-withdrawn", table, {}, EMeasure::kAnyRow, ""};
}

SLookup Longer(std::size_t finding, const std::string& table, const std::string& column) {
  return {finding, "class/P" + std::to_string(finding), "length-shrinks", table, {column}, EMeasure::kLongerThan, "3"};
}

/// "FINDING: ROWS of OF in TABLES; PROBLEM".
std::vector<std::string> Texts(const std::vector<SCount>& counts) {
  std::vector<std::string> texts;
  for (const SCount& count : counts) {
    std::string text = std::to_string(count.finding) + ": " + std::to_string(count.data.rows) + " of " +
                       std::to_string(count.data.of) + " in";
    for (const std::string& table : count.data.tables) {
      text += " " + table;
    }
    texts.push_back(text + (count.data.problem.empty() ? "" : "; " + count.data.problem));
  }
  return texts;
}

std::vector<std::string> Count(const std::string& location, const std::vector<SLookup>& lookups,
                               std::chrono::milliseconds limit = kLimit,
                               const metareview::CountObserver& observer = {}) {
  return Texts(CountStored(location, {lookups, {}, {}}, limit, observer));
}

class CountStoredTest : public testing::TestWithParam<EStorage> {
 protected:
  CountStoredTest() : database_(GetParam()) {}

  bool IsSqlite() const { return GetParam() == EStorage::kSqlite; }
  /// A table with that many texts of four letters in V.
  void MakeTable(const std::string& name, int rows) {
    const std::string quoted = metareview::QuoteIdentifier(name);
    database_.Query("CREATE TABLE " + quoted + " (\"V\" text)");
    for (int i = 0; i < rows; ++i) {
      database_.Query("INSERT INTO " + quoted + " VALUES ('abcd')");
    }
  }
  std::vector<std::string> CountHere(const std::vector<SLookup>& lookups) {
    database_.Disconnect();
    return Count(database_.Location(), lookups);
  }

  test::CStoredDatabase database_;
};

INSTANTIATE_TEST_SUITE_P(Sqlite, CountStoredTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, CountStoredTest, testing::Values(EStorage::kPostgresql));

TEST_P(CountStoredTest, CountsOfSeveralTablesAreAdded) {
  MakeTable("T_A", 2);
  MakeTable("T_B", 3);
  EXPECT_THAT(CountHere({AnyRow(4, "T_A"), AnyRow(4, "T_B"), Longer(7, "T_B", "V")}),
              ElementsAre("4: 5 of 5 in T_A T_B", "7: 3 of 3 in T_B"));
}

TEST_P(CountStoredTest, NothingIsStoredForWhatNoTableHolds) {
  MakeTable("T_A", 1);
  const std::vector<SCount> counts =
      metareview::CountStored(database_.Location(), {{}, {3}, {{5, "no column"}}}, kLimit);
  EXPECT_THAT(Texts(counts), ElementsAre("3: 0 of 0 in", "5: 0 of 0 in; no column"));
}

TEST_P(CountStoredTest, AMissingTableIsAProblemOfItsFinding) {
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, "T_A"), AnyRow(1, "T_MISSING"), AnyRow(2, "T_A")}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in; there is no table T_MISSING", "2: 2 of 2 in T_A"));
}

TEST_P(CountStoredTest, AMissingColumnIsAProblemOfItsFinding) {
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({Longer(0, "T_A", "V"), Longer(1, "T_A", "missing")}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in; table T_A has no column missing"));
}

TEST_P(CountStoredTest, OneOfSeveralTablesThatIsMissingMakesTheCountALowerBound) {
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, "T_A"), AnyRow(0, "T_MISSING")}),
              ElementsAre("0: 2 of 2 in T_A; there is no table T_MISSING"));
}

TEST_P(CountStoredTest, NamesAreFoundWithoutRegardToCase) {
  MakeTable("t_part", 2);
  EXPECT_THAT(CountHere({Longer(0, "T_PART", "v")}), ElementsAre("0: 2 of 2 in T_PART"));
}

TEST_P(CountStoredTest, AViewServesLikeATable) {
  MakeTable("T_A", 2);
  database_.Query("CREATE VIEW \"T_VIEW\" AS SELECT \"V\" FROM \"T_A\" UNION ALL SELECT 'x'");
  EXPECT_THAT(CountHere({Longer(0, "T_VIEW", "V")}), ElementsAre("0: 2 of 3 in T_VIEW"));
}

TEST_P(CountStoredTest, ValuesThatAreNoNumbersAreAProblemOfTheirFinding) {
  MakeTable("T_A", 2);
  SLookup above = Longer(1, "T_A", "V");
  above.measure = EMeasure::kAbove;
  EXPECT_THAT(CountHere({Longer(0, "T_A", "V"), above}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in; the column holds values that are not numbers"));
}

TEST_P(CountStoredTest, AFailingViewIsAProblemOfItsFindings) {
  MakeTable("T_A", 2);
  // Both databases come upon it in a row only.
  const std::string failing =
      IsSqlite() ? "CASE \"V\" WHEN 'abcd' THEN abs(-9223372036854775808) END" : "\"V\"::integer";
  database_.Query("CREATE VIEW \"T_VIEW\" AS SELECT \"V\", " + failing + " AS \"W\" FROM \"T_A\"");
  SLookup above = Longer(1, "T_VIEW", "W");
  above.measure = EMeasure::kAbove;
  EXPECT_THAT(
      CountHere({Longer(0, "T_VIEW", "V"), above, AnyRow(2, "T_A")}),
      ElementsAre("0: 2 of 2 in T_VIEW",
                  AllOf(HasSubstr("1: 0 of 0 in; "), HasSubstr(IsSqlite() ? "integer overflow" : "invalid input")),
                  "2: 2 of 2 in T_A"));
}

TEST_P(CountStoredTest, WhatTakesTooLongIsAProblemOfItsFindings) {
  MakeTable("T_A", 2);
  database_.Query(
      "CREATE VIEW \"T_ENDLESS\" AS WITH RECURSIVE endless(\"V\") AS (SELECT 1 UNION ALL SELECT 1 FROM endless) SELECT "
      "\"V\" FROM endless");
  database_.Disconnect();
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_ENDLESS"), Longer(1, "T_ENDLESS", "V"), AnyRow(2, "T_A")},
                    std::chrono::milliseconds(1500)),
              ElementsAre("0: 0 of 0 in; there was not enough time to count in table T_ENDLESS",
                          "1: 0 of 0 in; there was not enough time to count in table T_ENDLESS", "2: 2 of 2 in T_A"));
}

TEST_P(CountStoredTest, NamesAreTakenAsTheyAre) {
  const std::vector<std::string> names = {"a\"b", "it's", "100%",   "a;b", "a\nb", "Größe",
                                          "a:b",  "a\\b", "select", "表",  "$1",   std::string(63, 'x')};
  std::vector<SLookup> lookups;
  std::vector<std::string> expected;
  for (const std::string& name : names) {
    const std::string quoted = metareview::QuoteIdentifier(name);
    database_.Query("CREATE TABLE " + quoted + " (" + quoted + " text)");
    database_.Query("INSERT INTO " + quoted + " VALUES ('abcd'), ('abc')");
    expected.push_back(std::to_string(lookups.size()) + ": 1 of 2 in " + name);
    lookups.push_back(Longer(lookups.size(), name, name));
  }
  EXPECT_EQ(CountHere(lookups), expected);
}

TEST_P(CountStoredTest, ANameWithANulCharacterIsNotCutOff) {
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, std::string("T_A\0x", 5)), Longer(1, "T_A", std::string("V\0x", 3))}),
              ElementsAre(HasSubstr("there is no table T_A\\x00x"), HasSubstr("has no column V\\x00x")));
}

TEST_P(CountStoredTest, TheObserverIsToldOfEachTable) {
  MakeTable("T_A", 1);
  MakeTable("T_B", 1);
  database_.Disconnect();
  std::vector<std::string> told;
  const auto observer = [&told](const metareview::SCountProgress& progress) {
    told.push_back(progress.table + " " + std::to_string(progress.done) + "/" + std::to_string(progress.total));
  };
  Count(database_.Location(), {AnyRow(0, "T_A"), AnyRow(1, "T_B"), Longer(2, "T_A", "V")}, kLimit, observer);
  EXPECT_THAT(told, ElementsAre("T_A 0/2", "T_B 1/2"));
}

TEST_P(CountStoredTest, AllTablesAreSeenAtOneMoment) {
  MakeTable("T_A", 1);
  MakeTable("T_B", 1);
  if (IsSqlite()) {
    database_.Query("PRAGMA journal_mode = WAL");
  }
  const auto observer = [this](const metareview::SCountProgress& /*progress*/) {
    database_.Query("INSERT INTO \"T_A\" VALUES ('abcd')");
    database_.Query("INSERT INTO \"T_B\" VALUES ('abcd')");
  };
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_A"), AnyRow(1, "T_B")}, kLimit, observer),
              ElementsAre("0: 1 of 1 in T_A", "1: 1 of 1 in T_B"));
  EXPECT_EQ(database_.Value("SELECT count(*) FROM \"T_B\""), "3");
}

TEST(CountStoredLocationTest, ADocumentIsNoDatabase) {
  EXPECT_THAT(test::ErrorOf([] { metareview::CountStored("installation.json", {}, kLimit); }).message,
              HasSubstr("not a database"));
}

class SqliteCountStoredTest : public CountStoredTest {
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

INSTANTIATE_TEST_SUITE_P(Sqlite, SqliteCountStoredTest, testing::Values(EStorage::kSqlite));

TEST_P(SqliteCountStoredTest, TheFileIsLeftAsItIs) {
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

TEST_P(SqliteCountStoredTest, ADatabaseThatChangesWithoutALogIsReadAgain) {
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
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_A"), AnyRow(1, "T_B")}, kLimit, observer),
              ElementsAre("0: 2 of 2 in T_A", "1: 2 of 2 in T_B"));
}

TEST_P(SqliteCountStoredTest, ADatabaseThatKeepsChangingIsAProblem) {
  database_.Query("PRAGMA journal_mode = WAL");
  MakeTable("T_A", 1);
  database_.Disconnect();
  const auto observer = [&](const metareview::SCountProgress& /*progress*/) {
    database_.Query("INSERT INTO \"T_A\" VALUES ('abcd')");
    database_.Disconnect();
  };
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_A")}, kLimit, observer),
              ElementsAre("0: 0 of 0 in; the database was changed while it was read"));
}

TEST_P(SqliteCountStoredTest, AFileThatIsMissingOrNoDatabaseIsAnError) {
  const std::string missing = database_.Storage().Directory().File("missing.db");
  EXPECT_THAT(test::ErrorOf([&] { Count(missing, {}); }).message,
              AllOf(HasSubstr("missing.db: cannot be opened"), HasSubstr("No such file")));
  EXPECT_FALSE(std::filesystem::exists(missing));
  const std::string text = database_.Storage().Directory().File("text.db");
  std::ofstream(text) << std::string(2000, 'x');
  EXPECT_THAT(test::ErrorOf([&] { Count(text, {}); }).message, HasSubstr("not an SQLite database"));
}

TEST_P(SqliteCountStoredTest, ALockedFileIsAnError) {
  MakeTable("T_A", 1);
  database_.Query("BEGIN EXCLUSIVE");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_THAT(test::ErrorOf([&] { Count(database_.Location(), {}, std::chrono::milliseconds(200)); }).message,
              HasSubstr("locked the database for more than 5 seconds"));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

TEST_P(SqliteCountStoredTest, AColumnThatIsGeneratedIsFound) {
  database_.Query("CREATE TABLE \"T\" (a text, \"V\" text GENERATED ALWAYS AS (a || 'cd') VIRTUAL)");
  database_.Query("INSERT INTO \"T\" (a) VALUES ('ab'), ('a')");
  EXPECT_THAT(CountHere({Longer(0, "T", "V")}), ElementsAre("0: 1 of 2 in T"));
}

class PostgresqlCountStoredTest : public CountStoredTest {
 protected:
  /// The location for a role without any right but those granted to it; the role is gone with the test.
  std::string LocationOfRole() {
    database_.Query("CREATE ROLE " + Role() + " LOGIN PASSWORD 'secret'");
    database_.Query("GRANT USAGE ON SCHEMA " + Schema() + " TO " + Role());
    return database_.Storage().LocationWith("user=" + Role() + " password=secret");
  }
  void TearDown() override {
    if (isRoleMade_) {
      database_.Query("DROP OWNED BY " + Role());
      database_.Query("DROP ROLE " + Role());
    }
  }
  std::string Schema() { return database_.Value("SELECT current_schema()"); }
  std::string Role() {
    isRoleMade_ = true;
    return "role_" + Schema();
  }

 private:
  bool isRoleMade_ = false;
};

INSTANTIATE_TEST_SUITE_P(Postgresql, PostgresqlCountStoredTest, testing::Values(EStorage::kPostgresql));

TEST_P(PostgresqlCountStoredTest, TheExactNameComesFirst) {
  MakeTable("t_a", 1);
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, "T_A"), AnyRow(1, "t_a")}), ElementsAre("0: 2 of 2 in T_A", "1: 1 of 1 in t_a"));
}

TEST_P(PostgresqlCountStoredTest, ANameThatFitsSeveralTablesIsAProblem) {
  MakeTable("t_a", 1);
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, "T_a")}),
              ElementsAre("0: 0 of 0 in; there is no table T_a, but several of that name in other letters"));
}

TEST_P(PostgresqlCountStoredTest, ANameThatFitsSeveralColumnsIsAProblem) {
  database_.Query("CREATE TABLE \"T\" (ab text, \"AB\" text)");
  EXPECT_THAT(CountHere({Longer(0, "T", "Ab")}),
              ElementsAre("0: 0 of 0 in; table T has no column Ab, but several of that name in other letters"));
}

TEST_P(PostgresqlCountStoredTest, TheSearchPathSaysWhichSchemaComesFirst) {
  const std::string schema = Schema();
  database_.Query("CREATE SCHEMA " + schema + "_2");
  database_.Query("CREATE TABLE " + schema + "_2.\"T_A\" (\"V\" text)");
  database_.Query("CREATE TABLE " + schema + "_2.\"T_B\" (\"V\" text)");
  MakeTable("T_A", 2);
  const std::string location = "postgresql://options=-csearch_path=" + schema + "," + schema + "_2";
  EXPECT_THAT(Count(location, {AnyRow(0, "T_A"), AnyRow(1, "T_B")}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in T_B"));
  database_.Query("DROP SCHEMA " + schema + "_2 CASCADE");
}

TEST_P(PostgresqlCountStoredTest, ANameIsCutOffAsTheServerDoes) {
  const std::string name = std::string(61, 'x') + "äöü";
  MakeTable(name, 2);
  database_.Query("ALTER TABLE " + metareview::QuoteIdentifier(name) + " ADD " + metareview::QuoteIdentifier(name) +
                  " text DEFAULT 'abcd'");
  EXPECT_THAT(CountHere({Longer(0, name, name)}), ElementsAre("0: 2 of 2 in " + name));
}

TEST_P(PostgresqlCountStoredTest, ATableOrColumnThatMayNotBeReadIsAProblem) {
  MakeTable("T_A", 2);
  MakeTable("T_B", 2);
  database_.Query("ALTER TABLE \"T_A\" ADD hidden text");
  const std::string location = LocationOfRole();
  database_.Query("GRANT SELECT (\"V\") ON \"T_A\" TO " + Role());
  EXPECT_THAT(Count(location, {Longer(0, "T_A", "V"), Longer(1, "T_A", "hidden"), AnyRow(2, "T_B")}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in; the user may not read column hidden of table T_A",
                          "2: 0 of 0 in; the user may not read table T_B"));
}

TEST_P(PostgresqlCountStoredTest, APolicyThatMayHideRowsMakesTheCountALowerBound) {
  MakeTable("T_A", 2);
  MakeTable("T_B", 2);
  database_.Query("INSERT INTO \"T_A\" VALUES ('shown')");
  database_.Query("ALTER TABLE \"T_A\" ENABLE ROW LEVEL SECURITY");
  const std::string location = LocationOfRole();
  database_.Query("GRANT SELECT ON \"T_A\", \"T_B\" TO " + Role());
  database_.Query("CREATE POLICY partly ON \"T_A\" USING (\"V\" = 'shown')");
  EXPECT_THAT(Count(location, {Longer(0, "T_A", "V"), AnyRow(1, "T_B")}),
              ElementsAre("0: 1 of 1 in T_A; row-level security may hide rows of table T_A", "1: 2 of 2 in T_B"));
  EXPECT_THAT(Count(database_.Location(), {Longer(0, "T_A", "V")}), ElementsAre("0: 3 of 3 in T_A"));
}

TEST_P(PostgresqlCountStoredTest, TheServersOwnShorterLimitHolds) {
  database_.Query("CREATE VIEW \"T\" AS SELECT pg_sleep(20)::text AS \"V\"");
  const std::string location = LocationOfRole();
  database_.Query("GRANT SELECT ON \"T\" TO " + Role());
  database_.Query("ALTER ROLE " + Role() + " SET statement_timeout = '300ms'");
  EXPECT_THAT(Count(location, {AnyRow(0, "T")}), ElementsAre(HasSubstr("not enough time")));
}

TEST_P(PostgresqlCountStoredTest, NothingIsWritten) {
  MakeTable("T_A", 2);
  const std::string next = "SELECT pg_snapshot_xmax(pg_current_snapshot())";
  const std::string before = database_.Value(next);
  EXPECT_THAT(Count(database_.Location(), {AnyRow(0, "T_A")}), ElementsAre("0: 2 of 2 in T_A"));
  // A transaction that changes anything takes a number.
  EXPECT_EQ(database_.Value(next), before);
}

TEST_P(PostgresqlCountStoredTest, AFunctionOfAViewCannotWrite) {
  MakeTable("T_A", 2);
  database_.Query(
      "CREATE FUNCTION add_row() RETURNS text LANGUAGE sql AS 'INSERT INTO \"T_A\" VALUES (''x'') RETURNING \"V\"'");
  database_.Query("CREATE VIEW \"T_VIEW\" AS SELECT add_row() AS \"V\"");
  EXPECT_THAT(Count(database_.Location(), {Longer(0, "T_VIEW", "V"), AnyRow(1, "T_A")}),
              ElementsAre(HasSubstr("read-only transaction"), "1: 2 of 2 in T_A"));
}

TEST_P(PostgresqlCountStoredTest, ALostConnectionIsAProblemOfWhatIsLeft) {
  MakeTable("T_A", 1);
  MakeTable("T_B", 1);
  const std::string location = database_.Storage().LocationWith("application_name=to_be_ended");
  const auto observer = [this](const metareview::SCountProgress& progress) {
    if (progress.done == 1) {
      database_.Query("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE application_name = 'to_be_ended'");
    }
  };
  EXPECT_THAT(Count(location, {AnyRow(0, "T_A"), AnyRow(1, "T_B"), AnyRow(2, "T_B")}, kLimit, observer),
              ElementsAre("0: 1 of 1 in T_A", HasSubstr("1: 0 of 0 in; the connection was lost"),
                          HasSubstr("2: 0 of 0 in; the connection was lost")));
}

TEST_P(PostgresqlCountStoredTest, BinaryDataIsNotMeasured) {
  database_.Query("CREATE TABLE \"T\" (\"V\" bytea)");
  database_.Query("INSERT INTO \"T\" VALUES ('abcd')");
  EXPECT_THAT(CountHere({Longer(0, "T", "V")}), ElementsAre("0: 0 of 0 in; column V of table T holds binary data"));
}

TEST_P(PostgresqlCountStoredTest, AServerThatCannotBeReachedIsAnErrorWithoutThePassword) {
  EXPECT_THAT(test::ErrorOf([&] { Count("postgresql://host=127.0.0.1 port=1 password=verysecret", {}); }).message,
              AllOf(HasSubstr("cannot be opened"), Not(HasSubstr("verysecret"))));
}

}  // namespace
