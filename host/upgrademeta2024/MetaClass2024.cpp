#include "upgrademeta2024/MetaClass2024.h"

#include <utility>

CMetaClass2024::CMetaClass2024(SMetaClassValues2024 values) : values_(std::move(values)) {
  values_.properties.Finish();
}

CMetaClass2024::~CMetaClass2024() = default;

std::string CMetaClass2024::GetInternalName() const {
  return values_.internalName;
}

std::string CMetaClass2024::GetDisplayName() const {
  return values_.displayName;
}

std::string CMetaClass2024::GetTableName() const {
  return values_.tableName;
}

std::uint32_t CMetaClass2024::GetClassId() const {
  return values_.classId;
}

std::list<std::string> CMetaClass2024::GetBehaviors() const {
  return values_.behaviors;
}

std::list<std::shared_ptr<CMetaProperty2024>> CMetaClass2024::GetProperties() const {
  return values_.properties.GetProperties();
}

std::map<std::string, std::shared_ptr<CMetaProperty2024>> CMetaClass2024::GetPropertyDict() const {
  return values_.properties.GetPropertyDict();
}

const SMetaClassValues2024& CMetaClass2024::GetValues() const {
  return values_;
}
