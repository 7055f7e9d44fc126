#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>

namespace otherhost {
struct SElement;
}  // namespace otherhost

class CMetaProperty2024;

class CMetaClass2024 {
 public:
  CMetaClass2024(const std::string& record, const otherhost::SElement& values);
  ~CMetaClass2024();
  CMetaClass2024(const CMetaClass2024&) = delete;
  CMetaClass2024& operator=(const CMetaClass2024&) = delete;

  std::string GetInternalName() const;
  std::string GetDisplayName() const;
  std::string GetTableName() const;
  std::uint32_t GetClassId() const;
  std::list<std::string> GetBehaviors() const;
  std::list<std::shared_ptr<CMetaProperty2024>> GetProperties() const;
  std::map<std::string, std::shared_ptr<CMetaProperty2024>> GetPropertyDict() const;

 private:
  std::string record_;
  std::unique_ptr<const otherhost::SElement> values_;
  std::list<std::shared_ptr<CMetaProperty2024>> properties_;
};
