#include "checkmeta2024/CheckProperty2024Interface.h"

#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/CheckProperty2024Helper.h"
#include "checkmeta2024/JsonArrays.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace {

using PropertyList = CCheckProperty2024Interface::PropertyList;
using PropertyDict = CCheckProperty2024Interface::PropertyDict;

PropertyDict::const_iterator Match(const PropertyDict& dict, const CMetaProperty2024& property) {
  std::string name = property.GetInternalName();
  CStringHelper::ToLower(name);
  return dict.find(name);
}

/// Calls `pair(client, original)` for each property of the list that the dictionary has, in list order.
template <typename Pair>
void ForEachPair(const PropertyList& clientList, const PropertyDict& originalDict, const Pair& pair) {
  for (const std::shared_ptr<CMetaProperty2024>& client : clientList) {
    if (const auto original = Match(originalDict, *client); original != originalDict.end()) {
      pair(client, original->second);
    }
  }
}

}  // namespace

bool CCheckProperty2024Interface::CheckProperties(const PropertyList& clientList, const PropertyList& originalList,
                                                  const PropertyDict& clientDict, const PropertyDict& originalDict,
                                                  PropertyList& deleted, PropertyList& inserted,
                                                  PropertyList& updatedClient, PropertyList& updatedOriginal) {
  const bool hasDeleted = HasChangedProperties(originalList, clientDict, deleted);
  const bool hasInserted = HasChangedProperties(clientList, originalDict, inserted);
  const bool hasUpdated = HasUpdatedProperties(clientList, originalDict, updatedClient, updatedOriginal);
  return !hasDeleted && !hasInserted && !hasUpdated;
}

bool CCheckProperty2024Interface::CheckProperties(const PropertyList& clientList, const PropertyList& originalList,
                                                  const PropertyDict& clientDict, const PropertyDict& originalDict,
                                                  std::shared_ptr<CJsonObject>& result) {
  bool passed = true;
  PropertyList deleted;
  if (HasChangedProperties(originalList, clientDict, deleted)) {
    passed = false;
    GetPropertyChekResult(checkmeta::kDeletedProperties, deleted, result);
  }
  PropertyList inserted;
  if (HasChangedProperties(clientList, originalDict, inserted)) {
    passed = false;
    GetPropertyChekResult(checkmeta::kInsertedProperties, inserted, result);
  }
  if (HasUpdatedProperties(clientList, originalDict, result)) {
    passed = false;
  }
  return passed;
}

bool CCheckProperty2024Interface::HasDeletedProperties(const PropertyList& originalList, const PropertyDict& clientDict,
                                                       PropertyList& deleted) {
  return HasChangedProperties(originalList, clientDict, deleted);
}

bool CCheckProperty2024Interface::HasInsertedProperties(const PropertyList& clientList,
                                                        const PropertyDict& originalDict, PropertyList& inserted) {
  return HasChangedProperties(clientList, originalDict, inserted);
}

bool CCheckProperty2024Interface::HasUpdatedProperties(const PropertyList& clientList, const PropertyDict& originalDict,
                                                       PropertyList& updatedClient, PropertyList& updatedOriginal) {
  bool updated = false;
  ForEachPair(clientList, originalDict, [&](const auto& client, const auto& original) {
    if (!CCheckProperty2024Helper(*client, *original).CheckProperty()) {
      updatedClient.push_back(client);
      updatedOriginal.push_back(original);
      updated = true;
    }
  });
  return updated;
}

bool CCheckProperty2024Interface::HasUpdatedProperties(const PropertyList& clientList, const PropertyDict& originalDict,
                                                       std::shared_ptr<CJsonObject>& result) {
  bool updated = false;
  std::list<std::shared_ptr<CJsonObject>> entries;
  ForEachPair(clientList, originalDict, [&](const auto& client, const auto& original) {
    if (!CCheckProperty2024Helper(*client, *original).CheckProperty(entries)) {
      updated = true;
    }
  });
  checkmeta::SetArrayUnlessEmpty(*result, checkmeta::kUpdatedProperties, entries);
  return updated;
}

bool CCheckProperty2024Interface::HasChangedProperties(const PropertyList& list, const PropertyDict& dict,
                                                       PropertyList& found) {
  bool changed = false;
  for (const std::shared_ptr<CMetaProperty2024>& property : list) {
    if (Match(dict, *property) == dict.end()) {
      found.push_back(property);
      changed = true;
    }
  }
  return changed;
}

void CCheckProperty2024Interface::GetPropertyChekResult(const std::string& key, PropertyList& properties,
                                                        std::shared_ptr<CJsonObject>& result) {
  checkmeta::SetElementArray(*result, key, properties, &CMeta2024ToJsonConverter::ConversionProperty2024ToJson);
}
