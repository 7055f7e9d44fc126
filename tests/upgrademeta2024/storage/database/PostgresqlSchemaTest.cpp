// All tables of a metamodel are in one schema, whatever other schemas of the search path hold.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/Error.h"
#include "support/MetaText.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/LargeMetamodel.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {
namespace {

using testing::HasSubstr;

/// Two schemas, whose names have to be quoted.
class PostgresqlSchemaTest : public testing::Test {
 protected:
  PostgresqlSchemaTest() { storage_.Execute({"CREATE SCHEMA " + earlier_, "CREATE SCHEMA " + later_}); }
  ~PostgresqlSchemaTest() override { storage_.Execute({"DROP SCHEMA " + earlier_ + ", " + later_ + " CASCADE"}); }

  static std::unique_ptr<CMetaStorage> Open(const std::string& path) {
    return OpenMetaStorage("postgresql://options='-csearch_path=" + path + "'");
  }
  std::unique_ptr<CMetaStorage> OpenBoth() const { return Open(earlier_ + "," + later_); }

  /// A table as another metamodel might have left it.
  void LeaveMethods(const std::string& schema) const {
    storage_.Execute({"CREATE TABLE " + schema +
                          ".meta_methods (behavior_ordinal BIGINT, ordinal BIGINT, internal_name TEXT, display_name "
                          "TEXT)",
                      "INSERT INTO " + schema + ".meta_methods VALUES (0, 0, 'Leftover', '')"});
  }
  std::string Methods(const std::string& schema) const {
    return storage_.Query("SELECT string_agg(internal_name, ',') FROM " + schema + ".meta_methods");
  }

  CTestStorage storage_{EStorage::kPostgresql};
  std::string base_ = storage_.Query("SELECT current_schema()::text");
  std::string earlier_ = "\"" + base_ + "Earlier:\"\"x.y\"";
  std::string later_ = "\"" + base_ + "Later$1\"";
  std::shared_ptr<CMetaDictionary2024> sample_ = LargeMetamodel(2);
};

TEST_F(PostgresqlSchemaTest, LeftoverTableInAnEarlierSchemaIsNotRead) {
  Open(later_)->Save(*sample_);
  LeaveMethods(earlier_);
  EXPECT_EQ(TextOf(*OpenBoth()->Load()), TextOf(*sample_));
}

TEST_F(PostgresqlSchemaTest, LeftoverTableInAnEarlierSchemaIsNotTakenForAMissingOne) {
  Open(later_)->Save(*sample_);
  storage_.Execute({"DROP TABLE " + later_ + ".meta_methods"});
  LeaveMethods(earlier_);
  EXPECT_THAT(ErrorOf([this] { OpenBoth()->Load(); }).message,
              HasSubstr("the metamodel is incomplete: missing meta_methods"));
}

TEST_F(PostgresqlSchemaTest, MetamodelIsReplacedWhereItIs) {
  Open(later_)->Save(*sample_);
  LeaveMethods(earlier_);
  EXPECT_TRUE(OpenBoth()->Exists());
  const std::shared_ptr<CMetaDictionary2024> other = LargeMetamodel(1);
  OpenBoth()->Save(*other);
  EXPECT_EQ(TextOf(*Open(later_)->Load()), TextOf(*other));
  EXPECT_EQ(Methods(earlier_), "Leftover");
}

TEST_F(PostgresqlSchemaTest, NewMetamodelIsStoredInTheFirstSchema) {
  LeaveMethods(later_);
  EXPECT_FALSE(OpenBoth()->Exists());
  OpenBoth()->Save(*sample_);
  EXPECT_EQ(TextOf(*Open(earlier_)->Load()), TextOf(*sample_));
  EXPECT_EQ(Methods(later_), "Leftover");
}

}  // namespace
}  // namespace test
