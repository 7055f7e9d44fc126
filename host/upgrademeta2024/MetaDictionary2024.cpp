#include "upgrademeta2024/MetaDictionary2024.h"

#include "kvxsptstring/StringHelper.h"

namespace {

std::string Key(std::string name) {
  CStringHelper::ToLower(name);
  return name;
}

}  // namespace

template <typename Element>
bool CMetaDictionary2024::SKind<Element>::Add(const std::shared_ptr<Element>& element) {
  if (!byName.emplace(Key(element->GetInternalName()), element).second) {
    return false;
  }
  elements.push_back(element);
  return true;
}

template <typename Element>
std::shared_ptr<Element> CMetaDictionary2024::SKind<Element>::Find(const std::string& name) const {
  const auto found = byName.find(Key(name));
  return found != byName.end() ? found->second : nullptr;
}

CMetaDictionary2024::CMetaDictionary2024() = default;

CMetaDictionary2024::~CMetaDictionary2024() = default;

bool CMetaDictionary2024::AddClass(const std::shared_ptr<CMetaClass2024>& element) {
  return classes_.Add(element);
}

bool CMetaDictionary2024::AddLink(const std::shared_ptr<CMetaLink2024>& element) {
  return links_.Add(element);
}

bool CMetaDictionary2024::AddBehavior(const std::shared_ptr<CMetaBehavior2024>& element) {
  return behaviors_.Add(element);
}

std::list<std::shared_ptr<CMetaClass2024>> CMetaDictionary2024::GetClasses() const {
  return classes_.elements;
}

std::list<std::shared_ptr<CMetaLink2024>> CMetaDictionary2024::GetLinks() const {
  return links_.elements;
}

std::list<std::shared_ptr<CMetaBehavior2024>> CMetaDictionary2024::GetBehaviors() const {
  return behaviors_.elements;
}

bool CMetaDictionary2024::ExistClass(const std::string& name, std::shared_ptr<CMetaClass2024>& out) const {
  out = GetClass(name);
  return out != nullptr;
}

bool CMetaDictionary2024::ExistLink(const std::string& name, std::shared_ptr<CMetaLink2024>& out) const {
  out = GetLink(name);
  return out != nullptr;
}

bool CMetaDictionary2024::ExistBehavior(const std::string& name, std::shared_ptr<CMetaBehavior2024>& out) const {
  out = GetBehavior(name);
  return out != nullptr;
}

std::shared_ptr<CMetaClass2024> CMetaDictionary2024::GetClass(const std::string& name) const {
  return classes_.Find(name);
}

std::shared_ptr<CMetaLink2024> CMetaDictionary2024::GetLink(const std::string& name) const {
  return links_.Find(name);
}

std::shared_ptr<CMetaBehavior2024> CMetaDictionary2024::GetBehavior(const std::string& name) const {
  return behaviors_.Find(name);
}
