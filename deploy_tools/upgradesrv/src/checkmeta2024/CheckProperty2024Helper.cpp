#include "checkmeta2024/CheckProperty2024Helper.h"

#include <array>
#include <cstdint>
#include <string>

#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/ErrorLog.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace {

bool Equal(const std::string& client, const std::string& original) {
  return CStringHelper::StringCompare(client, original, false) == 0;
}

struct SMaxMin {
  explicit SMaxMin(const CMetaProperty2024& property) { property.GetMaxMinValue(max, min); }

  std::string max;
  std::string min;
};

}  // namespace

CCheckProperty2024Helper::CCheckProperty2024Helper(const CMetaProperty2024& clientProperty,
                                                   const CMetaProperty2024& originalProperty)
    : clientProperty_(clientProperty), originalProperty_(originalProperty) {}

CCheckProperty2024Helper::CCheckProperty2024Helper(const CCheckProperty2024Helper&) = default;

CCheckProperty2024Helper::~CCheckProperty2024Helper() = default;

bool CCheckProperty2024Helper::CheckProperty(std::list<std::shared_ptr<CJsonObject>>& entries) {
  using Check = bool (CCheckProperty2024Helper::*)() const;
  struct SRow {
    Check check;
    const char* field;
  };
  static constexpr std::array<SRow, 6> kRows = {{
      {&CCheckProperty2024Helper::CheckPropertyType, checkmeta::kType},
      {&CCheckProperty2024Helper::CheckPropertyLength, checkmeta::kLength},
      {&CCheckProperty2024Helper::CheckPrecision, checkmeta::kPrecision},
      {&CCheckProperty2024Helper::CheckMaxValue, checkmeta::kMax},
      {&CCheckProperty2024Helper::CheckMinValue, checkmeta::kMin},
      {&CCheckProperty2024Helper::CheckDefaultValue, checkmeta::kDefaultValue},
  }};
  bool passed = true;
  for (const SRow& row : kRows) {
    if (!(this->*row.check)()) {
      passed = false;
      entries.push_back(GetPropertyCheckResult(row.field));
    }
  }
  return passed;
}

bool CCheckProperty2024Helper::CheckProperty() {
  using Check = bool (CCheckProperty2024Helper::*)() const;
  struct SRow {
    Check check;
    int line;
    const char* message;
  };
  static constexpr std::array<SRow, 5> kRows = {{
      {&CCheckProperty2024Helper::CheckPropertyType, __LINE__, "property check CheckPropertyType error.property:"},
      {&CCheckProperty2024Helper::CheckPropertyLength, __LINE__, "property check CheckPropertyLength error.property:"},
      {&CCheckProperty2024Helper::CheckPrecision, __LINE__, "property check CheckPrecision error.property:"},
      {&CCheckProperty2024Helper::CheckMaxMinValue, __LINE__, "property CheckMaxMinValue error.property:"},
      {&CCheckProperty2024Helper::CheckDefaultValue, __LINE__, "property CheckDefaultValue error.property:"},
  }};
  bool passed = true;
  for (const SRow& row : kRows) {
    if (!(this->*row.check)()) {
      passed = false;
      checkmeta::LogError({__FILE__, row.line, "CCheckProperty2024Helper::CheckProperty"},
                          row.message + clientProperty_.GetInternalName(), checkmeta::kPropertyCheckError);
    }
  }
  return passed;
}

// In all of them the client's value is fetched first.

bool CCheckProperty2024Helper::CheckPropertyType() const {
  const std::string client = clientProperty_.GetType();
  const std::string original = originalProperty_.GetType();
  return Equal(client, original);
}

bool CCheckProperty2024Helper::CheckPropertyLength() const {
  const std::uint32_t client = clientProperty_.GetLength();
  const std::uint32_t original = originalProperty_.GetLength();
  return client == original;
}

bool CCheckProperty2024Helper::CheckPrecision() const {
  const std::uint16_t client = clientProperty_.GetPrecision();
  const std::uint16_t original = originalProperty_.GetPrecision();
  return client == original;
}

bool CCheckProperty2024Helper::CheckMaxMinValue() const {
  const SMaxMin client(clientProperty_);
  const SMaxMin original(originalProperty_);
  return Equal(client.max, original.max) && Equal(client.min, original.min);
}

bool CCheckProperty2024Helper::CheckMaxValue() const {
  const SMaxMin client(clientProperty_);
  const SMaxMin original(originalProperty_);
  return Equal(client.max, original.max);
}

bool CCheckProperty2024Helper::CheckMinValue() const {
  const SMaxMin client(clientProperty_);
  const SMaxMin original(originalProperty_);
  return Equal(client.min, original.min);
}

bool CCheckProperty2024Helper::CheckDefaultValue() const {
  const std::string client = clientProperty_.GetDefaultValue();
  const std::string original = originalProperty_.GetDefaultValue();
  return Equal(client, original);
}

std::shared_ptr<CJsonObject> CCheckProperty2024Helper::GetPropertyCheckResult(const std::string& updatedField) {
  if (clientPropertyJson_ == nullptr) {
    CMeta2024ToJsonConverter::ConversionProperty2024ToJson(clientProperty_, clientPropertyJson_);
  }
  if (originalPropertyJson_ == nullptr) {
    CMeta2024ToJsonConverter::ConversionProperty2024ToJson(originalProperty_, originalPropertyJson_);
  }
  auto entry = std::make_shared<CJsonObject>();
  entry->SetStringValue(checkmeta::kUpdatedField, updatedField);
  entry->SetObjectValue(checkmeta::kClientProperty, clientPropertyJson_);
  entry->SetObjectValue(checkmeta::kOriginalProperty, originalPropertyJson_);
  return entry;
}
