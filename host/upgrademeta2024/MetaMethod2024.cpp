#include "upgrademeta2024/MetaMethod2024.h"

#include <utility>

CMetaMethod2024::CMetaMethod2024(std::string internalName, std::string displayName)
    : internalName_(std::move(internalName)), displayName_(std::move(displayName)) {}

CMetaMethod2024::~CMetaMethod2024() = default;

std::string CMetaMethod2024::GetInternalName() const {
  return internalName_;
}

std::string CMetaMethod2024::GetDisplayName() const {
  return displayName_;
}
