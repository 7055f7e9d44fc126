#include "generator/PropertyTemplates.h"

#include <array>
#include <vector>

#include "checkmeta2024/PropertyTypes.h"

namespace bench {
namespace {

struct SRow {
  std::uint32_t weight;
  std::string_view type;
  std::uint32_t length;
  std::string_view defaultValue;
  std::uint16_t precision;
  std::string_view max;
  std::string_view min;
};

constexpr std::array<SRow, checkmeta::kPropertyTypes.size()> kRows = {{
    {1, checkmeta::kTypePrimaryKey, 36, "", 0, "", ""},
    {27, checkmeta::kTypeString, 64, "", 0, "", ""},
    {5, checkmeta::kTypeText, 4000, "", 0, "", ""},
    {16, checkmeta::kTypeLookup, 36, "", 0, "", ""},
    {5, checkmeta::kTypeDate, 10, "", 0, "", ""},
    {4, checkmeta::kTypeDateTime, 19, "", 0, "", ""},
    {1, checkmeta::kTypeTime, 8, "06:00:00", 0, "", ""},
    {6, checkmeta::kTypeBoolean, 1, "false", 0, "", ""},
    {2, checkmeta::kTypeInt8, 1, "3", 0, "5", "1"},
    {3, checkmeta::kTypeInt16, 2, "72", 0, "2000", "1"},
    {5, checkmeta::kTypeInt32, 4, "60", 0, "99990", "0"},
    {2, checkmeta::kTypeInt64, 8, "0", 0, "999999999", "0"},
    {2, checkmeta::kTypeFloat32, 4, "8.00", 2, "10000.00", "0.00"},
    {5, checkmeta::kTypeFloat64, 8, "", 6, "", ""},
    {3, checkmeta::kTypeMoney, 18, "0.00", 2, "9999999.99", "0.00"},
    {1, checkmeta::kTypeBinary, 16777216, "", 0, "", ""},
    {1, checkmeta::kTypePicture, 65536, "", 0, "", ""},
    {1, checkmeta::kTypeUrl, 2048, "", 0, "", ""},
    {1, checkmeta::kTypeEMail, 254, "", 0, "", ""},
    {1, checkmeta::kTypeIpAddress, 45, "", 0, "", ""},
    {1, checkmeta::kTypePassword, 128, "", 0, "", ""},
    {2, checkmeta::kTypeJsonArray, 65535, "[]", 0, "", ""},
    {2, checkmeta::kTypeJsonObject, 65535, R"({"unit":"mm"})", 0, "", ""},
    {1, checkmeta::kTypeMetaInternalName, 64, "Part", 0, "", ""},
    {1, checkmeta::kTypeCascadingProperty, 255, "", 0, "", ""},
    {1, checkmeta::kTypeClassificationProperty, 255, "", 0, "", ""},
    {1, checkmeta::kTypeReferenceObjectArray, 4000, "", 0, "", ""},
}};

SMetaPropertyValues2024 FromRow(const SRow& row) {
  SMetaPropertyValues2024 values;
  values.type = row.type;
  values.length = row.length;
  values.defaultValue = row.defaultValue;
  values.precision = row.precision;
  values.max = row.max;
  values.min = row.min;
  return values;
}

}  // namespace

const SMetaPropertyValues2024& PropertyTemplate(std::uint32_t draw) {
  static const std::vector<SMetaPropertyValues2024> weighted = [] {
    std::vector<SMetaPropertyValues2024> all;
    for (const SRow& row : kRows) {
      all.insert(all.end(), row.weight, FromRow(row));
    }
    return all;
  }();
  return weighted[draw % weighted.size()];
}

const SMetaPropertyValues2024& PrimaryKeyTemplate() {
  static const SMetaPropertyValues2024 values = FromRow(kRows.front());
  return values;
}

void ChangeOneAttribute(SMetaPropertyValues2024& values, std::uint32_t draw) {
  switch (draw % 6) {
    case 0:
      values.type = values.type == checkmeta::kTypeString ? checkmeta::kTypeText : checkmeta::kTypeString;
      break;
    case 1:
      values.length += 16;
      break;
    case 2:
      ++values.precision;
      break;
    case 3:
      values.max = "500000";
      break;
    case 4:
      values.min = "-10";
      break;
    default:
      values.defaultValue = "n/a";
  }
}

}  // namespace bench
