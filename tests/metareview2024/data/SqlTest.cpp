#include "metareview2024/data/Sql.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include "metareview2024/data/StoredDatabase.h"

using metareview::EDialect;
using metareview::EMeasure;
using metareview::SLookup;
using test::EStorage;
using testing::ElementsAre;

namespace {

TEST(SqlTest, NamesCannotEndTheirQuotes) {
  EXPECT_EQ(metareview::QuoteIdentifier("T\"; DROP TABLE x; --"), "\"T\"\"; DROP TABLE x; --\"");
}

TEST(SqlTest, TextsCannotEndTheirQuotes) {
  EXPECT_EQ(QuoteLiteral(EDialect::kSqlite, "it's \\"), "'it''s \\'");
  EXPECT_EQ(QuoteLiteral(EDialect::kPostgresql, "it's"), "'it''s'");
  EXPECT_EQ(QuoteLiteral(EDialect::kPostgresql, "it's \\"), "E'it''s \\\\'");
}

TEST(SqlTest, EachTableIsReadOnce) {
  const auto any = [](const std::string& table) { return SLookup{0, "p", "r", table, {}, EMeasure::kAnyRow, ""}; };
  const auto queries = TableQueries(EDialect::kSqlite, {any("B"), any("A"), any("B")});
  ASSERT_EQ(queries.size(), 2U);
  EXPECT_EQ(queries[0].table, "B");
  EXPECT_THAT(queries[0].lookups, ElementsAre(0, 2));
  EXPECT_EQ(queries[1].table, "A");
  EXPECT_THAT(queries[1].lookups, ElementsAre(1));
}

TEST(SqlTest, ATableWithMoreCountsThanADatabaseTakesHasSeveralQueries) {
  const std::vector<SLookup> lookups(metareview::kMostCounts + 1, {0, "p", "r", "T", {}, EMeasure::kAnyRow, ""});
  const auto queries = TableQueries(EDialect::kSqlite, lookups);
  ASSERT_EQ(queries.size(), 2U);
  EXPECT_EQ(queries[0].lookups.size(), metareview::kMostCounts);
  EXPECT_EQ(queries[1].lookups.size(), 1U);
}

TEST(SqlTest, NothingToCountIsNoQuery) {
  EXPECT_EQ(metareview::UnionAll({}), "");
}

TEST(SqlTest, AScriptBeginsAndEndsReading) {
  EXPECT_THAT(BeginReading(EDialect::kSqlite, std::chrono::seconds(30)),
              ElementsAre("PRAGMA query_only = ON;", "PRAGMA trusted_schema = OFF;", "BEGIN;"));
  EXPECT_THAT(
      BeginReading(EDialect::kPostgresql, std::chrono::seconds(30)),
      ElementsAre("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY;", "SET LOCAL statement_timeout = '30s';",
                  "SET LOCAL row_security = off;", "SET LOCAL extra_float_digits = 1;", "SET LOCAL jit = off;"));
  for (const EDialect dialect : {EDialect::kSqlite, EDialect::kPostgresql}) {
    EXPECT_THAT(EndReading(dialect), ElementsAre("ROLLBACK;"));
  }
}

TEST(SqlTest, ATypeThatHoldsNoNumbersIsAMistakeOfTheCaller) {
  const SLookup lookup = {0, "p", "r", "T", {"V"}, EMeasure::kOutsideType, "string"};
  EXPECT_THAT([&lookup] { TableQueries(EDialect::kSqlite, {lookup}); },
              testing::ThrowsMessage<std::logic_error>("no numeric type"));
}

class SqlDatabaseTest : public testing::TestWithParam<EStorage> {
 protected:
  static void Begin(test::CStoredDatabase& database) {
    for (const std::string& statement : BeginReading(database.Dialect(), std::chrono::seconds(30))) {
      database.Query(statement);
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Sqlite, SqlDatabaseTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, SqlDatabaseTest, testing::Values(EStorage::kPostgresql));

TEST_P(SqlDatabaseTest, NamesAndPathsAreTakenAsTheyAre) {
  test::CStoredDatabase database(GetParam());
  const std::vector<std::string> names = {
      "a\"b", "it's", "100%", "a;b", "a\nb", "Größe", "a:b", "a\\b", "$1", "a?b", "select", "表", std::string(63, 'x')};
  for (const std::string& name : names) {
    const std::string quoted = metareview::QuoteIdentifier(name);
    database.Query("CREATE TABLE " + quoted + " (" + quoted + " text)");
    database.Query("INSERT INTO " + quoted + " VALUES ('abcd'), ('abc')");
    const SLookup lookup = {0, "class/" + name, "length-shrinks", name, {name}, EMeasure::kLongerThan, "3"};
    const auto rows = database.Query(TableQueries(database.Dialect(), {lookup}).front().query);
    ASSERT_EQ(rows.size(), 1U) << name;
    EXPECT_THAT(rows.front(), ElementsAre("class/" + name, "length-shrinks", "1", "2")) << name;
  }
}

TEST_P(SqlDatabaseTest, AMissingColumnIsNotTakenForAText) {
  test::CStoredDatabase database(GetParam());
  database.MakeTable("text", {"'abcd'"});
  const SLookup lookup = {0, "p", "r", "T", {"missing"}, EMeasure::kLongerThan, "3"};
  const std::string query = TableQueries(database.Dialect(), {lookup}).front().query;
  EXPECT_THAT(query, testing::HasSubstr("t.\"missing\""));
}

TEST_P(SqlDatabaseTest, ManyTablesGiveOneResult) {
  test::CStoredDatabase database(GetParam());
  database.MakeTable("integer", {"1", "2", "3"});
  const SLookup lookup = {0, "p", "r", "T", {"V"}, EMeasure::kAbove, "1"};
  const std::string query = TableQueries(database.Dialect(), {lookup}).front().query;
  Begin(database);
  // Also as many as make full groups.
  for (const std::size_t tables : {1001U, 800U, 400U}) {
    const std::vector<std::string> queries(tables, "-- a comment\n" + query);
    EXPECT_EQ(
        database.Value("SELECT count(*) || ' ' || sum(x.\"rows\") FROM (" + metareview::UnionAll(queries) + ") AS x"),
        std::to_string(tables) + " " + std::to_string(2 * tables));
  }
}

TEST_P(SqlDatabaseTest, ATableTakesTheMostCounts) {
  test::CStoredDatabase database(GetParam());
  database.MakeTable("integer", {"1", "2", "3"});
  std::vector<SLookup> lookups;
  for (std::size_t i = 0; i < metareview::kMostCounts; ++i) {
    lookups.push_back({i, "p" + std::to_string(i), "r", "T", {"V"}, EMeasure::kAbove, std::to_string(i)});
  }
  Begin(database);
  const auto rows = database.Query(TableQueries(database.Dialect(), lookups).front().query);
  ASSERT_EQ(rows.size(), metareview::kMostCounts);
  EXPECT_THAT(rows[0], ElementsAre("p0", "r", "3", "3"));
  EXPECT_THAT(rows[2], ElementsAre("p2", "r", "1", "3"));
}

TEST_P(SqlDatabaseTest, ASessionThatReadsCannotChangeAnything) {
  test::CStoredDatabase database(GetParam());
  database.MakeTable("integer", {"1"});
  Begin(database);
  EXPECT_NONFATAL_FAILURE(database.Query("DELETE FROM \"T\""),
                          GetParam() == EStorage::kSqlite ? "readonly" : "read-only");
  for (const std::string& statement : EndReading(database.Dialect())) {
    database.Query(statement);
  }
  EXPECT_EQ(database.Value("SELECT count(*) FROM \"T\""), "1");
}

}  // namespace
