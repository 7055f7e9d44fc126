#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "metareview2024/MadeReview.h"
#include "metareview2024/data/Lookups.h"
#include "metareview2024/render/LookupsDigest.h"
#include "metareview2024/render/RenderedReview.h"

namespace metareview {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kCode = "class/Part/property/Code/length";

/// Part.Code is counted in T_PART, Part itself in T_OLD; for Gear the metamodel names no table.
SReview Review() {
  SReview review = test::MadeReview({test::MadeChange(kCode, "length-shrinks", 48U, 32U),
                                     test::MadeChange("class/Part/table_name", "table-moved", "T_OLD", "T_PART"),
                                     test::Made("class/Gear", EChange::kInserted, "class-withdrawn")});
  SLookups lookups;
  lookups.lookups = {{0, kCode, "length-shrinks", "T_PART", {"F_CODE"}, EMeasure::kLongerThan, "32"},
                     {1, "class/Part/table_name", "table-moved", "T_OLD", {}, EMeasure::kAnyRow, ""}};
  lookups.problems = {{2, "the client's metamodel names no table"}};
  review.lookups = std::make_shared<const SLookups>(lookups);
  return review;
}

std::string Script(EDialect dialect, const SReview& review = Review()) {
  SRenderOptions options;
  options.dialect = dialect;
  return test::Rendered("sql", review, options);
}

/// The lines that are no comments.
std::string Statements(const std::string& script) {
  std::string statements;
  for (std::size_t begin = 0; begin < script.size();) {
    const std::size_t end = script.find('\n', begin) + 1;
    const std::string line = script.substr(begin, end - begin);
    statements += line.compare(0, 2, "--") == 0 ? "" : line;
    begin = end;
  }
  return statements;
}

TEST(SqlReviewTest, IsAScriptThatExplainsItself) {
  SReview review = test::MadeReview({test::MadeChange("class/Part/table_name", "table-moved", "T_OLD", "T_PART"),
                                     test::Made("class/Gear", EChange::kInserted, "class-withdrawn")});
  SLookups lookups;
  lookups.lookups = {{0, "class/Part/table_name", "table-moved", "T_OLD", {}, EMeasure::kAnyRow, ""}};
  lookups.problems = {{1, "the client's metamodel names no table"}};
  review.lookups = std::make_shared<const SLookups>(lookups);
  EXPECT_EQ(
      Script(EDialect::kSqlite, review),
      R"(-- Counts what an upgrade may touch of the values that an installation stores: one row for each difference below.
-- Made by "upgradesrv review -o sql", for whoever may read the installation's database.
--
-- There is no need to worry about what it does. It only reads, in one transaction that cannot write and that sees
-- one moment. Nobody has to wait for it but a change of a table's definition. It reads each table once, from
-- beginning to end.
-- SQLite has no limit of time for that; end it with Ctrl-C if it takes too long.
--
-- Run it so that its result, and nothing else, is saved as CSV:
--   sqlite3 -readonly -batch -bail -header -csv -cmd '.timeout 30000' DATABASE < THIS_FILE > result.csv
-- Whoever reviews the upgrade takes that with
--   upgradesrv review --data result.csv UPGRADE_DIR
--
-- A table or column that is missing, or may not be read, stops it with an error that names it. Delete the query
-- that names it, with the UNION ALL before or behind it, but not the last semicolon. Run it again; what it counts is
-- left open then.
--
-- installation (client): client.json
-- upgrade (original):    original.json
-- tables: 1
-- not counted: class/Gear (class-withdrawn): the client's metamodel names no table

PRAGMA query_only = ON;
PRAGMA trusted_schema = OFF;
BEGIN;

-- Which differences this script is about; upgradesrv refuses counts that are about others.
SELECT 'class' AS path, ')" +
          LookupsDigest(lookups, EKind::kClass) +
          R"(' AS rule, 0 AS "rows", 0 AS "of"
UNION ALL
SELECT 'link', 'e3b0c44298fc1c14', 0, 0
UNION ALL
SELECT 'behavior', 'e3b0c44298fc1c14', 0, 0
UNION ALL

-- Table T_OLD
--   class/Part/table_name (table-moved): rows of T_OLD
)" + TableQueries(EDialect::kSqlite, lookups.lookups).front().query +
          "\n;\n\nROLLBACK;\n");
}

TEST(SqlReviewTest, SaysFirstWhatItDoesAndHowToRunIt) {
  const std::string postgresql = Script(EDialect::kPostgresql);
  EXPECT_THAT(postgresql,
              StartsWith("-- Counts what an upgrade may touch of the values that an installation stores: "));
  EXPECT_THAT(postgresql, HasSubstr("--   psql -X -q --csv -v ON_ERROR_STOP=1 -f THIS_FILE DATABASE > result.csv\n"));
  EXPECT_THAT(postgresql, HasSubstr("--   upgradesrv review --data result.csv UPGRADE_DIR\n"));
  EXPECT_LT(postgresql.find("  psql "), postgresql.find("  upgradesrv review --data result.csv"));
  EXPECT_THAT(
      postgresql,
      HasSubstr("\n-- installation (client): client.json\n-- upgrade (original):    original.json\n-- tables: 2\n"));
  EXPECT_THAT(Script(EDialect::kSqlite),
              HasSubstr("--   sqlite3 -readonly -batch -bail -header -csv -cmd '.timeout 30000' DATABASE < THIS_FILE > "
                        "result.csv\n"));
}

