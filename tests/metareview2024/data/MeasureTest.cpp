#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "metareview2024/data/CountStored.h"
#include "metareview2024/data/Sql.h"
#include "metareview2024/data/StoredDatabase.h"

using metareview::EMeasure;
using test::EStorage;

namespace {

/// "ROWS of OF" of one measure over the column of CStoredDatabase::MakeTable; "not counted" where there are values that
/// are no numbers.
class MeasureTest : public testing::TestWithParam<EStorage> {
 protected:
  bool IsSqlite() const { return GetParam() == EStorage::kSqlite; }

  static std::string CountLive(const std::string& location, const metareview::SLookup& lookup) {
    const auto counts = metareview::CountStored(location, {{lookup}, {}, {}}, std::chrono::seconds(30)).counts;
    if (counts.size() != 1) {
      return "no count";
    }
    const metareview::SData& data = counts.front().data;
    if (data.problem.empty()) {
      return std::to_string(data.rows) + " of " + std::to_string(data.of);
    }
    return data.problem == metareview::kNotNumbers ? "not counted" : data.problem;
  }

  /// What the query of a script counts, which knows no types; the same is counted where they are known.
  std::string Count(const std::string& type, const std::vector<std::string>& values, EMeasure measure,
                    const std::string& limit) {
    test::CStoredDatabase database(GetParam());
    database.MakeTable(type, values);
    const metareview::SLookup lookup = {0, "class/P/property/V/x", "rule", "T", {"V"}, measure, limit};
    const auto rows = database.Query(TableQueries(database.Dialect(), {lookup}).front().query);
    if (rows.size() != 1) {
      return "no row";
    }
    EXPECT_EQ(rows[0][0], "class/P/property/V/x");
    EXPECT_EQ(rows[0][1], "rule");
    const std::string count = rows[0][2] ? *rows[0][2] + " of " + rows[0][3].value_or("NULL") : "not counted";
    database.Disconnect();
    EXPECT_EQ(CountLive(database.Location(), lookup), count) << type;
    return count;
  }
};

INSTANTIATE_TEST_SUITE_P(Sqlite, MeasureTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, MeasureTest, testing::Values(EStorage::kPostgresql));

std::string Text(const std::string& text) {
  return "'" + text + "'";
}

TEST_P(MeasureTest, LongerThanCountsValuesOfMoreCharacters) {
  EXPECT_EQ(Count("text", {"'abc'", "'abcd'", "'abcde'", "''", "NULL", "'    '"}, EMeasure::kLongerThan, "3"),
            "3 of 6");
}

TEST_P(MeasureTest, LongerThanCountsCharactersNotBytes) {
  EXPECT_EQ(Count("text", {"'äöü'", "'äöüß'", "'日本語'", "'日本語字'", "'😀😀😀'", "'😀😀😀😀'"}, EMeasure::kLongerThan, "3"),
            "3 of 6");
}

TEST_P(MeasureTest, LongerThanTakesHugeTexts) {
  EXPECT_EQ(
      Count("text", {Text(std::string(100000, 'x')), Text(std::string(100001, 'x'))}, EMeasure::kLongerThan, "100000"),
      "1 of 2");
}

TEST_P(MeasureTest, LongerThanTakesTheGreatestLimit) {
  EXPECT_EQ(Count("text", {"'abc'"}, EMeasure::kLongerThan, "4294967295"), "0 of 1");
}

TEST_P(MeasureTest, LongerThanCountsDigitsOfNumbers) {
  EXPECT_EQ(Count("integer", {"123", "1234", "-123", "NULL"}, EMeasure::kLongerThan, "3"), "2 of 4");
}

TEST_P(MeasureTest, RoundedCountsValuesWithMorePlaces) {
  const std::vector<std::string> values = {"1.5", "1.25", "1.255", "-1.255", "0", "NULL", "3", "1.250"};
  EXPECT_EQ(Count("numeric", values, EMeasure::kRounded, "2"), "2 of 8");
  EXPECT_EQ(Count("double precision", values, EMeasure::kRounded, "2"), "2 of 8");
  EXPECT_EQ(Count("numeric", values, EMeasure::kRounded, "0"), "5 of 8");
}

TEST_P(MeasureTest, RoundedLeavesWholeNumbers) {
  EXPECT_EQ(Count("bigint", {"9007199254740993", "-9223372036854775808", "9223372036854775807", "1", "NULL"},
                  EMeasure::kRounded, "0"),
            "0 of 5");
}

TEST_P(MeasureTest, RoundedLeavesHugeFloatingPointNumbers) {
  EXPECT_EQ(Count("double precision", {"1234567890123456.5", "1e300", "-1e300"}, EMeasure::kRounded, "2"), "0 of 3");
}

TEST_P(MeasureTest, RoundedLooksAtTheLastPlacesOfGreatNumbers) {
  EXPECT_EQ(Count("double precision", {"50000000000000.25", "50000000000000.125", "-50000000000000.125"},
                  EMeasure::kRounded, "2"),
            "2 of 3");
}

TEST_P(MeasureTest, RoundedTakesManyPlaces) {
  // The power of ten for so many places is no number of float64.
  EXPECT_EQ(Count("double precision", {"7e-23", "1.5e-22", "7e-24", "0.5", "NULL"}, EMeasure::kRounded, "23"),
            "1 of 5");
  EXPECT_EQ(Count("double precision", {"1e-30", "1e-31", "0.5"}, EMeasure::kRounded, "30"), "1 of 3");
}

TEST_P(MeasureTest, RoundedIsExactForLargeFloatingPointNumbers) {
  EXPECT_EQ(Count("double precision",
                  {"112589990684262.4", "112589990684262.45", "-112589990684262.45", "112589990684263.5",
                   "112589990684263.55", "225179981368524.7", "225179981368524.75", "0.05", "-0.05", "-0.1", "0.3"},
                  EMeasure::kRounded, "1"),
            "6 of 11");
}

TEST_P(MeasureTest, RoundedReadsNumbersInTexts) {
  EXPECT_EQ(Count("text", {"'1.25'", "'1.255'", "' 1.255 '", "'12'", "''", "NULL", "'1e-3'"}, EMeasure::kRounded, "2"),
            "3 of 7");
}

TEST_P(MeasureTest, AboveCountsNumbersBeyondTheLimit) {
  const std::vector<std::string> values = {"99", "100", "101", "-101", "0", "NULL"};
  for (const std::string type : {"integer", "bigint", "numeric", "double precision"}) {
    EXPECT_EQ(Count(type, values, EMeasure::kAbove, "100"), "1 of 6") << type;
    EXPECT_EQ(Count(type, values, EMeasure::kAbove, "99.5"), "2 of 6") << type;
    EXPECT_EQ(Count(type, values, EMeasure::kAbove, "-0.5"), "4 of 6") << type;
  }
}

TEST_P(MeasureTest, BelowCountsNumbersBeyondTheLimit) {
  const std::vector<std::string> values = {"99", "100", "101", "-101", "0", "NULL"};
  for (const std::string type : {"integer", "bigint", "numeric", "double precision"}) {
    EXPECT_EQ(Count(type, values, EMeasure::kBelow, "100"), "3 of 6") << type;
    EXPECT_EQ(Count(type, values, EMeasure::kBelow, "-101"), "0 of 6") << type;
    EXPECT_EQ(Count(type, values, EMeasure::kBelow, "-100.999"), "1 of 6") << type;
  }
}

TEST_P(MeasureTest, LimitsAreComparedExactly) {
  const std::vector<std::string> values = {"9007199254740992", "9007199254740993", "9223372036854775807"};
  EXPECT_EQ(Count("bigint", values, EMeasure::kAbove, "9007199254740992"), "2 of 3");
  EXPECT_EQ(Count("bigint", values, EMeasure::kAbove, "9223372036854775806"), "1 of 3");
  EXPECT_EQ(Count("bigint", values, EMeasure::kAbove, "99999999999999999999999999"), "0 of 3");
  EXPECT_EQ(Count("bigint", values, EMeasure::kBelow, "99999999999999999999999999"), "3 of 3");
}

TEST_P(MeasureTest, LimitsReadNumbersInTexts) {
  const std::vector<std::string> values = {"'99'", "'100'",  "'100.0'", "'101'", "' 1e3 '", "'-5'",
                                           "'+7'", "'0101'", "'.5'",    "'5.'",  "''",      "NULL"};
  EXPECT_EQ(Count("text", values, EMeasure::kAbove, "100"), "3 of 12");
  EXPECT_EQ(Count("text", values, EMeasure::kBelow, "0"), "1 of 12");
}

TEST_P(MeasureTest, ValuesThatAreNoNumbersAreNotGuessed) {
  for (const std::string value : {"'abc'", "'12abc'", "'1,5'", "'0x10'", "'--5'", "' '", "'1e'"}) {
    EXPECT_EQ(Count("text", {"'1'", value}, EMeasure::kAbove, "0"), "not counted") << value;
    EXPECT_EQ(Count("text", {"'1'", value}, EMeasure::kBelow, "0"), "not counted") << value;
    EXPECT_EQ(Count("text", {"'1'", value}, EMeasure::kRounded, "0"), "not counted") << value;
    EXPECT_EQ(Count("text", {"'1'", value}, EMeasure::kOutsideType, "int8"), "not counted") << value;
  }
}

TEST_P(MeasureTest, WholeTypesHoldTheirRange) {
  struct SCase {
    std::string type;
    std::vector<std::string> values;
    std::string expected;
  };
  const std::vector<SCase> cases = {
      {"int8", {"-129", "-128", "127", "128", "0", "NULL"}, "2 of 6"},
      {"int16", {"-32769", "-32768", "32767", "32768", "0", "NULL"}, "2 of 6"},
      {"int32", {"-2147483649", "-2147483648", "2147483647", "2147483648", "0", "NULL"}, "2 of 6"},
      {"int64", {"-9223372036854775808", "9223372036854775807", "0", "NULL"}, "0 of 4"},
  };
  for (const SCase& test : cases) {
    EXPECT_EQ(Count("bigint", test.values, EMeasure::kOutsideType, test.type), test.expected) << test.type;
    EXPECT_EQ(Count("numeric", test.values, EMeasure::kOutsideType, test.type), test.expected) << test.type;
  }
}

TEST_P(MeasureTest, WholeTypesHoldNoFraction) {
  const std::vector<std::string> values = {"1", "1.5", "-0.25", "127", "127.5", "1e300", "-1e300", "NULL", "0"};
  EXPECT_EQ(Count("double precision", values, EMeasure::kOutsideType, "int8"), "5 of 9");
  EXPECT_EQ(Count("numeric", values, EMeasure::kOutsideType, "int64"), "5 of 9");
  EXPECT_EQ(Count("text", {"'1.0'", "'1.5'", "'1e2'", "'1e3'", "''"}, EMeasure::kOutsideType, "int8"), "2 of 5");
}

TEST_P(MeasureTest, Int64EndsAtItsLastNumber) {
  EXPECT_EQ(Count("double precision", {"9223372036854775808", "-9223372036854774784", "9223372036854774784"},
                  EMeasure::kOutsideType, "int64"),
            "1 of 3");
}

TEST_P(MeasureTest, Float64HoldsWholeNumbersOf53Digits) {
  const std::vector<std::string> values = {"9007199254740992",
                                           "9007199254740993",
                                           "-9007199254740993",
                                           "1152921504606846976",
                                           "9223372036854775807",
                                           "-9223372036854775808",
                                           "9223372036854774784",
                                           "0",
                                           "NULL"};
  EXPECT_EQ(Count("bigint", values, EMeasure::kOutsideType, "float64"), "3 of 9");
  EXPECT_EQ(Count("text", {"'9007199254740992'", "'9007199254740993'", "'-9223372036854775808'"},
                  EMeasure::kOutsideType, "float64"),
            "1 of 3");
}

TEST_P(MeasureTest, Float64HoldsWhatFloatingPointColumnsHold) {
  for (const std::string type : {"double precision", "real"}) {
    EXPECT_EQ(Count(type, {"0.1", "-0.1", "1.5", "16777217", "NULL"}, EMeasure::kOutsideType, "float64"), "0 of 5")
        << type;
  }
}

TEST_P(MeasureTest, Float32HoldsWholeNumbersOf24Digits) {
  const std::vector<std::string> values = {"16777216",
                                           "16777217",
                                           "-16777217",
                                           "16777218",
                                           "9007199254740993",
                                           "9007199254740992",
                                           "9223372036854775807",
                                           "-9223372036854775808",
                                           "0",
                                           "NULL"};
  EXPECT_EQ(Count("bigint", values, EMeasure::kOutsideType, "float32"), "4 of 10");
}

TEST_P(MeasureTest, Float32HoldsFractionsOfItsDigits) {
  const std::vector<std::string> values = {"0.5",    "0.1",     "1.25",  "-0.1", "3.4e38",
                                           "3.5e38", "-3.5e38", "1e-45", "0",    "NULL"};
  // 3.4e38 is no number of 24 binary digits.
  EXPECT_EQ(Count("double precision", values, EMeasure::kOutsideType, "float32"), "6 of 10");
}

TEST_P(MeasureTest, Float32EndsAtTheLeastNumberOfAllItsDigits) {
  // The 126th and the 127th power of a half.
  EXPECT_EQ(Count("double precision", {"1.1754943508222875e-38", "5.877471754111438e-39", "-5.877471754111438e-39"},
                  EMeasure::kOutsideType, "float32"),
            "2 of 3");
}

TEST_P(MeasureTest, NotNullCountsValues) {
  EXPECT_EQ(Count("text", {"'a'", "''", "NULL", "'0'"}, EMeasure::kNotNull, ""), "3 of 4");
}

TEST_P(MeasureTest, NotNullOfSeveralColumnsCountsRows) {
  test::CStoredDatabase database(GetParam());
  database.Query("CREATE TABLE \"T\" (\"A\" text, \"B\" text)");
  database.Query("INSERT INTO \"T\" VALUES ('1', 'x'), (NULL, 'x'), ('1', NULL), (NULL, NULL)");
  const metareview::SLookup lookup = {0, "p", "r", "T", {"A", "B"}, EMeasure::kNotNull, ""};
  const auto rows = database.Query(TableQueries(database.Dialect(), {lookup}).front().query);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_THAT(rows.front(), testing::ElementsAre("p", "r", "3", "4"));
}

TEST_P(MeasureTest, NotNullTakesAsManyColumnsAsATableHas) {
  test::CStoredDatabase database(GetParam());
  constexpr int kColumns = 1500;
  metareview::SLookup lookup = {0, "p", "r", "T", {}, EMeasure::kNotNull, ""};
  std::string columns;
  for (int i = 0; i < kColumns; ++i) {
    lookup.columns.push_back("C" + std::to_string(i));
    columns.append(i == 0 ? "\"" : ", \"").append(lookup.columns.back()).append("\" text");
  }
  database.Query("CREATE TABLE \"T\" (" + columns + ")");
  for (const std::string column : {"C0", "C499", "C500", "C1499"}) {
    database.Query("INSERT INTO \"T\" (\"" + column + "\") VALUES ('1')");
  }
  database.Query("INSERT INTO \"T\" (\"C0\") VALUES (NULL)");
  const auto rows = database.Query(TableQueries(database.Dialect(), {lookup}).front().query);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_THAT(rows.front(), testing::ElementsAre("p", "r", "4", "5"));
}

TEST_P(MeasureTest, AnyRowCountsRows) {
  EXPECT_EQ(Count("text", {"NULL", "'a'"}, EMeasure::kAnyRow, ""), "2 of 2");
  EXPECT_EQ(Count("text", {}, EMeasure::kAnyRow, ""), "0 of 0");
}

class SqliteMeasureTest : public MeasureTest {};

INSTANTIATE_TEST_SUITE_P(Sqlite, SqliteMeasureTest, testing::Values(EStorage::kSqlite));

// What a column of SQLite holds does not depend on its type.
TEST_P(SqliteMeasureTest, EachValueIsTakenForWhatItIs) {
  EXPECT_EQ(Count("", {"'99'", "'101'", "101", "101.5", "NULL", "''", "9e999", "-9e999"}, EMeasure::kAbove, "100"),
            "4 of 8");
  EXPECT_EQ(Count("integer", {"x'31'", "1"}, EMeasure::kAbove, "100"), "not counted");
  EXPECT_EQ(Count("integer", {"'abc'", "1"}, EMeasure::kAbove, "100"), "not counted");
  EXPECT_EQ(Count("text", {"x'616263'", "x'61626364'", "1234"}, EMeasure::kLongerThan, "3"), "2 of 3");
}

TEST_P(SqliteMeasureTest, TextsWithANulCharacterAreNotCutOff) {
  EXPECT_EQ(Count("text", {"'a' || char(0) || 'bcd'", "'a' || char(0) || 'b'"}, EMeasure::kLongerThan, "3"), "1 of 2");
}

class PostgresqlMeasureTest : public MeasureTest {};

INSTANTIATE_TEST_SUITE_P(Postgresql, PostgresqlMeasureTest, testing::Values(EStorage::kPostgresql));

TEST_P(PostgresqlMeasureTest, InfinityIsBeyondEveryLimit) {
  const std::vector<std::string> values = {"'Infinity'", "'-Infinity'", "'NaN'", "1"};
  EXPECT_EQ(Count("double precision", values, EMeasure::kAbove, "100"), "2 of 4");
  EXPECT_EQ(Count("double precision", values, EMeasure::kBelow, "-100"), "1 of 4");
  EXPECT_EQ(Count("double precision", values, EMeasure::kOutsideType, "int8"), "3 of 4");
  EXPECT_EQ(Count("double precision", values, EMeasure::kRounded, "2"), "0 of 4");
}

TEST_P(PostgresqlMeasureTest, AColumnOfFloat64HoldsWhatFloat64Can) {
  test::CStoredDatabase database(GetParam());
  database.MakeTable("double precision", {"1e300", "-1e300", "NULL"});
  database.Disconnect();
  const metareview::SLookup lookup = {0, "p", "r", "T", {"V"}, EMeasure::kOutsideType, "float64"};
  EXPECT_EQ(CountLive(database.Location(), lookup), "0 of 3");
}

TEST_P(PostgresqlMeasureTest, DecimalsAreExact) {
  EXPECT_EQ(Count("numeric", {"0.1000000000000000000000001", "0.1", "100.0000000000000000000000001"}, EMeasure::kAbove,
                  "100"),
            "1 of 3");
  EXPECT_EQ(Count("numeric", {"0.1000000000000000000000001", "0.1"}, EMeasure::kRounded, "24"), "1 of 2");
}

}  // namespace
