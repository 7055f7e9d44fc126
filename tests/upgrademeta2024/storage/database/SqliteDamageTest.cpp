// Damaged database files, and tables that another program has made.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <soci/soci.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
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

class SqliteDamageTest : public testing::Test {
 protected:
  SqliteDamageTest() {
    OpenMetaStorage(storage_.Location())->Save(*sample_);
    file_ = ReadFile(storage_.File());
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

  /// Takes the last row from each leaf that has one. Answers how many such files are found damaged.
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

TEST_F(SqliteDamageTest, TruncatedAnywhere) {
  for (std::size_t size = 1; size < file_.size(); size += file_.size() / 97) {
    Write(file_.substr(0, size));
    const SError error = LoadError();
    EXPECT_EQ(error.code, kvx::kMalformedDocument) << size << " bytes: " << error.message;
    EXPECT_EQ(error.message.find('\n'), std::string::npos);
  }
}

TEST_F(SqliteDamageTest, PageThatHasLostARowIsNoticed) {
  EXPECT_GE(DamagedWithoutARow(), 15);
}

TEST_F(SqliteDamageTest, PageThatHasLostARowIsNoticedInATableWithoutIndex) {
  storage_.Execute({"DROP INDEX meta_class_properties_name", "DROP INDEX meta_classes_name",
                    "DROP INDEX meta_behaviors_name", "DROP INDEX meta_methods_name", "VACUUM"});
  EXPECT_GE(DamagedWithoutARow(), 10);
}

TEST_F(SqliteDamageTest, PageThatHasLostARowIsNoticedWhereAnIndexGivesTheOrder) {
  // Entries that this index has lost are rows that nobody sees, whatever it is counted against.
  storage_.Execute({"CREATE TABLE loose AS SELECT * FROM meta_class_properties", "DROP TABLE meta_class_properties",
                    "ALTER TABLE loose RENAME TO meta_class_properties",
                    "CREATE INDEX place ON meta_class_properties (class_ordinal, ordinal)", "VACUUM"});
  EXPECT_GE(DamagedWithoutARow(), 10);
}

TEST_F(SqliteDamageTest, PageInPlaceOfItsNeighbourIsNoticed) {
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

TEST_F(SqliteDamageTest, PagesThatHaveChangedPlacesAreNoticed) {
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

TEST_F(SqliteDamageTest, PageThatIsItsOwnChildIsNoticed) {
  // The pointer to the last child stands in the header of a page that has children.
  constexpr std::size_t kLastChild = 8;
  const std::size_t root = RootOf("meta_class_properties");
  const std::size_t page = (root - 1) * kPageSize;
  ASSERT_FALSE(IsLeaf(page));
  ASSERT_LT(root, 256U);
  file_.replace(page + kLastChild, 4, std::string(3, '\0') + static_cast<char>(root));
  Write(file_);
  EXPECT_TRUE(IsDamaged());
}

TEST_F(SqliteDamageTest, RowsAreReadInOrderFromATableWithoutKey) {
  storage_.Execute({"CREATE TABLE loose AS SELECT * FROM meta_class_properties ORDER BY ordinal DESC, class_ordinal",
                    "DROP TABLE meta_class_properties", "ALTER TABLE loose RENAME TO meta_class_properties"});
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteDamageTest, NumberIsNoRealAndNoTextWithMore) {
  for (const auto& [value, shown] : {std::pair("1.5", "1.5"),
                                     {"1e300", "1.0e+300"},
                                     {"'12 '", "12 "},
                                     {"'0x10'", "0x10"},
                                     {"' 7'", " 7"},
                                     {"-1", "-1"},
                                     {"''", "an empty text"}}) {
    storage_.Execute(
        {"CREATE TABLE loose AS SELECT * FROM meta_class_properties", "DROP TABLE meta_class_properties",
         "CREATE TABLE meta_class_properties AS SELECT class_ordinal, ordinal, internal_name, "
         "display_name, field, type, CASE WHEN ordinal = 5 THEN " +
             std::string(value) +
             " ELSE length END AS length, default_value, precision, max, min, lookup_internal_name FROM loose",
         "DROP TABLE loose"});
    EXPECT_THAT(
        LoadError().message,
        HasSubstr("row class_ordinal 0, ordinal 5: length: expected a whole number from 0 to 4294967295, found " +
                  std::string(shown) + "; correct the row"))
        << value;
  }
}

TEST_F(SqliteDamageTest, NumberInPlaceOfATextIsItsDigits) {
  storage_.Execute({"ALTER TABLE meta_behaviors DROP COLUMN display_name",
                    "ALTER TABLE meta_behaviors ADD COLUMN display_name",
                    "UPDATE meta_behaviors SET display_name = 42"});
  EXPECT_THAT(Loaded(), HasSubstr("behavior \"Last\" \"42\""));
}

TEST_F(SqliteDamageTest, EveryByteOfATextIsChecked) {
  constexpr std::size_t kLongest = 18;
  for (std::size_t size = 1; size <= kLongest; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      for (const auto& [byte, fault] :
           {std::pair("00", "the text holds a NUL character"), {"80", "the text is not valid UTF-8"}}) {
        std::string hexadecimal;
        for (std::size_t i = 0; i < size; ++i) {
          hexadecimal += i == at ? byte : "7F";
        }
        storage_.Execute({"UPDATE meta_behaviors SET display_name = CAST(X'" + hexadecimal + "' AS TEXT)"});
        EXPECT_THAT(LoadError().message,
                    HasSubstr("row ordinal 0: display_name: " + std::string(fault) + "; correct the row"))
            << hexadecimal;
      }
    }
  }
  storage_.Execute({"UPDATE meta_behaviors SET display_name = ''"});
  EXPECT_THAT(Loaded(), HasSubstr("behavior \"Last\" \"\""));
}

TEST_F(SqliteDamageTest, EveryTextOfAPropertyIsChecked) {
  const std::string row = " WHERE class_ordinal = 2 AND ordinal = 5";
  for (const std::string column :
       {"internal_name", "display_name", "field", "type", "default_value", "max", "min", "lookup_internal_name"}) {
    for (const auto& [text, fault] :
         {std::pair("X'6100'", "the text holds a NUL character"), {"X'61C3'", "the text is not valid UTF-8"}}) {
      Write(file_);
      storage_.Execute({"UPDATE meta_class_properties SET " + column + " = CAST(" + text + " AS TEXT)" + row});
      EXPECT_THAT(LoadError().message, HasSubstr("row class_ordinal 2, ordinal 5: " + column + ": " + fault)) << text;
    }
    Write(file_);
    storage_.Execute({"UPDATE meta_class_properties SET " + column + " = 'h\u00F6her'" + row});
    EXPECT_THAT(Loaded(), HasSubstr("h\u00F6her")) << column;
  }
  // Together the two would be one character.
  Write(file_);
  storage_.Execute(
      {"UPDATE meta_class_properties SET display_name = CAST(X'C3' AS TEXT), field = CAST(X'B6' AS TEXT)" + row});
  EXPECT_THAT(LoadError().message, HasSubstr("row class_ordinal 2, ordinal 5: display_name: the text is not valid"));
  Write(file_);
  storage_.Execute(
      {"PRAGMA ignore_check_constraints = ON", "UPDATE meta_class_properties SET internal_name = ''" + row});
  EXPECT_THAT(LoadError().message, HasSubstr("row class_ordinal 2, ordinal 5: internal_name: the name is empty"));
}

TEST_F(SqliteDamageTest, ViewIsReadAsATable) {
  storage_.Execute(
      {"ALTER TABLE meta_classes RENAME TO all_classes", "CREATE VIEW meta_classes AS SELECT * FROM all_classes"});
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteDamageTest, ViewOfSeveralTablesIsReadInOrder) {
  const std::string schema = storage_.Query("SELECT sql FROM sqlite_master WHERE name = 'meta_class_properties'");
  const std::string table = "CREATE TABLE meta_class_properties";
  ASSERT_EQ(schema.rfind(table, 0), 0U);
  storage_.Execute(
      {"ALTER TABLE meta_class_properties RENAME TO even", "CREATE TABLE odd" + schema.substr(table.size()),
       "INSERT INTO odd SELECT * FROM even WHERE ordinal % 2 = 1", "DELETE FROM even WHERE ordinal % 2 = 1",
       "CREATE VIEW meta_class_properties AS SELECT * FROM odd UNION ALL SELECT * FROM even"});
  EXPECT_EQ(Loaded(), TextOf(*sample_));
  // Columns without types keep SQLite from merging.
  storage_.Execute(
      {"CREATE TABLE untyped AS SELECT class_ordinal + 0 AS class_ordinal, ordinal + 0 AS ordinal, "
       "internal_name || '' AS internal_name, display_name || '' AS display_name, field || '' AS field, "
       "type || '' AS type, length + 0 AS length, default_value || '' AS default_value, precision + 0 AS "
       "precision, max || '' AS max, min || '' AS min, lookup_internal_name || '' AS lookup_internal_name "
       "FROM odd",
       "DROP VIEW meta_class_properties",
       "CREATE VIEW meta_class_properties AS SELECT * FROM untyped UNION ALL SELECT * FROM even"});
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteDamageTest, VirtualTableIsReadAndPageThatHasLostARowNoticed) {
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO loose",
                    "CREATE VIRTUAL TABLE meta_methods USING fts5(behavior_ordinal, ordinal, internal_name, "
                    "display_name)",
                    "INSERT INTO meta_methods SELECT * FROM loose"});
  EXPECT_GE(DamagedWithoutARow(), 15);
}

TEST_F(SqliteDamageTest, PageOfAnEarlierTimeIsNoticed) {
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
    storage_.Execute({"INSERT INTO " + table + " VALUES (0, 1, 'Later', '')"});
    const std::string after = ReadFile(storage_.File());
    const std::string loaded = Loaded();
    ASSERT_EQ(before.size(), after.size());
    int pages = 0;
    for (std::size_t page = kPageSize; page < after.size(); page += kPageSize) {
      if (before.compare(page, kPageSize, after, page, kPageSize) != 0) {
        ++pages;
        Write(std::string(after).replace(page, kPageSize, before, page, kPageSize));
        EXPECT_THAT(LoadError().message, HasSubstr(": the database is damaged")) << table << ", byte " << page;
      }
    }
    EXPECT_GE(pages, 2) << "the table and an index";
    EXPECT_THAT(loaded, HasSubstr("Later"));
  }
}

