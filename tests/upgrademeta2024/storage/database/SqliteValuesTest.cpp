// Values in SQLite databases that another program has made or filled: tables without constraints or types, views.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <soci/soci.h>

#include <string>
#include <utility>
#include <vector>

#include "support/Error.h"
#include "support/MetaText.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/storage/LargeMetamodel.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {
namespace {

using testing::HasSubstr;

class SqliteValuesTest : public testing::Test {
 protected:
  SqliteValuesTest() {
    OpenMetaStorage(storage_.Location())->Save(*sample_);
    file_ = ReadFile(storage_.File());
  }

  void Write(const std::string& file) const { storage_.Directory().Write("metamodel.db", file); }
  SError LoadError() const {
    return ErrorOf([&] { OpenMetaStorage(storage_.Location())->Load(); });
  }
  std::string Loaded() const { return TextOf(*OpenMetaStorage(storage_.Location())->Load()); }

  CTestStorage storage_{EStorage::kSqlite};
  std::shared_ptr<CMetaDictionary2024> sample_ = LargeMetamodel(6);
  std::string file_;
};

TEST_F(SqliteValuesTest, RowsAreReadInOrderFromATableWithoutKey) {
  storage_.Execute({"CREATE TABLE loose AS SELECT * FROM meta_class_properties ORDER BY ordinal DESC, class_ordinal",
                    "DROP TABLE meta_class_properties", "ALTER TABLE loose RENAME TO meta_class_properties"});
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteValuesTest, NumberIsNoRealAndNoTextWithMore) {
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

TEST_F(SqliteValuesTest, NumberInPlaceOfATextIsItsDigits) {
  storage_.Execute({"ALTER TABLE meta_behaviors DROP COLUMN display_name",
                    "ALTER TABLE meta_behaviors ADD COLUMN display_name",
                    "UPDATE meta_behaviors SET display_name = 42"});
  EXPECT_THAT(Loaded(), HasSubstr("behavior \"Last\" \"42\""));
}

TEST_F(SqliteValuesTest, RealInPlaceOfATextIsRefused) {
  // Both would be shown as 0.3.
  for (const std::string number : {"0.3", "0.30000000000000004", "1e300", "5.0"}) {
    storage_.Execute({"ALTER TABLE meta_behaviors DROP COLUMN display_name",
                      "ALTER TABLE meta_behaviors ADD COLUMN display_name",
                      "UPDATE meta_behaviors SET display_name = " + number});
    EXPECT_THAT(LoadError().message,
                HasSubstr("table meta_behaviors, row ordinal 0: display_name: expected a text, found the floating "
                          "point number "))
        << number;
  }
  EXPECT_THAT(LoadError().message, HasSubstr("number 5.0; correct the row"));
}

TEST_F(SqliteValuesTest, BlobInPlaceOfATextOrNumberIsRefused) {
  for (const std::string blob : {"X'41'", "X''"}) {
    Write(file_);
    storage_.Execute({"UPDATE meta_behaviors SET display_name = " + blob});
    EXPECT_THAT(LoadError().message,
                HasSubstr("table meta_behaviors, row ordinal 0: display_name: expected a text, found a blob; correct"))
        << blob;
  }
  Write(file_);
  storage_.Execute({"ALTER TABLE meta_classes DROP COLUMN class_id", "ALTER TABLE meta_classes ADD COLUMN class_id",
                    "UPDATE meta_classes SET class_id = X'37'"});
  EXPECT_THAT(LoadError().message,
              HasSubstr("row ordinal 0: class_id: expected a whole number from 0 to 4294967295, found a blob"));
}

TEST_F(SqliteValuesTest, EveryByteOfATextIsChecked) {
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

TEST_F(SqliteValuesTest, EveryTextOfAPropertyIsChecked) {
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

TEST_F(SqliteValuesTest, ViewIsReadAsATable) {
  storage_.Execute(
      {"ALTER TABLE meta_classes RENAME TO all_classes", "CREATE VIEW meta_classes AS SELECT * FROM all_classes"});
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(SqliteValuesTest, ViewOfSeveralTablesIsReadInOrder) {
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

TEST_F(SqliteValuesTest, RowsThatAViewLeavesOutAreNotRead) {
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

}  // namespace
}  // namespace test
