#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>

#include "upgrademeta2024/MetaPropertyTable2024.h"
#include "upgrademeta2024/upgrademeta2024_export.h"

/// What a class or link is made of.
struct SMetaClassValues2024 {
  std::string internalName;
  std::string displayName;
  std::uint32_t classId = 0;
  std::string tableName;
  /// The names of the behaviors that it uses, as listed: repetitions and spelling are kept.
  std::list<std::string> behaviors;
  CMetaPropertyTable2024 properties;
};

/// A class of the metamodel. Immutable. Its lists are in the order of the metamodel; names of its properties that
/// differ only in ASCII case are refused by every storage, not here.
class UPGRADEMETA2024_EXPORT CMetaClass2024 {
 public:
  explicit CMetaClass2024(SMetaClassValues2024 values);
  ~CMetaClass2024();
  CMetaClass2024(const CMetaClass2024&) = delete;
  CMetaClass2024& operator=(const CMetaClass2024&) = delete;

  std::string GetInternalName() const;
  std::string GetDisplayName() const;
  std::string GetTableName() const;
  std::uint32_t GetClassId() const;
  std::list<std::string> GetBehaviors() const;
  std::list<std::shared_ptr<CMetaProperty2024>> GetProperties() const;
  /// The same properties by lower-cased internal name.
  std::map<std::string, std::shared_ptr<CMetaProperty2024>> GetPropertyDict() const;

  /// Everything at once, without copies; valid as long as the element.
  const SMetaClassValues2024& GetValues() const;

 private:
  SMetaClassValues2024 values_;
};
