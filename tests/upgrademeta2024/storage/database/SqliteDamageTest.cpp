// Damaged database files: rows that are lost are noticed, whatever page has lost them. Each test runs on a database
// that keeps the numbers of its rows, and on one that does not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <soci/soci.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/MetaMaker.h"
#include "support/MetaText.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/storage/LargeMetamodel.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {
namespace {

using testing::HasSubstr;

constexpr std::size_t kPageSize = 8192;
// Two bytes, the higher one first.
constexpr std::size_t kCellCount = 3;

enum class ECounts { kStored, kAbsent };

class SqliteDamageTest : public testing::TestWithParam<ECounts> {
 protected:
  SqliteDamageTest() { Save(*sample_); }

  void Save(const CMetaDictionary2024& dictionary) {
    OpenMetaStorage(storage_.Location())->Save(dictionary);
    if (GetParam() == ECounts::kAbsent) {
      storage_.Execute({"CREATE TABLE head AS SELECT generation, 1 AS schema_version FROM metamodel",
                        "DROP TABLE metamodel", "ALTER TABLE head RENAME TO metamodel"});
    }
    file_ = ReadFile(storage_.File());
  }

  /// What keeps the numbers of rows right where they are stored.
  std::string CountRows(const std::string& table) const {
    return GetParam() == ECounts::kAbsent
               ? "SELECT 0"
               : "UPDATE metamodel SET " + table + "_rows = (SELECT count(*) FROM " + table + ")";
  }

  void Write(const std::string& file) const { storage_.Directory().Write("metamodel.db", file); }
  SError LoadError() const {
    return ErrorOf([&] { OpenMetaStorage(storage_.Location())->Load(); });
  }
  std::string Loaded() const { return TextOf(*OpenMetaStorage(storage_.Location())->Load()); }

  /// Whether the file is refused as damaged. Unless it is refused at all, it must hold the same metamodel.
  bool IsDamaged() const {
    const SError error = LoadError();
    if (error.code != kvx::kMalformedDocument) {
      EXPECT_EQ(Loaded(), TextOf(*sample_));
    }
    return error.message.find(": the database is damaged") != std::string::npos;
  }

  bool IsLeaf(std::size_t page) const { return file_[page] == '\x0A' || file_[page] == '\x0D'; }

  unsigned CellCount(std::size_t page) const {
    return 256U * static_cast<unsigned char>(file_[page + kCellCount]) +
           static_cast<unsigned char>(file_[page + kCellCount + 1]);
  }
  void SetCellCount(std::size_t page, unsigned count) {
    file_[page + kCellCount] = static_cast<char>(count / 256);
    file_[page + kCellCount + 1] = static_cast<char>(count % 256);
  }

  /// The first page of each table, by its number from 1.
  std::size_t RootOf(const std::string& name) const {
    return static_cast<std::size_t>(
        std::stoul(storage_.Query("SELECT rootpage FROM sqlite_master WHERE name = '" + name + "'")));
  }

  /// Takes the last row from each leaf that has one. Answers how many such files are found damaged: with the numbers of
  /// rows at hand, indexes that nobody reads may be.
  int DamagedWithoutARow() {
    EXPECT_EQ(Loaded(), TextOf(*sample_));
    file_ = ReadFile(storage_.File());
    int damaged = 0;
    // The first page holds the list of tables.
    for (std::size_t page = kPageSize; page < file_.size(); page += kPageSize) {
      if (IsLeaf(page) && CellCount(page) > 0) {
        const std::string sound = file_;
        SetCellCount(page, CellCount(page) - 1);
        Write(file_);
        damaged += IsDamaged() ? 1 : 0;
        file_ = sound;
      }
    }
    return damaged;
  }

