#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

namespace otherhost {
struct SElement;
}  // namespace otherhost

class CMetaMethod2024;
class CMetaProperty2024;

class CMetaBehavior2024 {
 public:
  CMetaBehavior2024(const std::string& record, const otherhost::SElement& values);
  ~CMetaBehavior2024();
  CMetaBehavior2024(const CMetaBehavior2024&) = delete;
  CMetaBehavior2024& operator=(const CMetaBehavior2024&) = delete;

  std::string GetInternalName() const;
  std::string GetDisplayName() const;
  std::list<std::shared_ptr<CMetaProperty2024>> GetProperties() const;
  std::map<std::string, std::shared_ptr<CMetaProperty2024>> GetPropertyDict() const;
  std::list<std::shared_ptr<CMetaMethod2024>> GetMethods() const;
  bool ExistMethod(const std::string& name) const;

 private:
  std::string record_;
  std::unique_ptr<const otherhost::SElement> values_;
  std::list<std::shared_ptr<CMetaProperty2024>> properties_;
  std::list<std::shared_ptr<CMetaMethod2024>> methods_;
};
