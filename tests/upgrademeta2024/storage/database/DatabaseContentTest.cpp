// What a database enforces, and what a reader says about one that another program has filled.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <soci/soci.h>

#include <string>
#include <tuple>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "support/MetaMaker.h"
#include "support/MetaText.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {
namespace {

void SaveSample(const CTestStorage& storage) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({"Part", {"Versioned"}, {Property("Code"), Property("Name")}}));
  dictionary.AddClass(MakeClass({"Document", {}, {Property("Code")}}));
  dictionary.AddLink(MakeLink({"Contains", {}, {Property("Quantity")}}));
  dictionary.AddBehavior(MakeBehavior({"Versioned", {"Revise", "Freeze"}, {Property("Version")}}));
  OpenMetaStorage(storage.Location())->Save(dictionary);
}

/// What one value says: a row of a table of cases, and its name in the test's name.
struct SStatementCase {
  const char* name;
  std::vector<std::string> statements;
  const char* message = "";
};

void PrintTo(const SStatementCase& value, std::ostream* output) {
  *output << value.name;
}

using Parameter = std::tuple<EStorage, SStatementCase>;

std::string ParameterName(const testing::TestParamInfo<Parameter>& info) {
  return Name(std::get<0>(info.param)) + std::get<1>(info.param).name;
}

class DatabaseTest : public testing::TestWithParam<Parameter> {
 protected:
  DatabaseTest() : storage_(std::get<0>(GetParam())), case_(std::get<1>(GetParam())) { SaveSample(storage_); }

  CTestStorage storage_;
  SStatementCase case_;
};

class DatabaseEnforcesTest : public DatabaseTest {};

TEST_P(DatabaseEnforcesTest, Constraint) {
  std::vector<std::string> statements = case_.statements;
  if (std::get<0>(GetParam()) == EStorage::kSqlite) {
    statements.insert(statements.begin(), "PRAGMA foreign_keys = ON");
  }
  EXPECT_THROW(storage_.Execute(statements), soci::soci_error);
}

const std::vector<SStatementCase> kRefusedStatements = {
    {"ClassNameRepeated", {"UPDATE meta_classes SET internal_name = 'PART' WHERE ordinal = 1"}},
    {"LinkNameRepeated", {"INSERT INTO meta_links VALUES (1, 'CONTAINS', '', 0, '')"}},
    {"BehaviorNameRepeated", {"INSERT INTO meta_behaviors VALUES (1, 'versioneD', '')"}},
    {"PropertyNameRepeated", {"UPDATE meta_class_properties SET internal_name = 'NAME' WHERE class_ordinal = 0"}},
    {"MethodNameRepeated", {"UPDATE meta_methods SET internal_name = 'REVISE' WHERE ordinal = 1"}},
    {"EmptyName", {"UPDATE meta_classes SET internal_name = '' WHERE ordinal = 1"}},
    {"NullText", {"UPDATE meta_classes SET display_name = NULL WHERE ordinal = 1"}},
    {"ClassIdNegative", {"UPDATE meta_classes SET class_id = -1"}},
    {"ClassIdTooLarge", {"UPDATE meta_classes SET class_id = 4294967296"}},
    {"LengthTooLarge", {"UPDATE meta_class_properties SET length = 4294967296"}},
    {"PrecisionTooLarge", {"UPDATE meta_class_properties SET precision = 65536"}},
    {"OrdinalNegative", {"UPDATE meta_classes SET ordinal = -1 WHERE ordinal = 1"}},
    {"OrdinalRepeated", {"UPDATE meta_classes SET ordinal = 0 WHERE ordinal = 1"}},
    {"PropertyOrdinalRepeated", {"UPDATE meta_class_properties SET ordinal = 0 WHERE class_ordinal = 0"}},
    {"DanglingProperty", {"UPDATE meta_class_properties SET class_ordinal = 7 WHERE class_ordinal = 1"}},
    {"DanglingBehaviorName", {"UPDATE meta_class_behaviors SET class_ordinal = 7"}},
    {"DanglingMethod", {"UPDATE meta_methods SET behavior_ordinal = 7"}},
    {"OtherGeneration", {"UPDATE metamodel SET generation = 2025"}},
    {"OtherSchemaVersion", {"UPDATE metamodel SET schema_version = 1"}},
    {"SecondHeadRow", {"INSERT INTO metamodel SELECT * FROM metamodel"}},
    {"CountNull", {"UPDATE metamodel SET meta_methods_rows = NULL"}},
    {"CountNegative", {"UPDATE metamodel SET meta_methods_rows = -1"}},
};

