#include "metareview2024/rules/TypeChange.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <optional>
#include <string_view>

// The folders of the rules have each pair that is widened, narrowed or relaxed.
namespace {

constexpr std::array<std::string_view, 27> kTypes = {"binary",
                                                     "boolean",
                                                     "cascading_property",
                                                     "classification_property",
                                                     "date",
                                                     "datetime",
                                                     "e-mail",
                                                     "float32",
                                                     "float64",
                                                     "ip_address",
                                                     "int16",
                                                     "int32",
                                                     "int64",
                                                     "int8",
                                                     "meta_internal_name",
                                                     "json_object",
                                                     "json_array",
                                                     "lookup",
                                                     "money",
                                                     "primary_key",
                                                     "password",
                                                     "picture",
                                                     "reference_object_array",
                                                     "string",
                                                     "text",
                                                     "time",
                                                     "url"};

TEST(TypeChangeTest, NoOtherPairOfTypesIsKnown) {
  using metareview::ETypeChange;
  std::map<std::optional<ETypeChange>, int> counts;
  for (const std::string_view client : kTypes) {
    for (const std::string_view original : kTypes) {
      ++counts[metareview::TypeChangeOf(client, original)];
    }
  }
  EXPECT_EQ(counts[ETypeChange::kWidened], 14);
  EXPECT_EQ(counts[ETypeChange::kNarrowed], 27);
  EXPECT_EQ(counts[ETypeChange::kRelaxed], 6);
}

TEST(TypeChangeTest, NothingIsKnownOfOtherNames) {
  EXPECT_FALSE(metareview::TypeChangeOf("", "string"));
  EXPECT_FALSE(metareview::TypeChangeOf("string", ""));
  EXPECT_FALSE(metareview::TypeChangeOf("Int8", "int16"));
}

}  // namespace
