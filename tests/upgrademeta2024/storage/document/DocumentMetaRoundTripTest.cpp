#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <memory>

#include "support/MetaGenerator.h"
#include "support/MetaText.h"
#include "support/TemporaryDirectory.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

TEST(DocumentMetaRoundTripTest, AnyMetamodelLoadsAsItWasSavedAndSavesTheSameAgain) {
  const test::CTemporaryDirectory directory;
  const bool holds = rc::check("saving and loading gives the same metamodel", [&directory] {
    const std::shared_ptr<CMetaDictionary2024> dictionary = test::GenerateMetamodel(test::EControls::kWithNul);

    const auto first = OpenMetaStorage(directory.File("first.json"));
    first->Save(*dictionary);
    const auto loaded = first->Load();
    RC_ASSERT(test::TextOf(*loaded) == test::TextOf(*dictionary));

    OpenMetaStorage(directory.File("second.json"))->Save(*loaded);
    RC_ASSERT(test::ReadFile(directory.File("second.json")) == test::ReadFile(directory.File("first.json")));
  });
  EXPECT_TRUE(holds);
}

}  // namespace