class DatabaseFaultTest : public DatabaseTest {
 protected:
  /// Gives every table the same rows without the constraints.
  void Loosen() const {
    for (const std::string table :
         {"metamodel", "meta_class_behaviors", "meta_class_properties", "meta_link_behaviors", "meta_link_properties",
          "meta_methods", "meta_behavior_properties", "meta_classes", "meta_links", "meta_behaviors"}) {
      storage_.Execute({"CREATE TABLE loose AS SELECT * FROM " + table, "DROP TABLE " + table,
                        "ALTER TABLE loose RENAME TO " + table});
    }
  }
};

TEST_P(DatabaseFaultTest, IsNamedByLoadAndCheck) {
  Loosen();
  storage_.Execute(case_.statements);
  try {
    OpenMetaStorage(storage_.Location())->Load();
    ADD_FAILURE() << "loaded";
  } catch (const CKVXException& error) {
    EXPECT_EQ(error.GetCode(), kvx::kMalformedDocument) << error.what();
    EXPECT_THAT(error.what(), testing::StartsWith(storage_.Location() + ": "));
    EXPECT_THAT(error.what(), testing::HasSubstr(case_.message));
    EXPECT_THAT(error.what(), testing::Not(testing::HasSubstr("\n")));
    const SMetaFaults faults = OpenMetaStorage(storage_.Location())->Check();
    EXPECT_EQ(faults.words.empty() ? "" : faults.words.front(), error.what()) << "what a check finds first";
  }
}