TEST_F(SqliteDamageTest, RowsThatAViewLeavesOutAreNotRead) {
  // The index has all that is read of a row, but not what the view asks for.
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO loose",
                    "CREATE TABLE all_methods (behavior_ordinal INTEGER NOT NULL, ordinal INTEGER NOT NULL, "
                    "internal_name TEXT NOT NULL, display_name TEXT NOT NULL, valid INTEGER NOT NULL, "
                    "UNIQUE (behavior_ordinal, ordinal, internal_name, display_name))",
                    "INSERT INTO all_methods SELECT *, 1 FROM loose",
                    "INSERT INTO all_methods VALUES (0, 1000, 'Withdrawn', '', 0)",
                    "CREATE VIEW meta_methods AS SELECT behavior_ordinal, ordinal, internal_name, display_name "
                    "FROM all_methods WHERE valid = 1"});
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteDamageTest, PageThatHasLostARowIsNoticedUnderAView) {
  storage_.Execute({"ALTER TABLE meta_class_properties RENAME TO all_properties",
                    "CREATE VIEW meta_class_properties AS SELECT * FROM all_properties",
                    "ALTER TABLE metamodel RENAME TO head", "CREATE VIEW metamodel AS SELECT * FROM head"});
  EXPECT_GE(DamagedWithoutARow(), 15);
}

