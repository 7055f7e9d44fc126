#include "upgrademeta2024/storage/MetaStorage2024.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "upgrademeta2024/storage/MetaDocument.h"

namespace {

using test::ErrorOf;
using test::SError;
using testing::StartsWith;

TEST(MetaStorage2024Test, PathThatEndsInJsonIsADocumentWhateverTheCase) {
  const test::CTemporaryDirectory directory;
  for (const char* name : {"meta.json", "META.JSON", "a.b.Json", ".json"}) {
    const std::string path = directory.Write(name, R"({"generation": 2024})");
    EXPECT_NO_THROW(CMetaStorage2024::Open(path)->Load()) << name;
  }
}

TEST(MetaStorage2024Test, OpenReadsNothingYet) {
  EXPECT_NO_THROW(CMetaStorage2024::Open("/nonexistent/meta.json"));
}

TEST(MetaStorage2024Test, LocationOfNoKnownFormIsRefused) {
  for (const std::string location : {"", "json", "meta", "meta.xml", "meta.json ", "meta.json/", "meta.jsonx", "/"}) {
    const SError error = ErrorOf([&] { CMetaStorage2024::Open(location); });
    EXPECT_EQ(error.code, kvx::kMetamodelError) << location;
    EXPECT_THAT(error.message, StartsWith(location + ": not a metamodel location; "));
  }
}

TEST(MetaStorage2024Test, MessageShowsControlCharactersOfTheLocation) {
  EXPECT_THAT(ErrorOf([] { CMetaStorage2024::Open("a\nb\x1B"); }).message,
              StartsWith("a\\nb\\x1B: not a metamodel location; "));
}

}  // namespace
