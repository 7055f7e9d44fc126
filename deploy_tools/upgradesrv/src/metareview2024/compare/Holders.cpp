#include "metareview2024/compare/Holders.h"

#include <algorithm>
#include <utility>

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/compare/ElementKinds.h"

namespace metareview {
namespace {

std::string LowerCase(std::string text) {
  CStringHelper::ToLower(text);
  return text;
}

/// The position under a key; `none` where there is none.
template <typename Map, typename Key>
std::size_t PositionOf(const Map& positions, const Key& key, std::size_t none) {
  const auto found = positions.find(key);
  return found != positions.end() ? found->second : none;
}

}  // namespace

CIdentityHolders::CIdentityHolders(const CMetaDictionary2024& client, const CMetaDictionary2024& original) {
  Add<SClassKind>(client, original);
  Add<SLinkKind>(client, original);
}

template <typename Kind>
void CIdentityHolders::Add(const CMetaDictionary2024& client, const CMetaDictionary2024& original) {
  for (const auto& element : ElementsOf<Kind>(client)) {
    const std::string name = element->GetInternalName();
    if (FindElement<Kind>(&original, name) != nullptr) {
      continue;
    }
    SPath path;
    path.kind = Kind::kKind;
    path.thing = ThingOf(Kind::kKind);
    path.element = name;
    const std::size_t position = holders_.size();
    holders_.push_back({FormatPath(path), element->GetClassId(), element->GetTableName()});
    // An earlier holder keeps its place.
    if (element->GetClassId() != 0) {
      byClassId_.emplace(element->GetClassId(), position);
    }
    if (!element->GetTableName().empty()) {
      byTable_.emplace(LowerCase(element->GetTableName()), position);
    }
  }
}

std::shared_ptr<const STaken> CIdentityHolders::FindHolder(const CMetaClass2024& element) const {
  const std::size_t none = holders_.size();
  const std::string table = LowerCase(element.GetTableName());
  const std::size_t first =
      std::min(PositionOf(byClassId_, element.GetClassId(), none), PositionOf(byTable_, table, none));
  if (first == none) {
    return nullptr;
  }
  const SHolder& holder = holders_[first];
  auto taken = std::make_shared<STaken>();
  taken->by = holder.path;
  if (holder.classId == element.GetClassId() && holder.classId != 0) {
    taken->classId = holder.classId;
  }
  if (LowerCase(holder.tableName) == table && !table.empty()) {
    taken->tableName = holder.tableName;
  }
  return taken;
}

void CFieldHolders::Add(const CMetaProperty2024& property) {
  std::string field = LowerCase(property.GetField());
  if (!field.empty()) {
    byField_.emplace(std::move(field), &property);
  }
}

std::shared_ptr<const STaken> CFieldHolders::FindHolder(const CMetaProperty2024& property, SPath path) const {
  const auto found = byField_.find(LowerCase(property.GetField()));
  if (found == byField_.end()) {
    return nullptr;
  }
  path.part = found->second->GetInternalName();
  auto taken = std::make_shared<STaken>();
  taken->by = FormatPath(path);
  taken->field = found->second->GetField();
  return taken;
}

}  // namespace metareview
