#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

namespace otherhost {
struct SModel;
}  // namespace otherhost

class CMetaBehavior2024;
class CMetaClass2024;
class CMetaLink2024;

class CMetaDictionary2024 {
 public:
  CMetaDictionary2024(const std::string& side, const otherhost::SModel& model);
  CMetaDictionary2024(const CMetaDictionary2024&) = delete;
  CMetaDictionary2024& operator=(const CMetaDictionary2024&) = delete;

  std::list<std::shared_ptr<CMetaClass2024>> GetClasses();
  std::list<std::shared_ptr<CMetaLink2024>> GetLinks();
  std::list<std::shared_ptr<CMetaBehavior2024>> GetBehaviors();

  bool ExistClass(const std::string& name, std::shared_ptr<CMetaClass2024>& out);
  bool ExistLink(const std::string& name, std::shared_ptr<CMetaLink2024>& out);
  bool ExistBehavior(const std::string& name, std::shared_ptr<CMetaBehavior2024>& out);

  std::shared_ptr<CMetaClass2024> GetClass(const std::string& name);
  std::shared_ptr<CMetaLink2024> GetLink(const std::string& name);
  std::shared_ptr<CMetaBehavior2024> GetBehavior(const std::string& name);

 private:
  /// The elements of one kind.
  template <typename Element>
  struct SKind {
    std::list<std::shared_ptr<Element>> elements;
    std::map<std::string, std::shared_ptr<Element>> byName;
  };

  std::string side_;
  SKind<CMetaClass2024> classes_;
  SKind<CMetaLink2024> links_;
  SKind<CMetaBehavior2024> behaviors_;
};