  CTestStorage storage_{EStorage::kSqlite};
  std::shared_ptr<CMetaDictionary2024> sample_ = LargeMetamodel(6);
  std::string file_;
};

TEST_P(SqliteDamageTest, TruncatedAnywhere) {
  for (std::size_t size = 1; size < file_.size(); size += file_.size() / 97) {
    Write(file_.substr(0, size));
    const SError error = LoadError();
    EXPECT_EQ(error.code, kvx::kMalformedDocument) << size << " bytes: " << error.message;
    EXPECT_EQ(error.message.find('\n'), std::string::npos);
  }
}

TEST_P(SqliteDamageTest, PageThatHasLostARowIsNoticed) {
  EXPECT_GE(DamagedWithoutARow(), 12);
}

TEST_P(SqliteDamageTest, PageThatHasLostARowIsNoticedInATableWithoutIndex) {
  storage_.Execute({"DROP INDEX meta_class_properties_name", "DROP INDEX meta_classes_name",
                    "DROP INDEX meta_behaviors_name", "DROP INDEX meta_methods_name", "VACUUM"});
  EXPECT_GE(DamagedWithoutARow(), 10);
}

TEST_P(SqliteDamageTest, PageThatHasLostARowIsNoticedWhereAnIndexGivesTheOrder) {
  // Entries that this index has lost are rows that nobody sees, whatever it is counted against.
  storage_.Execute({"CREATE TABLE loose AS SELECT * FROM meta_class_properties", "DROP TABLE meta_class_properties",
                    "ALTER TABLE loose RENAME TO meta_class_properties",
                    "CREATE INDEX place ON meta_class_properties (class_ordinal, ordinal)", "VACUUM"});
  EXPECT_GE(DamagedWithoutARow(), 10);
}

TEST_P(SqliteDamageTest, PageInPlaceOfItsNeighbourIsNoticed) {
  int damaged = 0;
  for (std::size_t page = kPageSize; page + kPageSize < file_.size(); page += kPageSize) {
    const std::size_t next = page + kPageSize;
    if (IsLeaf(page) && IsLeaf(next)) {
      std::string file = file_;
      Write(file.replace(page, kPageSize, file_, next, kPageSize));
      damaged += IsDamaged() ? 1 : 0;
    }
  }
  EXPECT_GE(damaged, 10);
}

TEST_P(SqliteDamageTest, PagesThatHaveChangedPlacesAreNoticed) {
  int damaged = 0;
  for (std::size_t page = kPageSize; page + kPageSize < file_.size(); page += kPageSize) {
    const std::size_t next = page + kPageSize;
    if (IsLeaf(page) && IsLeaf(next)) {
      std::string file = file_;
      Write(file.replace(page, kPageSize, file_, next, kPageSize).replace(next, kPageSize, file_, page, kPageSize));
      damaged += IsDamaged() ? 1 : 0;
    }
  }
  EXPECT_GE(damaged, 10);
}

TEST_P(SqliteDamageTest, PageThatIsItsOwnChildIsNoticed) {
  // The pointer to the last child is in the header of a page that has children.
  constexpr std::size_t kLastChild = 8;
  const std::size_t root = RootOf("meta_class_properties");
  const std::size_t page = (root - 1) * kPageSize;
  ASSERT_FALSE(IsLeaf(page));
  ASSERT_LT(root, 256U);
  file_.replace(page + kLastChild, 4, std::string(3, '\0') + static_cast<char>(root));
  Write(file_);
  EXPECT_TRUE(IsDamaged());
}

TEST_P(SqliteDamageTest, VirtualTableIsReadAndPageThatHasLostARowNoticed) {
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO loose",
                    "CREATE VIRTUAL TABLE meta_methods USING fts5(behavior_ordinal, ordinal, internal_name, "
                    "display_name)",
                    "INSERT INTO meta_methods SELECT * FROM loose"});
  EXPECT_GE(DamagedWithoutARow(), 12);
}

TEST_P(SqliteDamageTest, PageOfAnEarlierTimeIsNoticed) {
  // The table in which the methods lie, and what changes the database before.
  const std::vector<std::pair<std::string, std::vector<std::string>>> schemas = {
      {"meta_methods", {}},
      {"all_methods",
       {"ALTER TABLE meta_methods RENAME TO all_methods", "CREATE VIEW meta_methods AS SELECT * FROM all_methods"}},
      // An index gives the order.
      {"meta_methods",
       {"ALTER TABLE meta_methods RENAME TO loose",
        "CREATE TABLE meta_methods (behavior_ordinal INTEGER, ordinal INTEGER, internal_name TEXT, display_name TEXT, "
        "PRIMARY KEY (behavior_ordinal, ordinal))",
        "INSERT INTO meta_methods SELECT * FROM loose"}}};
  for (const auto& [table, schema] : schemas) {
    Write(file_);
    storage_.Execute(schema);
    const std::string before = ReadFile(storage_.File());
    storage_.Execute({"INSERT INTO " + table + " VALUES (0, 1, 'Later', '')", CountRows("meta_methods")});
    const std::string after = ReadFile(storage_.File());
    const std::string loaded = Loaded();
    ASSERT_EQ(before.size(), after.size());
    int damaged = 0;
    for (std::size_t page = kPageSize; page < after.size(); page += kPageSize) {
      if (before.compare(page, kPageSize, after, page, kPageSize) != 0) {
        Write(std::string(after).replace(page, kPageSize, before, page, kPageSize));
        const SError error = LoadError();
        if (error.code != kvx::kMalformedDocument) {
          EXPECT_EQ(Loaded(), loaded) << table << ", byte " << page;
        } else {
          EXPECT_THAT(error.message, HasSubstr(": the database is damaged")) << table << ", byte " << page;
          ++damaged;
        }
      }
    }
    EXPECT_GE(damaged, 2) << table << ": the table and an index or the numbers of rows";
    EXPECT_THAT(loaded, HasSubstr("Later"));
  }
}

