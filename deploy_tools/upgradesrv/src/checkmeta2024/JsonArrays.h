#pragma once

#include <list>
#include <memory>
#include <string>

#include "kvxsptjson/JsonObject.h"

namespace checkmeta {

/// Sets a member to the array of `objects`; sets none when there are no objects.
inline void SetArrayUnlessEmpty(CJsonObject& target, const std::string& key,
                                const std::list<std::shared_ptr<CJsonObject>>& objects) {
  if (!objects.empty()) {
    target.SetObjectArrayValue(key, objects);
  }
}

/// Sets a member to the array of the elements' JSON, as `convert` writes it; sets none when there are no elements.
template <typename Element, typename Converted>
void SetElementArray(CJsonObject& target, const std::string& key, const std::list<std::shared_ptr<Element>>& elements,
                     void (*convert)(const Converted&, std::shared_ptr<CJsonObject>&)) {
  std::list<std::shared_ptr<CJsonObject>> objects;
  for (const std::shared_ptr<Element>& element : elements) {
    convert(*element, objects.emplace_back(std::make_shared<CJsonObject>()));
  }
  SetArrayUnlessEmpty(target, key, objects);
}

}  // namespace checkmeta
