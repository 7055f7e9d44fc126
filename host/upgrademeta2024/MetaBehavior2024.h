#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>
#include <unordered_set>

#include "upgrademeta2024/MetaMethod2024.h"
#include "upgrademeta2024/MetaPropertyTable2024.h"
#include "upgrademeta2024/upgrademeta2024_export.h"

/// What a behavior is made of.
struct SMetaBehaviorValues2024 {
  std::string internalName;
  std::string displayName;
  std::list<std::shared_ptr<CMetaMethod2024>> methods;
  CMetaPropertyTable2024 properties;
};

/// A behavior of the metamodel. Immutable. Names of its methods or properties that differ only in ASCII case are
/// refused by every storage, not here.
class UPGRADEMETA2024_EXPORT CMetaBehavior2024 {
 public:
  explicit CMetaBehavior2024(SMetaBehaviorValues2024 values);
  ~CMetaBehavior2024();
  CMetaBehavior2024(const CMetaBehavior2024&) = delete;
  CMetaBehavior2024& operator=(const CMetaBehavior2024&) = delete;

  std::string GetInternalName() const;
  std::string GetDisplayName() const;
  std::list<std::shared_ptr<CMetaMethod2024>> GetMethods() const;
  /// Whether there is a method of that internal name, ASCII case ignored.
  bool ExistMethod(const std::string& name) const;
  std::list<std::shared_ptr<CMetaProperty2024>> GetProperties() const;
  /// The same properties by lower-cased internal name.
  std::map<std::string, std::shared_ptr<CMetaProperty2024>> GetPropertyDict() const;

  /// Everything at once, without copies; valid as long as the element.
  const SMetaBehaviorValues2024& GetValues() const;

 private:
  SMetaBehaviorValues2024 values_;
  std::unordered_set<std::string> methodNames_;
};