const std::vector<SStatementCase> kFaults = {
    {"TableMissing", {"DROP TABLE meta_methods"}, "the metamodel is incomplete: missing meta_methods"},
    {"HeadMissing", {"DROP TABLE metamodel"}, "the metamodel is incomplete: missing metamodel"},
    {"HeadEmpty", {"DELETE FROM metamodel"}, "table metamodel has no row"},
    {"HeadTwice", {"INSERT INTO metamodel SELECT * FROM metamodel"}, "table metamodel has more than one row"},
    {"OtherSchemaVersion",
     {"UPDATE metamodel SET schema_version = 3"},
     "table metamodel, row 1: schema_version: expected 1 or 2, found 3"},
    {"SchemaVersionNull",
     {"UPDATE metamodel SET schema_version = NULL"},
     "table metamodel, row 1: schema_version: expected 1 or 2, found NULL"},
    {"OtherGeneration",
     {"UPDATE metamodel SET generation = 2025"},
     "table metamodel, row 1: generation: the metamodel is of generation 2025"},
    {"CountNull",
     {"UPDATE metamodel SET meta_methods_rows = NULL"},
     "table metamodel, row 1: meta_methods_rows: expected a whole number from 0 to 9223372036854775807, found NULL"},
    {"CountNegative",
     {"UPDATE metamodel SET meta_methods_rows = -1"},
     "table metamodel, row 1: meta_methods_rows: expected a whole number from 0 to 9223372036854775807, found -1"},
    {"CountMissing",
     {"ALTER TABLE metamodel RENAME COLUMN meta_methods_rows TO methods"},
     "table metamodel cannot be read: "},
    {"RowLost",
     {"DELETE FROM meta_methods WHERE ordinal = 1"},
     "table meta_methods cannot be read: the database is damaged or was edited: the table has 1 rows, and table "
     "metamodel says 2; restore it from a copy; after an edit, correct meta_methods_rows there"},
    {"RowAdded",
     {"INSERT INTO meta_links VALUES (7, 'Uses', '', 0, '')"},
     "table meta_links cannot be read: the database is damaged or was edited: the table has 2 rows, and table "
     "metamodel says 1"},
    {"AllRowsLost",
     {"DELETE FROM meta_behavior_properties"},
     "table meta_behavior_properties cannot be read: the database is damaged or was edited: the table has 0 rows"},
    {"ColumnMissing",
     {"ALTER TABLE meta_link_properties RENAME COLUMN length TO len"},
     "table meta_link_properties cannot be read: "},
    {"DanglingProperty",
     {"UPDATE meta_class_properties SET class_ordinal = 7 WHERE class_ordinal = 1"},
     "table meta_class_properties, row class_ordinal 7, ordinal 0: class_ordinal: table meta_classes has no row"},
    {"DanglingBetweenOwners",
     {"UPDATE meta_classes SET ordinal = 9 WHERE ordinal = 0"},
     "table meta_class_behaviors, row class_ordinal 0, ordinal 0: class_ordinal: table meta_classes has no row"},
    {"DanglingMethod",
     {"DELETE FROM meta_behaviors", "UPDATE metamodel SET meta_behaviors_rows = 0"},
     "table meta_methods, row behavior_ordinal 0, ordinal 0: behavior_ordinal: table meta_behaviors has no row"},
    {"OwnerNull",
     {"UPDATE meta_link_properties SET link_ordinal = NULL"},
     "table meta_link_properties, row link_ordinal NULL, ordinal 0: link_ordinal: must not be NULL"},
    {"OrdinalRepeated",
     {"UPDATE meta_class_properties SET ordinal = 0 WHERE class_ordinal = 0"},
     "table meta_class_properties, row class_ordinal 0, ordinal 0: ordinal: not greater"},
    {"OrdinalIsText",
     {"INSERT INTO meta_links SELECT 9, 'Last', '', 0, ''", "INSERT INTO meta_links SELECT 10, 'Other', '', 0, ''",
      "UPDATE metamodel SET meta_links_rows = 3",
      "CREATE TABLE texts AS SELECT CAST(ordinal AS TEXT) AS ordinal, internal_name, display_name, class_id, "
      "table_name FROM meta_links",
      "DROP TABLE meta_links", "ALTER TABLE texts RENAME TO meta_links"},
     "table meta_links, row ordinal 9: ordinal: expected a number, found the text 9; correct the row"},
    {"OwnerIsText",
     {"INSERT INTO meta_classes SELECT 10, 'Last', '', 0, ''", "UPDATE meta_classes SET ordinal = 9 WHERE ordinal = 1",
      "UPDATE metamodel SET meta_classes_rows = 3", "DELETE FROM meta_class_properties",
      "CREATE TABLE texts (class_ordinal TEXT, ordinal INTEGER, behavior TEXT)",
      "INSERT INTO texts VALUES ('9', 0, 'A')", "INSERT INTO texts VALUES ('10', 0, 'A')",
      "DROP TABLE meta_class_behaviors", "ALTER TABLE texts RENAME TO meta_class_behaviors"},
     "table meta_class_behaviors, row class_ordinal 9, ordinal 0: class_ordinal: expected a number, found the text 9"},
    {"OrdinalNegative",
     {"UPDATE meta_links SET ordinal = -3"},
     "table meta_links, row ordinal -3: ordinal: expected a whole number from 0 to"},
    {"ClassIdTooLarge",
     {"UPDATE meta_classes SET class_id = 4294967296 WHERE ordinal = 1"},
     "table meta_classes, row ordinal 1: class_id: expected a whole number from 0 to 4294967295, found 4294967296"},
    {"LengthNegative",
     {"UPDATE meta_class_properties SET length = -1 WHERE class_ordinal = 0 AND ordinal = 1"},
     "table meta_class_properties, row class_ordinal 0, ordinal 1: length: expected a whole number from 0 to "
     "4294967295, found -1"},
    {"PrecisionTooLarge",
     {"UPDATE meta_behavior_properties SET precision = 65536"},
     "table meta_behavior_properties, row behavior_ordinal 0, ordinal 0: precision: expected a whole number from 0 to "
     "65535, found 65536"},
    {"NumberIsText",
     {"ALTER TABLE meta_links DROP COLUMN class_id", "ALTER TABLE meta_links ADD COLUMN class_id TEXT",
      "UPDATE meta_links SET class_id = '12 % of ''x''; --'"},
     "table meta_links, row ordinal 0: class_id: expected a whole number from 0 to 4294967295, found 12 % of 'x'; --"},
    {"NumberNull",
     {"UPDATE meta_classes SET class_id = NULL WHERE ordinal = 0"},
     "table meta_classes, row ordinal 0: class_id: must not be NULL"},
    {"TextNull",
     {"UPDATE meta_methods SET display_name = NULL WHERE ordinal = 1"},
     "table meta_methods, row behavior_ordinal 0, ordinal 1: display_name: must not be NULL"},
    {"NameEmpty",
     {"UPDATE meta_links SET internal_name = ''"},
     "table meta_links, row ordinal 0: internal_name: the name is empty"},
    {"ClassNameRepeated",
     {"UPDATE meta_classes SET internal_name = 'PART' WHERE ordinal = 1"},
     "table meta_classes, row ordinal 1: internal_name: the name \"PART\" repeats \"Part\" of ordinal 0"},
    {"PropertyNameRepeated",
     {"UPDATE meta_class_properties SET internal_name = 'CODE' WHERE class_ordinal = 0 AND ordinal = 1"},
     "table meta_class_properties, row class_ordinal 0, ordinal 1: internal_name: the name \"CODE\" repeats \"Code\" "
     "of ordinal 0"},
    {"MethodNameRepeated",
     {"UPDATE meta_methods SET internal_name = 'REVISE' WHERE ordinal = 1"},
     "table meta_methods, row behavior_ordinal 0, ordinal 1: internal_name: the name \"REVISE\" repeats \"Revise\" of "
     "ordinal 0"},
};

