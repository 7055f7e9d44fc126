#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

#include "checkmeta2024/checkmeta2024_export.h"

class CJsonObject;
class CMetaProperty2024;

/// Compares the properties of an element of the client with those of the original's element of the same name.
/// Properties are matched by their lower-cased internal names; a dictionary is keyed by these. Output lists are
/// appended to.
///
/// Findings in a result object, each member present only when it has items, in this order:
/// - "deleted_properties", "inserted_properties": element JSON of what only the original or only the client has, in the
///   order of that side's list;
/// - "updated_properties": property update entries (see CCheckProperty2024Helper), in the order of the client's list.
class CHECKMETA2024_EXPORT CCheckProperty2024Interface {
 public:
  using PropertyList = std::list<std::shared_ptr<CMetaProperty2024>>;
  using PropertyDict = std::map<std::string, std::shared_ptr<CMetaProperty2024>>;

  /// True when nothing was deleted, inserted or updated. Logs every check of a pair that fails. The two updated lists
  /// are parallel.
  static bool CheckProperties(const PropertyList& clientList, const PropertyList& originalList,
                              const PropertyDict& clientDict, const PropertyDict& originalDict, PropertyList& deleted,
                              PropertyList& inserted, PropertyList& updatedClient, PropertyList& updatedOriginal);
  /// The same answer, the findings written into `result` (not null) and nothing logged.
  static bool CheckProperties(const PropertyList& clientList, const PropertyList& originalList,
                              const PropertyDict& clientDict, const PropertyDict& originalDict,
                              std::shared_ptr<CJsonObject>& result);

  /// True when a property of `originalList` is missing from `clientDict`.
  static bool HasDeletedProperties(const PropertyList& originalList, const PropertyDict& clientDict,
                                   PropertyList& deleted);
  /// True when a property of `clientList` is missing from `originalDict`.
  static bool HasInsertedProperties(const PropertyList& clientList, const PropertyDict& originalDict,
                                    PropertyList& inserted);
  /// True when a property that both have differs.
  static bool HasUpdatedProperties(const PropertyList& clientList, const PropertyDict& originalDict,
                                   PropertyList& updatedClient, PropertyList& updatedOriginal);
  static bool HasUpdatedProperties(const PropertyList& clientList, const PropertyDict& originalDict,
                                   std::shared_ptr<CJsonObject>& result);

 private:
  static bool HasChangedProperties(const PropertyList& list, const PropertyDict& dict, PropertyList& found);
  static void GetPropertyChekResult(const std::string& key, PropertyList& properties,
                                    std::shared_ptr<CJsonObject>& result);
};