TEST_P(SqliteDamageTest, PageThatHasLostARowIsNoticedUnderAView) {
  storage_.Execute({"ALTER TABLE meta_class_properties RENAME TO all_properties",
                    "CREATE VIEW meta_class_properties AS SELECT * FROM all_properties",
                    "ALTER TABLE metamodel RENAME TO head", "CREATE VIEW metamodel AS SELECT * FROM head"});
  EXPECT_GE(DamagedWithoutARow(), 12);
}

TEST_P(SqliteDamageTest, PageThatHasLostARowIsNoticedInAViewOfTwoTables) {
  // An index of the first counts what the second has lost as little as reading both shows it.
  storage_.Execute(
      {"CREATE TABLE labels (behavior_ordinal INTEGER, ordinal INTEGER, display_name TEXT, PRIMARY KEY "
       "(behavior_ordinal, ordinal)) WITHOUT ROWID",
       "INSERT INTO labels SELECT behavior_ordinal, ordinal, display_name FROM meta_methods",
       "ALTER TABLE meta_methods RENAME TO names",
       "CREATE VIEW meta_methods AS SELECT names.behavior_ordinal, names.ordinal, names.internal_name, "
       "labels.display_name FROM names CROSS JOIN labels USING (behavior_ordinal, ordinal)"});
  EXPECT_GE(DamagedWithoutARow(), 12);
}

TEST_P(SqliteDamageTest, PageThatHasLostARowIsNoticedWhereSeveralIndexesHoldAllColumns) {
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO loose",
                    "CREATE TABLE meta_methods (behavior_ordinal INTEGER, ordinal, internal_name TEXT, display_name AS "
                    "(label || '') VIRTUAL, a INTEGER, b INTEGER, c INTEGER, d, label TEXT)",
                    "INSERT INTO meta_methods (behavior_ordinal, ordinal, internal_name, label) SELECT * FROM loose",
                    "DROP TABLE loose",
                    "CREATE INDEX short ON meta_methods (behavior_ordinal, ordinal, internal_name, display_name DESC)",
                    "CREATE INDEX long ON meta_methods (behavior_ordinal, ordinal, d DESC, display_name, internal_name "
                    "DESC, a, b DESC, c DESC)"});
  EXPECT_GE(DamagedWithoutARow(), 12);
}

/// Damage to a table that has no second index, and whose first page points to several leaves.
class SqliteRootDamageTest : public SqliteDamageTest {
 protected:
  SqliteRootDamageTest() {
    std::vector<std::string> behaviors(4800, "Behavior");
    dictionary_.AddClass(MakeClass({"Class", behaviors, {}}));
    Save(dictionary_);
  }

  std::size_t Root() const { return (RootOf("meta_class_behaviors") - 1) * kPageSize; }

  CMetaDictionary2024 dictionary_;
};

TEST_P(SqliteRootDamageTest, LeafInPlaceOfTheRootIsNoticed) {
  const std::size_t root = Root();
  ASSERT_FALSE(IsLeaf(root));
  int leaves = 0;
  for (std::size_t page = kPageSize; page < file_.size(); page += kPageSize) {
    if (IsLeaf(page) && CellCount(page) > 100) {
      ++leaves;
      Write(std::string(file_).replace(root, kPageSize, file_, page, kPageSize));
      EXPECT_THAT(LoadError().message, HasSubstr(": the database is damaged")) << "byte " << page;
    }
  }
  EXPECT_GE(leaves, 5);
}

TEST_P(SqliteRootDamageTest, RootOfAnEarlierTimeIsNoticed) {
  const std::size_t root = Root();
  storage_.Execute(
      {"WITH RECURSIVE more(ordinal) AS (SELECT 4800 UNION ALL SELECT ordinal + 1 FROM more LIMIT 2000) "
       "INSERT INTO meta_class_behaviors SELECT 0, ordinal, 'Later' FROM more",
       CountRows("meta_class_behaviors")});
  const std::string later = ReadFile(storage_.File());
  ASSERT_THAT(Loaded(), HasSubstr("Later"));
  ASSERT_NE(later.substr(root, kPageSize), file_.substr(root, kPageSize));
  Write(std::string(later).replace(root, kPageSize, file_, root, kPageSize));
  EXPECT_THAT(LoadError().message, HasSubstr(": the database is damaged"));
}

template <typename Info>
std::string CountsName(const Info& info) {
  return info.param == ECounts::kStored ? "WithCounts" : "WithoutCounts";
}

const auto kBoth = testing::Values(ECounts::kStored, ECounts::kAbsent);

INSTANTIATE_TEST_SUITE_P(, SqliteRootDamageTest, kBoth, CountsName<testing::TestParamInfo<ECounts>>);
INSTANTIATE_TEST_SUITE_P(, SqliteDamageTest, kBoth, CountsName<testing::TestParamInfo<ECounts>>);

}  // namespace
}  // namespace test
