#include "upgrademeta2024/MetaBehavior2024.h"

#include <utility>

#include "kvxsptstring/StringHelper.h"

CMetaBehavior2024::CMetaBehavior2024(SMetaBehaviorValues2024 values) : values_(std::move(values)) {
  values_.properties.Finish();
  for (const std::shared_ptr<CMetaMethod2024>& method : values_.methods) {
    std::string name = method->GetInternalName();
    CStringHelper::ToLower(name);
    methodNames_.insert(std::move(name));
  }
}

CMetaBehavior2024::~CMetaBehavior2024() = default;

std::string CMetaBehavior2024::GetInternalName() const {
  return values_.internalName;
}

std::string CMetaBehavior2024::GetDisplayName() const {
  return values_.displayName;
}

std::list<std::shared_ptr<CMetaMethod2024>> CMetaBehavior2024::GetMethods() const {
  return values_.methods;
}

bool CMetaBehavior2024::ExistMethod(const std::string& name) const {
  std::string lowerName = name;
  CStringHelper::ToLower(lowerName);
  return methodNames_.count(lowerName) != 0;
}

std::list<std::shared_ptr<CMetaProperty2024>> CMetaBehavior2024::GetProperties() const {
  return values_.properties.GetProperties();
}

std::map<std::string, std::shared_ptr<CMetaProperty2024>> CMetaBehavior2024::GetPropertyDict() const {
  return values_.properties.GetPropertyDict();
}

const SMetaBehaviorValues2024& CMetaBehavior2024::GetValues() const {
  return values_;
}
