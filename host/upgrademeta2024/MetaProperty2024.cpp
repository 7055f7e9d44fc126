#include "upgrademeta2024/MetaProperty2024.h"

namespace {

/// Mostly both are empty, for which assigning takes a call.
void Assign(std::string& target, std::string_view text) {
  target.clear();
  if (!text.empty()) {
    target.append(text);
  }
}

}  // namespace

CMetaProperty2024::CMetaProperty2024(const std::string& texts, const SMetaPropertyValues2024& values,
                                     std::uint32_t begin)
    : texts_(&texts), begin_(begin), ends_(), length_(values.length), precision_(values.precision) {}

std::string CMetaProperty2024::GetInternalName() const {
  return std::string(Text(kInternalName));
}

std::string CMetaProperty2024::GetDisplayName() const {
  return std::string(Text(kDisplayName));
}

std::string CMetaProperty2024::GetField() const {
  return std::string(Text(kField));
}

std::string CMetaProperty2024::GetType() const {
  return std::string(Text(kType));
}

std::uint32_t CMetaProperty2024::GetLength() const {
  return length_;
}

std::uint16_t CMetaProperty2024::GetPrecision() const {
  return precision_;
}

void CMetaProperty2024::GetMaxMinValue(std::string& max, std::string& min) const {
  Assign(max, Text(kMax));
  Assign(min, Text(kMin));
}

std::string CMetaProperty2024::GetDefaultValue() const {
  return std::string(Text(kDefaultValue));
}

std::string CMetaProperty2024::GetLookupClass() const {
  return std::string(Text(kLookupClass));
}

SMetaPropertyValues2024 CMetaProperty2024::GetValues() const {
  SMetaPropertyValues2024 values;
  values.internalName = Text(kInternalName);
  values.displayName = Text(kDisplayName);
  values.field = Text(kField);
  values.type = Text(kType);
  values.length = length_;
  values.defaultValue = Text(kDefaultValue);
  values.precision = precision_;
  values.max = Text(kMax);
  values.min = Text(kMin);
  values.lookupClass = Text(kLookupClass);
  return values;
}
