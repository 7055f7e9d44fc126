// What cannot be opened is an error; what cannot be read, a problem of its findings.

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "metareview2024/data/CountFixture.h"
#include "support/Error.h"

using metareview::EMeasure;
using metareview::SLookup;
using test::AnyRow;
using test::Count;
using test::EStorage;
using test::kCountLimit;
using test::Longer;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;
using testing::Not;

namespace {

class CountTroubleTest : public test::CCountFixture {};

INSTANTIATE_TEST_SUITE_P(Sqlite, CountTroubleTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, CountTroubleTest, testing::Values(EStorage::kPostgresql));

TEST_P(CountTroubleTest, AMissingTableIsAProblemOfItsFinding) {
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, "T_A"), AnyRow(1, "T_MISSING"), Longer(2, "T_MISSING", "V"), AnyRow(3, "T_A")}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in; there is no table T_MISSING",
                          "2: 0 of 0 in; there is no table T_MISSING", "3: 2 of 2 in T_A"));
}

TEST_P(CountTroubleTest, AMissingColumnIsAProblemOfItsFinding) {
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({Longer(0, "T_A", "V"), Longer(1, "T_A", "missing")}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in; table T_A has no column missing"));
}

TEST_P(CountTroubleTest, OneOfSeveralTablesThatIsMissingMakesTheCountALowerBound) {
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, "T_A"), AnyRow(0, "T_MISSING")}),
              ElementsAre("0: 2 of 2 in T_A; there is no table T_MISSING"));
}