TEST_F(SqliteDamageTest, PageThatHasLostARowIsNoticedInAViewOfTwoTables) {
  // An index of the first counts what the second has lost as little as reading both shows it.
  storage_.Execute(
      {"CREATE TABLE labels (behavior_ordinal INTEGER, ordinal INTEGER, display_name TEXT, PRIMARY KEY "
       "(behavior_ordinal, ordinal)) WITHOUT ROWID",
       "INSERT INTO labels SELECT behavior_ordinal, ordinal, display_name FROM meta_methods",
       "ALTER TABLE meta_methods RENAME TO names",
       "CREATE VIEW meta_methods AS SELECT names.behavior_ordinal, names.ordinal, names.internal_name, "
       "labels.display_name FROM names CROSS JOIN labels USING (behavior_ordinal, ordinal)"});
  EXPECT_GE(DamagedWithoutARow(), 15);
}

TEST_F(SqliteDamageTest, PageThatHasLostARowIsNoticedWhereSeveralIndexesHoldAllColumns) {
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO loose",
                    "CREATE TABLE meta_methods (behavior_ordinal INTEGER, ordinal, internal_name TEXT, display_name AS "
                    "(label || '') VIRTUAL, a INTEGER, b INTEGER, c INTEGER, d, label TEXT)",
                    "INSERT INTO meta_methods (behavior_ordinal, ordinal, internal_name, label) SELECT * FROM loose",
                    "DROP TABLE loose",
                    "CREATE INDEX short ON meta_methods (behavior_ordinal, ordinal, internal_name, display_name DESC)",
                    "CREATE INDEX long ON meta_methods (behavior_ordinal, ordinal, d DESC, display_name, internal_name "
                    "DESC, a, b DESC, c DESC)"});
  EXPECT_GE(DamagedWithoutARow(), 15);
}

}  // namespace
}  // namespace test
