#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

using testing::Ge;
using testing::UnorderedElementsAre;

/// Counts the properties of a list's elements and collects their types.
template <typename Elements>
std::size_t CountProperties(const Elements& elements, std::set<std::string>& types) {
  std::size_t count = 0;
  for (const auto& element : elements) {
    for (const auto& property : element->GetProperties()) {
      types.insert(property->GetType());
      ++count;
    }
  }
  return count;
}

class ExampleMetamodelsTest : public testing::TestWithParam<const char*> {};

TEST_P(ExampleMetamodelsTest, LoadsAndIsLargeEnoughToShowEveryPropertyType) {
  const std::string path = std::string(UPGRADESRV_SOURCE_DIR) + "/examples/upgrade/" + GetParam();
  const auto dictionary = OpenMetaStorage(path)->Load();
  EXPECT_THAT(dictionary->GetClasses().size(), Ge(30U));
  EXPECT_THAT(dictionary->GetLinks().size(), Ge(12U));
  EXPECT_THAT(dictionary->GetBehaviors().size(), Ge(15U));

  std::set<std::string> types;
  std::size_t properties = CountProperties(dictionary->GetClasses(), types);
  properties += CountProperties(dictionary->GetLinks(), types);
  properties += CountProperties(dictionary->GetBehaviors(), types);
  EXPECT_THAT(properties, Ge(250U));
  EXPECT_THAT(types, UnorderedElementsAre("binary", "boolean", "cascading_property", "classification_property", "date",
                                          "datetime", "e-mail", "float32", "float64", "ip_address", "int16", "int32",
                                          "int64", "int8", "meta_internal_name", "json_object", "json_array", "lookup",
                                          "money", "primary_key", "password", "picture", "reference_object_array",
                                          "string", "text", "time", "url"));
}

INSTANTIATE_TEST_SUITE_P(Document, ExampleMetamodelsTest, testing::Values("2024/metamodel.json", "installation.json"),
                         [](const auto& instance) { return instance.index == 0 ? "Original" : "Client"; });

}  // namespace
