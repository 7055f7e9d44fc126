// Tables of other programs whose rows refer to rows of the metamodel: replacing the metamodel leaves them as they are.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/LargeMetamodel.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class DatabaseReferencesTest : public testing::TestWithParam<EStorage> {
 protected:
  DatabaseReferencesTest() {
    Save(3);
    storage_.Execute({"CREATE TABLE parts (number TEXT, class BIGINT)"});
  }

  void Save(int classes) const { OpenMetaStorage(storage_.Location())->Save(*LargeMetamodel(classes)); }
  SError SaveError(int classes) const {
    return ErrorOf([&] { Save(classes); });
  }
  int LoadedClasses() const {
    return static_cast<int>(OpenMetaStorage(storage_.Location())->Load()->GetClasses().size());
  }

  /// A table `parts` with the columns `number` and `class` and more.
  void MakeParts(const std::string& definition, const std::vector<std::string>& rows) const {
    storage_.Execute({"DROP TABLE parts", "CREATE TABLE parts (" + definition + ")"});
    for (const std::string& row : rows) {
      storage_.Execute({"INSERT INTO parts VALUES (" + row + ")"});
    }
  }
  std::string Parts() const {
    const std::string order = GetParam() == EStorage::kPostgresql ? " ORDER BY number" : "";
    const std::string aggregate = GetParam() == EStorage::kPostgresql ? "string_agg" : "group_concat";
    return storage_.Query("SELECT " + aggregate + "(number || ' ' || coalesce(CAST(class AS TEXT), 'NULL'), ', '" +
                          order + ") FROM parts");
  }

  CTestStorage storage_{GetParam()};
};

TEST_P(DatabaseReferencesTest, RowsOfOthersStayAsTheyAre) {
  for (const std::string action : {"CASCADE", "SET NULL", "SET DEFAULT", "RESTRICT", "NO ACTION"}) {
    MakeParts("number TEXT, class BIGINT DEFAULT 0 REFERENCES meta_classes (ordinal) ON UPDATE " + action +
                  " ON DELETE " + action,
              {"'A-1', 1", "'A-2', 2", "'A-3', NULL"});
    Save(3);
    Save(4);
    EXPECT_EQ(Parts(), "A-1 1, A-2 2, A-3 NULL") << action;
    EXPECT_EQ(LoadedClasses(), 4);
  }
}

TEST_P(DatabaseReferencesTest, ReferencesToSeveralColumnsStayAsTheyAre) {
  MakeParts(
      "number TEXT, class BIGINT, property BIGINT, FOREIGN KEY (class, property) REFERENCES meta_class_properties "
      "(class_ordinal, ordinal) ON DELETE CASCADE",
      {"'A-1', 2, 1"});
  Save(3);
  EXPECT_EQ(Parts(), "A-1 2");
  EXPECT_THAT(SaveError(2).message, AllOf(HasSubstr("parts"), HasSubstr("class, property")));
  EXPECT_EQ(LoadedClasses(), 3);
}

TEST_P(DatabaseReferencesTest, ReferenceThatWouldBeLeftDanglingIsRefused) {
  MakeParts("number TEXT, class BIGINT REFERENCES meta_classes (ordinal) ON DELETE CASCADE", {"'A-1', 1", "'A-2', 2"});
  const SError error = SaveError(2);
  EXPECT_EQ(error.code, kvx::kFileError);
  EXPECT_THAT(error.message, AllOf(HasSubstr("cannot be stored, what was there is unchanged: "),
                                   HasSubstr("; correct t"), Not(HasSubstr("--replace")), Not(HasSubstr("anew"))));
  EXPECT_THAT(error.message,
              HasSubstr(GetParam() == EStorage::kSqlite
                            ? "table parts, row 2: class refers to a row that table meta_classes would not have"
                            : "another table refers to a row that would not be there: ERROR:  insert or update on "
                              "table \"parts\" violates foreign key constraint \"parts_class_fkey\" DETAIL:  Key "
                              "(class)=(2) is not present in table \"meta_classes\"."));
  EXPECT_EQ(Parts(), "A-1 1, A-2 2");
  EXPECT_EQ(LoadedClasses(), 3);
  storage_.Execute({"UPDATE parts SET class = 0 WHERE number = 'A-2'"});
  Save(2);
  EXPECT_EQ(LoadedClasses(), 2);
}

TEST_P(DatabaseReferencesTest, ReferencesAreStillEnforcedAfterwards) {
  MakeParts("number TEXT, class BIGINT REFERENCES meta_classes (ordinal) ON DELETE CASCADE", {"'A-1', 1"});
  Save(3);
  std::vector<std::string> statements = {"INSERT INTO parts VALUES ('A-2', 7)"};
  if (GetParam() == EStorage::kSqlite) {
    statements.insert(statements.begin(), "PRAGMA foreign_keys = ON");
  }
  EXPECT_THROW(storage_.Execute(statements), soci::soci_error);
  statements.back() = "DELETE FROM meta_classes WHERE ordinal = 1";
  storage_.Execute(statements);
  EXPECT_EQ(storage_.Query("SELECT count(*) FROM parts"), "0");
}

TEST_P(DatabaseReferencesTest, ReferenceThatTheNewTablesCannotTakeIsRefused) {
  storage_.Execute({"CREATE UNIQUE INDEX own ON meta_classes (display_name)"});
  MakeParts("number TEXT, class TEXT REFERENCES meta_classes (display_name)", {"'A-1', NULL"});
  EXPECT_THAT(SaveError(3).message,
              AllOf(HasSubstr("what was there is unchanged: "), HasSubstr("meta_classes"),
                    HasSubstr("; remove what is in the way, or store the metamodel in another place")));
  EXPECT_EQ(Parts(), "A-1 NULL");
  EXPECT_EQ(LoadedClasses(), 3);
}

