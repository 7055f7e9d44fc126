// How tables and columns are found by the names that the metamodel has.

#include <gmock/gmock.h>

#include "metareview2024/data/CountFixture.h"

using metareview::SLookup;
using test::AnyRow;
using test::Count;
using test::EStorage;
using test::Longer;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

namespace {

class CountNamesTest : public test::CCountFixture {};

INSTANTIATE_TEST_SUITE_P(Sqlite, CountNamesTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, CountNamesTest, testing::Values(EStorage::kPostgresql));

TEST_P(CountNamesTest, NamesAreFoundWithoutRegardToCase) {
  MakeTable("t_part", 2);
  EXPECT_THAT(CountHere({Longer(0, "T_PART", "v")}), ElementsAre("0: 2 of 2 in T_PART"));
}

TEST_P(CountNamesTest, NamesAreTakenAsTheyAre) {
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

TEST_P(CountNamesTest, ANameWithANulCharacterIsNotCutOff) {
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, std::string("T_A\0x", 5)), Longer(1, "T_A", std::string("V\0x", 3))}),
              ElementsAre(HasSubstr("there is no table T_A\\x00x"), HasSubstr("has no column V\\x00x")));
}

/// Where tables were looked for in vain; nothing where one was found.
std::optional<std::vector<std::string>> SearchedInVain(const std::string& location,
                                                       const std::vector<SLookup>& lookups) {
  return metareview::CountStored(location, {lookups, {}, {}}, test::kCountLimit).searchedInVain;
}

TEST_P(CountNamesTest, WhereNoTableIsFoundTheSearchIsTold) {
  MakeTable("T_A", 2);
  const std::vector<std::string> schemas =
      IsSqlite() ? std::vector<std::string>() : std::vector<std::string>{database_.Value("SELECT current_schema()")};
  database_.Disconnect();
  EXPECT_EQ(SearchedInVain(database_.Location(), {AnyRow(0, "T_B"), AnyRow(1, "T_C")}), schemas);
  EXPECT_EQ(SearchedInVain(database_.Location(), {AnyRow(0, "T_B"), AnyRow(1, "T_A")}), std::nullopt);
  // The table is there.
  EXPECT_EQ(SearchedInVain(database_.Location(), {Longer(0, "T_A", "missing")}), std::nullopt);
  EXPECT_EQ(SearchedInVain(database_.Location(), {}), std::nullopt);
}

class PostgresqlCountNamesTest : public test::CRoleFixture {};

INSTANTIATE_TEST_SUITE_P(Postgresql, PostgresqlCountNamesTest, testing::Values(EStorage::kPostgresql));

TEST_P(PostgresqlCountNamesTest, TheExactNameComesFirst) {
  MakeTable("t_a", 1);
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, "T_A"), AnyRow(1, "t_a")}), ElementsAre("0: 2 of 2 in T_A", "1: 1 of 1 in t_a"));
}

TEST_P(PostgresqlCountNamesTest, ANameThatFitsSeveralTablesIsAProblem) {
  MakeTable("t_a", 1);
  MakeTable("T_A", 2);
  EXPECT_THAT(CountHere({AnyRow(0, "T_a")}),
              ElementsAre("0: 0 of 0 in; there is no table T_a, but several of that name in other letters"));
}

TEST_P(PostgresqlCountNamesTest, ANameThatFitsSeveralColumnsIsAProblem) {
  database_.Query("CREATE TABLE \"T\" (ab text, \"AB\" text)");
  EXPECT_THAT(CountHere({Longer(0, "T", "Ab")}),
              ElementsAre("0: 0 of 0 in; table T has no column Ab, but several of that name in other letters"));
}

TEST_P(PostgresqlCountNamesTest, TheSearchPathSaysWhichSchemaComesFirst) {
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

TEST_P(PostgresqlCountNamesTest, TheSearchIsToldInItsOrder) {
  const std::string schema = Schema();
  EXPECT_THAT(SearchedInVain("postgresql://options=-csearch_path=none_such,public," + schema, {AnyRow(0, "T_A")}),
              Optional(ElementsAre("public", schema)));
  EXPECT_THAT(SearchedInVain("postgresql://options=-csearch_path=none_such", {AnyRow(0, "T_A")}), Optional(IsEmpty()));
}

TEST_P(PostgresqlCountNamesTest, ANameIsCutOffAsTheServerDoes) {
  // The server keeps 63 bytes, and of a character all or nothing.
  const std::vector<std::string> names = {std::string(61, 'x') + "äöü", std::string(64, 'y')};
  for (const std::string& name : names) {
    MakeTable(name, 2);
    database_.Query("ALTER TABLE " + metareview::QuoteIdentifier(name) + " ADD " + metareview::QuoteIdentifier(name) +
                    " text DEFAULT 'abcd'");
  }
  EXPECT_THAT(CountHere({Longer(0, names[0], names[0]), Longer(1, names[1], names[1])}),
              ElementsAre("0: 2 of 2 in " + names[0], "1: 2 of 2 in " + names[1]));
}

}  // namespace
