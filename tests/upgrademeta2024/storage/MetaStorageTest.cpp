#include "upgrademeta2024/storage/OpenMetaStorage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/Process.h"
#include "upgrademeta2024/storage/document/MetaDocument.h"

namespace {

using test::ErrorOf;
using test::SError;
using testing::StartsWith;

TEST(MetaStorageTest, PathThatEndsInJsonIsADocumentWhateverTheCase) {
  const test::CTemporaryDirectory directory;
  for (const char* name : {"meta.json", "META.JSON", "a.b.Json", ".json"}) {
    const std::string path = directory.Write(name, R"({"generation": 2024})");
    EXPECT_NO_THROW(OpenMetaStorage(path)->Load()) << name;
  }
}

TEST(MetaStorageTest, OpenReadsNothingYet) {
  EXPECT_NO_THROW(OpenMetaStorage("/nonexistent/meta.json"));
}

TEST(MetaStorageTest, LocationOfNoKnownFormIsRefused) {
  for (const std::string location : {"", "json", "meta", "meta.xml", "meta.json ", "meta.json/", "meta.jsonx", "/"}) {
    const SError error = ErrorOf([&] { OpenMetaStorage(location); });
    EXPECT_EQ(error.code, kvx::kMetamodelError) << location;
    EXPECT_THAT(error.message, StartsWith(location + ": not a metamodel location; "));
  }
}

TEST(MetaStorageTest, MessageShowsControlCharactersOfTheLocation) {
  EXPECT_THAT(ErrorOf([] { OpenMetaStorage("a\nb\x1B"); }).message,
              StartsWith("a\\nb\\x1B: not a metamodel location; "));
}

TEST(MetaStorageTest, VariableThatKeepsTextsFromBeingReadIsNamed) {
  const test::CTemporaryDirectory directory;
  const std::string path = directory.Write("meta.json", R"({"generation": 2024})");
  const test::SProcessResult result = test::Run(
      {"/usr/bin/env", "SIMDJSON_FORCE_IMPLEMENTATION=a\nb", UPGRADESRV_EXECUTABLE, "metamodel", "show", path});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "upgradesrv: error: the environment variable SIMDJSON_FORCE_IMPLEMENTATION=a\\nb names nothing that this "
            "computer can use; unset it\n");
  EXPECT_EQ(test::Run({"/usr/bin/env", "SIMDJSON_FORCE_IMPLEMENTATION=fallback", UPGRADESRV_EXECUTABLE, "metamodel",
                       "show", path})
                .status,
            0);
}

}  // namespace