class DatabaseEditTest : public DatabaseTest {};

TEST_P(DatabaseEditTest, IsRead) {
  storage_.Execute(case_.statements);
  EXPECT_THAT(TextOf(*OpenMetaStorage(storage_.Location())->Load()), testing::HasSubstr(case_.message));
}

const std::vector<SStatementCase> kEdits = {
    {"RowAddedAndCounted",
     {"INSERT INTO meta_links VALUES (7, 'Uses', '', 0, '')", "UPDATE metamodel SET meta_links_rows = 2"},
     "link \"Uses\""},
    {"RowAddedWhereNothingIsCounted",
     {"INSERT INTO meta_links VALUES (7, 'Uses', '', 0, '')",
      "CREATE TABLE head AS SELECT generation, 1 AS schema_version FROM metamodel", "DROP TABLE metamodel",
      "ALTER TABLE head RENAME TO metamodel"},
     "link \"Uses\""},
    {"GapInTheOrdinals",
     {"UPDATE meta_class_properties SET ordinal = 99 WHERE class_ordinal = 0 AND ordinal = 0"},
     "  property \"Name\" \"Name (display)\" \"F_Name\" \"string\" 32 \"\" 0 \"\" \"\" \"\"\n  property \"Code\" "},
    {"NameInNonAsciiCase",
     {"UPDATE meta_classes SET internal_name = '\u00C9' WHERE ordinal = 0",
      "UPDATE meta_classes SET internal_name = '\u00E9' WHERE ordinal = 1"},
     "class \"\u00C9\""},
};

class DatabaseNoteTest : public testing::TestWithParam<EStorage> {
 protected:
  DatabaseNoteTest() {
    SaveSample(storage_);
    kvx::CFileNotes::SetReceiver([this](const std::string& note) {
      if (note.find(" is database ") == std::string::npos) {
        notes_.push_back(note);
      }
    });
  }
  ~DatabaseNoteTest() override { kvx::CFileNotes::SetReceiver({}); }

  std::vector<std::string> NotesOfLoading() {
    notes_.clear();
    OpenMetaStorage(storage_.Location())->Load();
    return notes_;
  }

  CTestStorage storage_{GetParam()};
  std::vector<std::string> notes_;
};

TEST_P(DatabaseNoteTest, RowsThatAreNotCountedAreNoted) {
  EXPECT_TRUE(NotesOfLoading().empty());
  storage_.Execute({"CREATE TABLE head AS SELECT generation, 1 AS schema_version FROM metamodel",
                    "DROP TABLE metamodel", "ALTER TABLE head RENAME TO metamodel"});
  EXPECT_EQ(
      NotesOfLoading(),
      std::vector<std::string>{storage_.Location() +
                               ": the numbers of rows of its tables are missing, so that lost rows may go unnoticed; "
                               "copy the metamodel onto itself once to add them"});
  const auto storage = OpenMetaStorage(storage_.Location());
  storage->Save(*storage->Load());
  EXPECT_TRUE(NotesOfLoading().empty());
}

TEST_P(DatabaseNoteTest, RowsThatAViewDoesNotCountAreNoted) {
  storage_.Execute({"ALTER TABLE metamodel RENAME TO head",
                    "CREATE VIEW metamodel AS SELECT generation, 1 AS schema_version FROM head"});
  EXPECT_EQ(
      NotesOfLoading(),
      std::vector<std::string>{storage_.Location() +
                               ": the numbers of rows of its tables are missing, so that lost rows may go unnoticed; "
                               "let the view metamodel count them, as schema_version 2 does"});
}

const auto kDatabases = testing::Values(EStorage::kSqlite, EStorage::kPostgresql);

INSTANTIATE_TEST_SUITE_P(, DatabaseEnforcesTest, testing::Combine(kDatabases, testing::ValuesIn(kRefusedStatements)),
                         ParameterName);
INSTANTIATE_TEST_SUITE_P(, DatabaseFaultTest, testing::Combine(kDatabases, testing::ValuesIn(kFaults)), ParameterName);
INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseNoteTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, DatabaseNoteTest, testing::Values(EStorage::kPostgresql));
INSTANTIATE_TEST_SUITE_P(, DatabaseEditTest, testing::Combine(kDatabases, testing::ValuesIn(kEdits)), ParameterName);

}  // namespace
}  // namespace test