TEST_P(DatabaseReferencesTest, ViewInPlaceOfATableIsRefused) {
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO methods", "CREATE VIEW meta_methods AS SELECT * FROM methods"});
  EXPECT_THAT(SaveError(1).message, AllOf(HasSubstr("DROP VIEW"), HasSubstr("; remove what is in the way")));
  EXPECT_EQ(LoadedClasses(), 3);
}

class SqliteReferencesTest : public DatabaseReferencesTest {};

TEST_P(SqliteReferencesTest, ReferenceThatHasBeenDanglingBeforeIsNoReasonToRefuse) {
  MakeParts("number TEXT, class BIGINT REFERENCES meta_classes (ordinal)", {"'A-1', 1", "'A-2', 9"});
  Save(2);
  EXPECT_EQ(Parts(), "A-1 1, A-2 9");
  EXPECT_THAT(SaveError(1).message, HasSubstr("table parts, row 1: class refers to a row"));
}

TEST_P(SqliteReferencesTest, RowsWithoutNumbers) {
  storage_.Execute({"DROP TABLE parts",
                    "CREATE TABLE parts (number TEXT PRIMARY KEY, class BIGINT REFERENCES meta_classes (ordinal) ON "
                    "DELETE SET NULL) WITHOUT ROWID",
                    "INSERT INTO parts VALUES ('A-1', 1)"});
  Save(2);
  EXPECT_EQ(Parts(), "A-1 1");
  EXPECT_THAT(SaveError(1).message, HasSubstr("table parts, row without number: class refers to a row"));
  EXPECT_EQ(Parts(), "A-1 1");
}

class PostgresqlReferencesTest : public DatabaseReferencesTest {};

TEST_P(PostgresqlReferencesTest, ReferenceThatWasNotValidIsCheckedToo) {
  MakeParts("number TEXT, class BIGINT", {"'A-1', 2"});
  storage_.Execute({"ALTER TABLE parts ADD FOREIGN KEY (class) REFERENCES meta_classes ON DELETE CASCADE NOT VALID"});
  EXPECT_THAT(SaveError(2).message, HasSubstr("Key (class)=(2) is not present in table \"meta_classes\""));
  Save(3);
  EXPECT_EQ(Parts(), "A-1 2");
}

TEST_P(PostgresqlReferencesTest, TablesInPartsAndInOtherSchemas) {
  const std::string schema = storage_.Query("SELECT current_schema()::text") + "_other";
  storage_.Execute({"CREATE SCHEMA " + schema,
                    "CREATE TABLE " + schema +
                        ".\"Odd \"\"parts\" (number TEXT, class BIGINT CONSTRAINT \"a:b\" "
                        "REFERENCES meta_classes ON DELETE CASCADE) PARTITION BY LIST (number)",
                    "CREATE TABLE " + schema + ".first PARTITION OF " + schema +
                        ".\"Odd \"\"parts\" FOR VALUES IN "
                        "('A-1')",
                    "INSERT INTO " + schema + ".\"Odd \"\"parts\" VALUES ('A-1', 2)"});
  Save(3);
  EXPECT_EQ(storage_.Query("SELECT count(*) FROM " + schema + ".first WHERE class = 2"), "1");
  EXPECT_THAT(SaveError(2).message, HasSubstr("foreign key constraint \"a:b\""));
  storage_.Execute({"DROP SCHEMA " + schema + " CASCADE"});
}

TEST_P(PostgresqlReferencesTest, TableOfAnotherOwner) {
  MakeParts("number TEXT, class BIGINT REFERENCES meta_classes (ordinal) ON DELETE CASCADE", {"'A-1', 1"});
  const std::string schema = storage_.Query("SELECT current_schema()::text");
  const std::string writer = schema + "_writer";
  storage_.Execute(
      {"CREATE ROLE " + writer + " LOGIN PASSWORD 'geheim'", "GRANT ALL ON SCHEMA " + schema + " TO " + writer});
  for (const std::string table :
       {"metamodel", "meta_classes", "meta_class_behaviors", "meta_class_properties", "meta_links",
        "meta_link_behaviors", "meta_link_properties", "meta_behaviors", "meta_methods", "meta_behavior_properties"}) {
    storage_.Execute({"ALTER TABLE " + table + " OWNER TO " + writer});
  }
  const std::string location = storage_.LocationWith("user=" + writer + " password=geheim");
  EXPECT_THAT(ErrorOf([&] { OpenMetaStorage(location)->Save(*LargeMetamodel(3)); }).message,
              HasSubstr("must be owner of table parts; run as the owner of the tables"));
  EXPECT_EQ(Parts(), "A-1 1");
  EXPECT_EQ(LoadedClasses(), 3);
  storage_.Execute(
      {"REASSIGN OWNED BY " + writer + " TO CURRENT_USER", "DROP OWNED BY " + writer, "DROP ROLE " + writer});
}

INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseReferencesTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, DatabaseReferencesTest, testing::Values(EStorage::kPostgresql));
INSTANTIATE_TEST_SUITE_P(, SqliteReferencesTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(, PostgresqlReferencesTest, testing::Values(EStorage::kPostgresql));

}  // namespace
}  // namespace test
