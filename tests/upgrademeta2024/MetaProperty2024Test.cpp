#include "upgrademeta2024/MetaProperty2024.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "support/MetaMaker.h"

namespace {

using namespace std::string_literals;

test::SProperty EveryValueDifferent() {
  test::SProperty property;
  property.internalName = "Owner";
  property.displayName = "\u6240\u6709\u8005";
  property.field = "F_OWNER";
  property.type = "lookup";
  property.length = std::numeric_limits<std::uint32_t>::max();
  property.defaultValue = "nobody";
  property.precision = std::numeric_limits<std::uint16_t>::max();
  property.max = "99.5";
  property.min = "-1";
  property.lookupClass = "Person";
  return property;
}

TEST(MetaProperty2024Test, EachGetterGivesItsValue) {
  const auto property = test::Make(EveryValueDifferent());
  EXPECT_EQ(property->GetInternalName(), "Owner");
  EXPECT_EQ(property->GetDisplayName(), "\u6240\u6709\u8005");
  EXPECT_EQ(property->GetField(), "F_OWNER");
  EXPECT_EQ(property->GetType(), "lookup");
  EXPECT_EQ(property->GetLength(), 4294967295U);
  EXPECT_EQ(property->GetDefaultValue(), "nobody");
  EXPECT_EQ(property->GetPrecision(), 65535U);
  EXPECT_EQ(property->GetLookupClass(), "Person");
}

TEST(MetaProperty2024Test, MaximumComesFirstAndMinimumSecond) {
  std::string first = "what was here before";
  std::string second = first;
  test::Make(EveryValueDifferent())->GetMaxMinValue(first, second);
  EXPECT_EQ(first, "99.5");
  EXPECT_EQ(second, "-1");
}

TEST(MetaProperty2024Test, EverythingUnsetIsEmptyOrZero) {
  CMetaPropertyTable2024 table;
  table.Add({});
  const auto property = table.GetProperties().front();
  std::string max = "what was here before";
  std::string min = max;
  property->GetMaxMinValue(max, min);
  for (const std::string& text :
       {property->GetInternalName(), property->GetDisplayName(), property->GetField(), property->GetType(),
        property->GetDefaultValue(), property->GetLookupClass(), max, min}) {
    EXPECT_EQ(text, "");
  }
  EXPECT_EQ(property->GetLength(), 0U);
  EXPECT_EQ(property->GetPrecision(), 0U);
}

TEST(MetaProperty2024Test, TextsAreCopiedWithEveryByte) {
  test::SProperty values = EveryValueDifferent();
  values.defaultValue = "a\0b"s;
  const auto property = test::Make(values);
  values.defaultValue.assign("xxx");
  EXPECT_EQ(property->GetDefaultValue(), "a\0b"s);
  EXPECT_EQ(property->GetField(), "F_OWNER");
}

TEST(MetaProperty2024Test, GetValuesGivesAllAtOnce) {
  const auto property = test::Make(EveryValueDifferent());
  const SMetaPropertyValues2024 values = property->GetValues();
  EXPECT_EQ(values.internalName, "Owner");
  EXPECT_EQ(values.displayName, "\u6240\u6709\u8005");
  EXPECT_EQ(values.field, "F_OWNER");
  EXPECT_EQ(values.type, "lookup");
  EXPECT_EQ(values.length, 4294967295U);
  EXPECT_EQ(values.defaultValue, "nobody");
  EXPECT_EQ(values.precision, 65535U);
  EXPECT_EQ(values.max, "99.5");
  EXPECT_EQ(values.min, "-1");
  EXPECT_EQ(values.lookupClass, "Person");
}

TEST(MetaProperty2024Test, TypeIsNotCheckedAgainstAList) {
  test::SProperty values = EveryValueDifferent();
  values.type = "no such type";
  EXPECT_EQ(test::Make(values)->GetType(), "no such type");
}

}  // namespace