TEST(SqlReviewTest, SaysOfEachFindingWhatIsCounted) {
  for (const EDialect dialect : {EDialect::kSqlite, EDialect::kPostgresql}) {
    const std::string script = Script(dialect);
    EXPECT_THAT(script, HasSubstr("\n-- Table T_PART\n--   " + kCode +
                                  " (length-shrinks): values of T_PART.F_CODE longer than 32 characters\nSELECT "));
    EXPECT_THAT(script,
                HasSubstr("\n-- Table T_OLD\n--   class/Part/table_name (table-moved): rows of T_OLD\nSELECT "));
  }
}

TEST(SqlReviewTest, SaysWhatCannotBeCounted) {
  EXPECT_THAT(Script(EDialect::kSqlite),
              HasSubstr("\n-- not counted: class/Gear (class-withdrawn): the client's metamodel names no table\n"));
}

TEST(SqlReviewTest, OnlyReadsInOneTransactionWithALimitOfTime) {
  const std::string postgresql = Statements(Script(EDialect::kPostgresql));
  EXPECT_THAT(postgresql, StartsWith("\nBEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY;\n"));
  // Both tables are read by one statement.
  EXPECT_THAT(postgresql, HasSubstr("\nSET LOCAL statement_timeout = '60s';\n"));
  EXPECT_THAT(postgresql, testing::EndsWith(";\n\nROLLBACK;\n"));
  const std::string sqlite = Statements(Script(EDialect::kSqlite));
  EXPECT_THAT(sqlite, StartsWith("\nPRAGMA query_only = ON;\n"));
  EXPECT_THAT(sqlite, testing::EndsWith(";\n\nROLLBACK;\n"));
}

TEST(SqlReviewTest, GivesOneRowForEachKindThatTellsItFromOtherScripts) {
  const SReview review = Review();
  const std::string script = Script(EDialect::kSqlite, review);
  EXPECT_THAT(script, HasSubstr("\nSELECT 'class' AS path, '" + LookupsDigest(*review.lookups, EKind::kClass) +
                                "' AS rule, 0 AS \"rows\", 0 AS \"of\"\nUNION ALL\nSELECT 'link', '"));
}

TEST(SqlReviewTest, NamesDoNotBreakOutOfComments) {
  SReview review = Review();
  SLookups lookups = *review.lookups;
  lookups.lookups = {{0,
                      "class/a\n; b */\r\u2028/property/Code/length",
                      "length-shrinks",
                      "T\nDROP",
                      {"F\r\nDROP"},
                      EMeasure::kLongerThan,
                      "32"}};
  review.lookups = std::make_shared<const SLookups>(lookups);
  review.client = "c\nDROP.json";
  const std::string script = Script(EDialect::kPostgresql, review);
  EXPECT_THAT(script,
              HasSubstr("\n-- Table T\\nDROP\n--   class/a\\n; b */\\x0D\\u2028/property/Code/length "
                        "(length-shrinks): values of T\\nDROP.F\\x0D\\nDROP longer than 32 characters\nSELECT "));
  EXPECT_THAT(script, HasSubstr("\n-- installation (client): c\\nDROP.json\n"));
}

TEST(SqlReviewTest, WithNothingToCountItStillGivesItsColumns) {
  SReview review = test::MadeReview({});
  review.lookups = std::make_shared<const SLookups>();
  review.elements = {EKind::kLink};
  EXPECT_THAT(Statements(Script(EDialect::kSqlite, review)),
              HasSubstr("SELECT 'link' AS path, 'e3b0c44298fc1c14' AS rule, 0 AS \"rows\", 0 AS \"of\"\n;\n"));
  EXPECT_THAT(Script(EDialect::kPostgresql, review), HasSubstr("\nSET LOCAL statement_timeout = '30s';\n"));
}

TEST(SqlReviewTest, CountsNothingForAReviewThatFailedOrWasSaved) {
  SReview review = test::MadeReview({});
  EXPECT_EQ(Script(EDialect::kSqlite, review),
            "-- This script counts nothing.\n"
            "-- A review that was read from a file does not say where values are stored.\n");
  review.complete = false;
  review.problem = "client.json:\ncannot be read";
  EXPECT_EQ(Script(EDialect::kSqlite, review),
            "-- This script counts nothing.\n-- The review failed: client.json:\\ncannot be read\n");
}

TEST(SqlReviewTest, DoesNotDependOnTheLanguage) {
  SRenderOptions german;
  german.words = CWords::Find("de");
  EXPECT_EQ(test::Rendered("sql", Review(), german), Script(EDialect::kPostgresql));
}

}  // namespace
}  // namespace metareview
