#pragma once

#include <string>

#include "upgrademeta2024/upgrademeta2024_export.h"

/// A method of a behavior. Immutable.
class UPGRADEMETA2024_EXPORT CMetaMethod2024 {
 public:
  CMetaMethod2024(std::string internalName, std::string displayName);
  ~CMetaMethod2024();

  std::string GetInternalName() const;
  std::string GetDisplayName() const;

 private:
  std::string internalName_;
  std::string displayName_;
};