TEST_P(CountTroubleTest, ValuesThatAreNoNumbersAreAProblemOfTheirFinding) {
  MakeTable("T_A", 2);
  SLookup above = Longer(1, "T_A", "V");
  above.measure = EMeasure::kAbove;
  EXPECT_THAT(CountHere({Longer(0, "T_A", "V"), above}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in; the column holds values that are not numbers"));
}

TEST_P(CountTroubleTest, AFailingViewIsAProblemOfItsFindings) {
  MakeTable("T_A", 2);
  // Both databases come upon it in a row only.
  const std::string failing =
      IsSqlite() ? "CASE \"V\" WHEN 'abcd' THEN abs(-9223372036854775808) END" : "\"V\"::integer";
  database_.Query("CREATE VIEW \"T VIEW\" AS SELECT \"V\", " + failing + " AS \"W\" FROM \"T_A\"");
  SLookup above = Longer(1, "T VIEW", "W");
  above.measure = EMeasure::kAbove;
  EXPECT_THAT(CountHere({Longer(0, "T VIEW", "V"), above, AnyRow(2, "T_A")}),
              ElementsAre("0: 2 of 2 in T VIEW",
                          AllOf(HasSubstr("1: 0 of 0 in; table T VIEW cannot be read: "),
                                HasSubstr(IsSqlite() ? "integer overflow" : "the server's error 22P02")),
                          "2: 2 of 2 in T_A"));
}

TEST_P(CountTroubleTest, WhatTakesTooLongIsAProblemOfItsFindings) {
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

TEST(CountTroubleLocationTest, ADocumentIsNoDatabase) {
  EXPECT_THAT(test::ErrorOf([] { metareview::CountStored("installation.json", {}, test::kCountLimit); }).message,
              HasSubstr("not a database"));
}

class SqliteCountTroubleTest : public test::CCountFixture {};

INSTANTIATE_TEST_SUITE_P(Sqlite, SqliteCountTroubleTest, testing::Values(EStorage::kSqlite));

TEST_P(SqliteCountTroubleTest, AFileThatIsMissingOrNoDatabaseIsAnError) {
  const std::string missing = database_.Storage().Directory().File("missing.db");
  EXPECT_THAT(test::ErrorOf([&] { Count(missing, {}); }).message,
              AllOf(HasSubstr("missing.db: cannot be opened"), HasSubstr("No such file")));
  EXPECT_FALSE(std::filesystem::exists(missing));
  const std::string text = database_.Storage().Directory().File("text.db");
  std::ofstream(text) << std::string(2000, 'x');
  EXPECT_THAT(test::ErrorOf([&] { Count(text, {}); }).message, HasSubstr("not an SQLite database"));
}

TEST_P(SqliteCountTroubleTest, AViewOfATableThatIsGoneIsAProblemThatNamesTheView) {
  database_.Query("CREATE TABLE gone (\"V\")");
  database_.Query("CREATE VIEW \"T\" AS SELECT \"V\" FROM gone");
  database_.Query("DROP TABLE gone");
  EXPECT_THAT(CountHere({Longer(0, "T", "V")}),
              ElementsAre("0: 0 of 0 in; table T cannot be read: no such table: main.gone"));
}

TEST_P(SqliteCountTroubleTest, ALockedFileIsAnError) {
  MakeTable("T_A", 1);
  database_.Query("BEGIN EXCLUSIVE");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_THAT(test::ErrorOf([&] { Count(database_.Location(), {}, std::chrono::milliseconds(200)); }).message,
              HasSubstr("locked the database for more than 5 seconds"));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

class PostgresqlCountTroubleTest : public test::CRoleFixture {};

INSTANTIATE_TEST_SUITE_P(Postgresql, PostgresqlCountTroubleTest, testing::Values(EStorage::kPostgresql));

TEST_P(PostgresqlCountTroubleTest, ATableOrColumnThatMayNotBeReadIsAProblem) {
  MakeTable("T_A", 2);
  MakeTable("T_B", 2);
  database_.Query("ALTER TABLE \"T_A\" ADD hidden text");
  const std::string location = LocationOfRole();
  database_.Query("GRANT SELECT (\"V\") ON \"T_A\" TO " + Role());
  EXPECT_THAT(Count(location, {Longer(0, "T_A", "V"), Longer(1, "T_A", "hidden"), AnyRow(2, "T_B")}),
              ElementsAre("0: 2 of 2 in T_A", "1: 0 of 0 in; the user may not read column hidden of table T_A",
                          "2: 0 of 0 in; the user may not read table T_B"));
}

TEST_P(PostgresqlCountTroubleTest, APolicyThatMayHideRowsMakesTheCountALowerBound) {
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

TEST_P(PostgresqlCountTroubleTest, APolicyIsSaidOfEachTableThatHasOne) {
  const std::string location = LocationOfRole();
  for (const std::string table : {"T_A", "T_B"}) {
    MakeTable(table, 2);
    const std::string quoted = metareview::QuoteIdentifier(table);
    database_.Query("INSERT INTO " + quoted + " VALUES ('shown')");
    database_.Query("ALTER TABLE " + quoted + " ENABLE ROW LEVEL SECURITY");
    database_.Query("GRANT SELECT ON " + quoted + " TO " + Role());
    database_.Query("CREATE POLICY partly ON " + quoted + " USING (\"V\" = 'shown')");
  }
  EXPECT_THAT(Count(location, {AnyRow(0, "T_A"), AnyRow(1, "T_B")}),
              ElementsAre("0: 1 of 1 in T_A; row-level security may hide rows of table T_A",
                          "1: 1 of 1 in T_B; row-level security may hide rows of table T_B"));
}

TEST_P(PostgresqlCountTroubleTest, NoProblemTellsAStoredValue) {
  database_.Query("CREATE TABLE \"T\" (\"V\" text)");
  database_.Query("INSERT INTO \"T\" VALUES ('secret')");
  database_.Query("CREATE VIEW \"T_CAST\" AS SELECT \"V\"::integer AS \"V\" FROM \"T\"");
  database_.Query(
      "CREATE FUNCTION refuse(text) RETURNS text LANGUAGE plpgsql AS $$ BEGIN RAISE EXCEPTION 'no %', $1; END $$");
  database_.Query("CREATE VIEW \"T_RAISE\" AS SELECT refuse(\"V\") AS \"V\" FROM \"T\"");
  const std::string leftOut = ", whose message is left out because it may hold a stored value";
  EXPECT_THAT(Count(database_.Location(), {Longer(0, "T_CAST", "V"), Longer(1, "T_RAISE", "V")}),
              ElementsAre("0: 0 of 0 in; table T_CAST cannot be read: the server's error 22P02" + leftOut,
                          "1: 0 of 0 in; table T_RAISE cannot be read: the server's error P0001" + leftOut));
}

TEST_P(PostgresqlCountTroubleTest, WhatTheServerSaysOfNamesIsSaid) {
  database_.Query("CREATE FUNCTION \"gone\"() RETURNS text LANGUAGE plpgsql AS $$ BEGIN RETURN nowhere(); END $$");
  database_.Query("CREATE VIEW \"T\" AS SELECT \"gone\"() AS \"V\"");
  EXPECT_THAT(Count(database_.Location(), {Longer(0, "T", "V")}),
              ElementsAre("0: 0 of 0 in; table T cannot be read: function nowhere() does not exist"));
}

TEST_P(PostgresqlCountTroubleTest, TheServersOwnShorterLimitHolds) {
  database_.Query("CREATE VIEW \"T\" AS SELECT pg_sleep(20)::text AS \"V\"");
  const std::string location = LocationOfRole();
  database_.Query("GRANT SELECT ON \"T\" TO " + Role());
  database_.Query("ALTER ROLE " + Role() + " SET statement_timeout = '300ms'");
  EXPECT_THAT(Count(location, {AnyRow(0, "T")}), ElementsAre(HasSubstr("not enough time")));
}

/// Ends connections when the third table is begun with: one of the first two is counted by then.
metareview::CountObserver EndAtThirdTable(test::CStoredDatabase& database, const std::string& pids) {
  return [&database, pids, isDone = false](const metareview::SCountProgress& progress) mutable {
    if (progress.done == 2 && !isDone) {
      isDone = true;
      database.Query("SELECT pg_terminate_backend(pid) FROM (SELECT " + pids +
                     " AS pid FROM pg_stat_activity WHERE application_name = 'to_be_ended') AS ended");
    }
  };
}

TEST_P(PostgresqlCountTroubleTest, LostConnectionsAreAProblemOfWhatIsLeft) {
  std::vector<SLookup> lookups;
  // More than the two that the connections are lost with.
  for (int i = 0; i < 6; ++i) {
    MakeTable("T_" + std::to_string(i), 1);
    lookups.push_back(AnyRow(lookups.size(), "T_" + std::to_string(i)));
  }
  const std::string location = database_.Storage().LocationWith("application_name=to_be_ended");
  const auto counts = Count(location, lookups, test::kCountLimit, EndAtThirdTable(database_, "pid"));
  ASSERT_EQ(counts.size(), 6U);
  EXPECT_THAT(counts, Contains(HasSubstr(": 1 of 1 in T_")).Times(AllOf(Ge(1), Le(2))));
  for (std::size_t i = 2; i < counts.size(); ++i) {
    EXPECT_THAT(counts[i], HasSubstr(std::to_string(i) + ": 0 of 0 in; the connection was lost"));
  }
}

TEST_P(PostgresqlCountTroubleTest, WhatIsLeftIsCountedWhenOneOfTwoConnectionsIsLost) {
  for (const std::string pid : {"min(pid)", "max(pid)"}) {
    test::CStoredDatabase database(GetParam());
    std::vector<SLookup> lookups;
    for (int i = 0; i < 20; ++i) {
      const std::string table = "T_" + std::to_string(i);
      // Slow enough for both connections to be at work.
      database.Query("CREATE VIEW \"" + table + "\" AS SELECT pg_sleep(0.02)::text AS \"V\"");
      lookups.push_back(AnyRow(lookups.size(), table));
    }
    const std::string location = database.Storage().LocationWith("application_name=to_be_ended");
    const auto counts = Count(location, lookups, test::kCountLimit, EndAtThirdTable(database, pid));
    ASSERT_EQ(counts.size(), 20U);
    // The one that is lost may have had no table at the time.
    EXPECT_THAT(counts, Contains(HasSubstr(": 1 of 1 in T_")).Times(Ge(19)));
    EXPECT_THAT(counts, Contains(HasSubstr(": 0 of 0 in; the connection was lost")).Times(Le(1)));
  }
}

TEST_P(PostgresqlCountTroubleTest, BinaryDataIsNotMeasured) {
  database_.Query("CREATE TABLE \"T\" (\"V\" bytea)");
  database_.Query("INSERT INTO \"T\" VALUES ('abcd')");
  EXPECT_THAT(CountHere({Longer(0, "T", "V")}), ElementsAre("0: 0 of 0 in; column V of table T holds binary data"));
}

TEST_P(PostgresqlCountTroubleTest, CharactersAreNotCountedWhereTheDatabaseKnowsBytesAlone) {
  const std::string name = "bytes_" + Schema();
  database_.Query("CREATE DATABASE " + name + " ENCODING 'SQL_ASCII' LOCALE 'C' TEMPLATE template0");
  const std::string location = "postgresql://dbname=" + name + " options=-csearch_path=information_schema";
  EXPECT_THAT(
      Count(location, {Longer(0, "sql_features", "feature_id"), AnyRow(1, "sql_features")}),
      ElementsAre("0: 0 of 0 in; column feature_id of table sql_features is in a database of encoding SQL_ASCII, "
                  "which knows the bytes of a text, not its characters",
                  Not(HasSubstr(";"))));
  database_.Query("DROP DATABASE " + name);
}

TEST_P(PostgresqlCountTroubleTest, AServerThatCannotBeReachedIsAnErrorWithoutThePassword) {
  EXPECT_THAT(test::ErrorOf([&] { Count("postgresql://host=127.0.0.1 port=1 password=verysecret", {}); }).message,
              AllOf(HasSubstr("cannot be opened"), Not(HasSubstr("verysecret"))));
}

}  // namespace
