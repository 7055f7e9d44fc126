// What a check of a database finds, beyond the fault that loading ends with.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/MetaMaker.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DatabaseCheckTest : public testing::TestWithParam<EStorage> {
 protected:
  DatabaseCheckTest() : storage_(GetParam()) {
    CMetaDictionary2024 dictionary;
    dictionary.AddClass(MakeClass({"Part", {"Versioned"}, {Property("Code"), Property("Name")}}));
    dictionary.AddClass(MakeClass({"Plan", {}, {Property("Code"), Property("Name"), Property("Size")}}));
    dictionary.AddBehavior(MakeBehavior({"Versioned", {"Revise", "Freeze", "Copy"}, {Property("Version")}}));
    OpenMetaStorage(storage_.Location())->Save(dictionary);
    // The same rows without the constraints, as another program may make them.
    for (const std::string table : {"meta_class_behaviors", "meta_class_properties", "meta_methods",
                                    "meta_behavior_properties", "meta_classes", "meta_behaviors"}) {
      storage_.Execute({"CREATE TABLE loose AS SELECT * FROM " + table, "DROP TABLE " + table,
                        "ALTER TABLE loose RENAME TO " + table});
    }
  }

  /// The location and what to do are taken from what is wrong.
  SMetaFaults Check() const {
    SMetaFaults faults = OpenMetaStorage(storage_.Location())->Check();
    for (std::string& words : faults.words) {
      words.erase(0, storage_.Location().size() + 2);
      words.resize(std::min(words.size(), words.rfind("; ")));
    }
    return faults;
  }

  CTestStorage storage_;
};

TEST_P(DatabaseCheckTest, AMetamodelWithoutFaultsHasNone) {
  EXPECT_THAT(Check().words, IsEmpty());
  EXPECT_TRUE(Check().isWhole);
}

TEST_P(DatabaseCheckTest, EveryFaultIsToldWithItsRow) {
  storage_.Execute({
      "UPDATE meta_classes SET display_name = NULL, class_id = -1, internal_name = '' WHERE ordinal = 0",
      "UPDATE meta_class_properties SET length = NULL, precision = 65536 WHERE class_ordinal = 0 AND ordinal = 1",
      "UPDATE meta_class_properties SET internal_name = 'CODE' WHERE class_ordinal = 1 AND ordinal > 0",
      "UPDATE meta_methods SET internal_name = 'revise' WHERE ordinal = 2",
      "INSERT INTO meta_methods VALUES (0, NULL, 'Lost', '')",
  });
  const std::string number = "expected a whole number from 0 to ";
  const std::string rows =
      ": the database is damaged or was edited: the table has 4 rows, and table metamodel says 3; "
      "restore it from a copy";
  const SMetaFaults faults = Check();
  std::vector<std::string> words = faults.words;
  ASSERT_EQ(words.size(), 10U) << testing::PrintToString(words);
  // Without a place, the row comes first or last.
  const std::string lost = "table meta_methods, row behavior_ordinal 0, ordinal NULL: ordinal: must not be NULL";
  const auto found = std::find(words.begin(), words.end(), lost);
  ASSERT_NE(found, words.end()) << testing::PrintToString(words);
  words.erase(found);
  EXPECT_THAT(
      words,
      ElementsAre(
          "table meta_classes, row ordinal 0: internal_name: the name is empty",
          "table meta_classes, row ordinal 0: display_name: must not be NULL",
          "table meta_classes, row ordinal 0: class_id: " + number + "4294967295, found -1",
          "table meta_class_properties, row class_ordinal 0, ordinal 1: length: must not be NULL",
          "table meta_class_properties, row class_ordinal 0, ordinal 1: precision: " + number + "65535, found 65536",
          "table meta_class_properties, row class_ordinal 1, ordinal 1: internal_name: the name \"CODE\" "
          "repeats \"Code\" of ordinal 0 of the same list; names must differ in more than letter case",
          "table meta_class_properties, row class_ordinal 1, ordinal 2: internal_name: the name \"CODE\" "
          "repeats \"Code\" of ordinal 0 of the same list; names must differ in more than letter case",
          "table meta_methods, row behavior_ordinal 0, ordinal 2: internal_name: the name \"revise\" repeats "
          "\"Revise\" of ordinal 0 of the same list; names must differ in more than letter case",
          "table meta_methods cannot be read" + rows));
  EXPECT_TRUE(faults.isWhole);
}

TEST_P(DatabaseCheckTest, AnOwnerThatIsMissingIsToldOnceForAllItsRows) {
  storage_.Execute({"UPDATE meta_class_properties SET class_ordinal = 7 WHERE class_ordinal = 1",
                    "UPDATE meta_behavior_properties SET behavior_ordinal = 4"});
  EXPECT_THAT(Check().words,
              ElementsAre("table meta_class_properties, row class_ordinal 7, ordinal 0: class_ordinal: table "
                          "meta_classes has no row of this ordinal",
                          "table meta_behavior_properties, row behavior_ordinal 4, ordinal 0: behavior_ordinal: table "
                          "meta_behaviors has no row of this ordinal"));
}

TEST_P(DatabaseCheckTest, ATableThatIsMissingEndsTheReading) {
  storage_.Execute({"DROP TABLE meta_methods"});
  EXPECT_THAT(Check().words, ElementsAre("the metamodel is incomplete: missing meta_methods"));
  EXPECT_FALSE(Check().isWhole);
}

TEST_P(DatabaseCheckTest, EveryNumberOfRowsIsCompared) {
  storage_.Execute({"UPDATE metamodel SET meta_methods_rows = 5, meta_links_rows = 1"});
  EXPECT_EQ(Check().count, 2U);
}

INSTANTIATE_TEST_SUITE_P(All, DatabaseCheckTest, testing::Values(EStorage::kSqlite, EStorage::kPostgresql),
                         [](const auto& storage) { return Name(storage.param); });

}  // namespace
}  // namespace test
