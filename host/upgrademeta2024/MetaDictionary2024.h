#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>

#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaLink2024.h"
#include "upgrademeta2024/upgrademeta2024_export.h"

/// One complete metamodel: its classes, links and behaviors, each kind in the order in which it was added.
/// Names are looked up without regard to ASCII case, each kind for itself.
class UPGRADEMETA2024_EXPORT CMetaDictionary2024 {
 public:
  /// The generation that every document and database of a metamodel names.
  static constexpr std::uint32_t kGeneration = 2024;

  CMetaDictionary2024();
  ~CMetaDictionary2024();
  CMetaDictionary2024(const CMetaDictionary2024&) = delete;
  CMetaDictionary2024& operator=(const CMetaDictionary2024&) = delete;

  /// Adds an element. False, and nothing added, when the kind already has one of that name.
  bool AddClass(const std::shared_ptr<CMetaClass2024>& element);
  bool AddLink(const std::shared_ptr<CMetaLink2024>& element);
  bool AddBehavior(const std::shared_ptr<CMetaBehavior2024>& element);

  std::list<std::shared_ptr<CMetaClass2024>> GetClasses() const;
  std::list<std::shared_ptr<CMetaLink2024>> GetLinks() const;
  std::list<std::shared_ptr<CMetaBehavior2024>> GetBehaviors() const;

  /// True, and `out` filled, when the kind has an element of that name; false, and `out` empty, otherwise.
  bool ExistClass(const std::string& name, std::shared_ptr<CMetaClass2024>& out) const;
  bool ExistLink(const std::string& name, std::shared_ptr<CMetaLink2024>& out) const;
  bool ExistBehavior(const std::string& name, std::shared_ptr<CMetaBehavior2024>& out) const;

  /// An empty pointer when there is no such element.
  std::shared_ptr<CMetaClass2024> GetClass(const std::string& name) const;
  std::shared_ptr<CMetaLink2024> GetLink(const std::string& name) const;
  std::shared_ptr<CMetaBehavior2024> GetBehavior(const std::string& name) const;

 private:
  /// The elements of one kind.
  template <typename Element>
  struct SKind {
    std::list<std::shared_ptr<Element>> elements;
    std::unordered_map<std::string, std::shared_ptr<Element>> byName;

    bool Add(const std::shared_ptr<Element>& element);
    std::shared_ptr<Element> Find(const std::string& name) const;
  };

  SKind<CMetaClass2024> classes_;
  SKind<CMetaLink2024> links_;
  SKind<CMetaBehavior2024> behaviors_;
};
