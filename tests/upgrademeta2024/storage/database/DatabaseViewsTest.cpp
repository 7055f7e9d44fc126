// What is wrong with a metamodel that views show: there are no rows to be stored anew.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kMethods = "behavior_ordinal, ordinal, internal_name, display_name";

class DatabaseViewsTest : public testing::TestWithParam<EStorage> {
 protected:
  DatabaseViewsTest() : storage_(GetParam()) {
    CMetaDictionary2024 dictionary;
    dictionary.AddClass(MakeClass({"Part", {"Versioned"}, {Property("Code")}}));
    dictionary.AddBehavior(MakeBehavior({"Versioned", {"Revise", "Freeze"}, {}}));
    OpenMetaStorage(storage_.Location())->Save(dictionary);
  }

  /// Puts a view of what a SELECT gives in the place of a table; the table is then called "all_TABLE".
  void Show(const std::string& table, const std::string& select) const {
    storage_.Execute({"ALTER TABLE " + table + " RENAME TO all_" + table, "CREATE VIEW " + table + " AS " + select});
  }
  /// What loading complains of, without the location.
  std::string Trouble() const {
    const SError error = ErrorOf([this] { OpenMetaStorage(storage_.Location())->Load(); });
    EXPECT_EQ(error.code, kvx::kMalformedDocument);
    return error.message.substr(storage_.Location().size() + 2);
  }

  CTestStorage storage_;
};

TEST_P(DatabaseViewsTest, AValueThatDoesNotBelongIsForTheViewToMend) {
  Show("meta_methods",
       "SELECT behavior_ordinal, ordinal, internal_name, CASE WHEN ordinal = 0 THEN display_name END AS display_name "
       "FROM all_meta_methods");
  EXPECT_EQ(Trouble(),
            "table meta_methods, row behavior_ordinal 0, ordinal 1: display_name: must not be NULL; correct the SELECT "
            "of the view meta_methods or what it reads");
}

TEST_P(DatabaseViewsTest, AColumnThatIsMissingIsForTheViewToMend) {
  Show("meta_methods", "SELECT behavior_ordinal, ordinal, internal_name FROM all_meta_methods");
  EXPECT_THAT(Trouble(), AllOf(HasSubstr("table meta_methods cannot be read: "), HasSubstr("display_name"),
                               HasSubstr("; correct the SELECT of the view meta_methods or what it reads")));
}

TEST_P(DatabaseViewsTest, ARepeatedNameIsForTheViewToMend) {
  Show("meta_methods",
       "SELECT behavior_ordinal, ordinal, 'Revise' AS internal_name, display_name FROM all_meta_methods");
  EXPECT_THAT(Trouble(), AllOf(HasSubstr("repeats \"Revise\""),
                               HasSubstr("; correct the SELECT of the view meta_methods or what it reads")));
}

TEST_P(DatabaseViewsTest, ATableBesideAViewIsStoredAnew) {
  Show("meta_methods", std::string("SELECT ") + kMethods + " FROM all_meta_methods");
  storage_.Execute({"CREATE TABLE loose AS SELECT * FROM meta_class_properties", "DROP TABLE meta_class_properties",
                    "ALTER TABLE loose RENAME TO meta_class_properties",
                    "UPDATE meta_class_properties SET display_name = NULL"});
  EXPECT_EQ(Trouble(),
            "table meta_class_properties, row class_ordinal 0, ordinal 0: display_name: must not be NULL; correct the "
            "row or store the metamodel anew");
}

TEST_P(DatabaseViewsTest, WhatIsMissingIsMadeBesideTheOthers) {
  Show("meta_methods", std::string("SELECT ") + kMethods + " FROM all_meta_methods");
  storage_.Execute({"DROP TABLE meta_link_properties"});
  EXPECT_EQ(Trouble(),
            "the metamodel is incomplete: missing meta_link_properties; make what is missing beside the views that are "
            "there");
}

TEST_P(DatabaseViewsTest, AHeadWithoutARowIsForTheViewToMend) {
  Show("metamodel", "SELECT * FROM all_metamodel WHERE generation = 0");
  EXPECT_EQ(Trouble(), "table metamodel has no row; correct the SELECT of the view metamodel or what it reads");
}

TEST_P(DatabaseViewsTest, AnotherVersionIsForTheViewToMend) {
  Show("metamodel", "SELECT generation, 3 AS schema_version FROM all_metamodel");
  EXPECT_EQ(
      Trouble(),
      "table metamodel, row 1: schema_version: expected 1 or 2, found 3; correct the SELECT of the view metamodel "
      "or what it reads");
}

TEST_P(DatabaseViewsTest, ANumberOfRowsThatIsNoneIsForTheViewToMend) {
  storage_.Execute({"CREATE TABLE loose AS SELECT * FROM metamodel", "DROP TABLE metamodel",
                    "ALTER TABLE loose RENAME TO metamodel", "UPDATE metamodel SET meta_methods_rows = NULL"});
  Show("metamodel", "SELECT * FROM all_metamodel");
  EXPECT_THAT(Trouble(), AllOf(HasSubstr("meta_methods_rows: expected a whole number"),
                               HasSubstr("; correct the SELECT of the view metamodel or what it reads")));
}

TEST_P(DatabaseViewsTest, AnotherNumberOfRowsIsForTheViewsToMend) {
  Show("meta_methods", std::string("SELECT ") + kMethods + " FROM all_meta_methods WHERE ordinal = 0");
  const std::string message = Trouble();
  EXPECT_THAT(message,
              HasSubstr("the table has 1 rows, and table metamodel says 2; restore it from a copy; where views "
                        "are wrong, correct their SELECT"));
  EXPECT_THAT(message, Not(HasSubstr("after an edit")));
}

INSTANTIATE_TEST_SUITE_P(All, DatabaseViewsTest, testing::Values(EStorage::kSqlite, EStorage::kPostgresql),
                         [](const auto& storage) { return Name(storage.param); });

}  // namespace
}  // namespace test
