#include <gmock/gmock.h>

#include "metareview2024/data/CountFixture.h"
#include "metareview2024/data/Sql.h"

using metareview::SCount;
using metareview::SLookup;
using test::AnyRow;
using test::Count;
using test::EStorage;
using test::Longer;
using test::Texts;
using testing::ElementsAre;

namespace {

class CountStoredTest : public test::CCountFixture {};

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
      metareview::CountStored(database_.Location(), {{}, {3}, {{5, "no column"}}}, test::kCountLimit).counts;
  EXPECT_THAT(Texts(counts), ElementsAre("3: 0 of 0 in", "5: 0 of 0 in; no column"));
}

TEST_P(CountStoredTest, AViewServesLikeATable) {
  MakeTable("T_A", 2);
  database_.Query("CREATE VIEW \"T_VIEW\" AS SELECT \"V\" FROM \"T_A\" UNION ALL SELECT 'x'");
  EXPECT_THAT(CountHere({Longer(0, "T_VIEW", "V")}), ElementsAre("0: 2 of 3 in T_VIEW"));
}

TEST_P(CountStoredTest, TheObserverIsToldOfEachTable) {
  MakeTable("T_A", 1);
  MakeTable("T_B", 1);
  database_.Disconnect();
  std::vector<std::string> told;
  const auto observer = [&told](const metareview::SCountProgress& progress) {
    told.push_back(progress.table + " " + std::to_string(progress.done) + "/" + std::to_string(progress.total));
  };
  Count(database_.Location(), {AnyRow(0, "T_A"), AnyRow(1, "T_B"), Longer(2, "T_A", "V")}, test::kCountLimit, observer);
  ASSERT_GE(told.size(), 2U);
  EXPECT_EQ(told[0], "T_A 0/2");
  EXPECT_EQ(told[1], "T_B 1/2");
}

TEST_P(CountStoredTest, MoreCountsThanADatabaseTakesAreSeveralQueries) {
  MakeTable("T_A", 1);
  database_.Disconnect();
  std::vector<SLookup> lookups;
  for (std::size_t i = 0; i <= metareview::kMostCounts; ++i) {
    lookups.push_back(AnyRow(i, "T_A"));
  }
  const std::vector<std::string> texts = Count(database_.Location(), lookups);
  ASSERT_EQ(texts.size(), lookups.size());
  EXPECT_EQ(texts.front(), "0: 1 of 1 in T_A");
  EXPECT_EQ(texts.back(), "1000: 1 of 1 in T_A");
}

TEST_P(CountStoredTest, TheObserverIsToldOfTheTableThatIsStillRead) {
  database_.Query(
      "CREATE VIEW \"T_ENDLESS\" AS WITH RECURSIVE endless(\"V\") AS (SELECT 1 UNION ALL SELECT 1 FROM endless) SELECT "
      "\"V\" FROM endless");
  MakeTable("T_A", 1);
  database_.Disconnect();
  std::vector<std::string> told;
  const auto observer = [&told](const metareview::SCountProgress& progress) { told.push_back(progress.table); };
  Count(database_.Location(), {AnyRow(0, "T_ENDLESS"), AnyRow(1, "T_A")}, std::chrono::seconds(1), observer);
  EXPECT_THAT(told, ElementsAre("T_ENDLESS", "T_A", "T_ENDLESS"));
}

class SqliteCountStoredTest : public test::CCountFixture {};

INSTANTIATE_TEST_SUITE_P(Sqlite, SqliteCountStoredTest, testing::Values(EStorage::kSqlite));

TEST_P(SqliteCountStoredTest, AColumnThatIsGeneratedIsFound) {
  database_.Query("CREATE TABLE \"T\" (a text, \"V\" text GENERATED ALWAYS AS (a || 'cd') VIRTUAL)");
  database_.Query("INSERT INTO \"T\" (a) VALUES ('ab'), ('a')");
  EXPECT_THAT(CountHere({Longer(0, "T", "V")}), ElementsAre("0: 1 of 2 in T"));
}

}  // namespace
