#pragma once

#include <string>

class CMetaMethod2024 {
 public:
  CMetaMethod2024(const std::string& behavior, const std::string& name);
  CMetaMethod2024(const CMetaMethod2024&) = delete;
  CMetaMethod2024& operator=(const CMetaMethod2024&) = delete;

  std::string GetInternalName() const;
  std::string GetDisplayName() const;

 private:
  std::string record_;
  std::string name_;
};
