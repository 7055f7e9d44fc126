#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "metareview2024/Finding.h"
#include "metareview2024/Path.h"

class CMetaClass2024;
class CMetaDictionary2024;
class CMetaProperty2024;

namespace metareview {

/// The class ids and tables of classes and links that only the client has.
class CIdentityHolders {
 public:
  /// Both must outlive this.
  CIdentityHolders(const CMetaDictionary2024& client, const CMetaDictionary2024& original);

  /// The first of them that has the class id or table of the class or link; null for none. Ids that are 0 and tables
  /// without a name are nobody's.
  std::shared_ptr<const STaken> FindHolder(const CMetaClass2024& element) const;

 private:
  struct SHolder {
    std::string path;
    std::uint32_t classId;
    std::string tableName;
  };

  template <typename Kind>
  void Add(const CMetaDictionary2024& client, const CMetaDictionary2024& original);

  std::vector<SHolder> holders_;
  std::unordered_map<std::uint32_t, std::size_t> byClassId_;
  std::unordered_map<std::string, std::size_t> byTable_;
};

/// The fields of those properties of an element that only the client has.
class CFieldHolders {
 public:
  /// In the client's order. The property must outlive this.
  void Add(const CMetaProperty2024& property);

  /// The first of them that has the property's field; null for none. Fields without a name are nobody's. `path` is
  /// where the property is.
  std::shared_ptr<const STaken> FindHolder(const CMetaProperty2024& property, SPath path) const;

 private:
  std::unordered_map<std::string, const CMetaProperty2024*> byField_;
};

}  // namespace metareview
