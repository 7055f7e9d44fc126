#include <algorithm>

#include "kvxsptstring/StringHelper.h"
#include "otherhost/Host.h"
#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/MetaLink2024.h"
#include "upgrademeta2024/MetaMethod2024.h"
#include "upgrademeta2024/MetaMgr2024.h"
#include "upgrademeta2024/MetaProperty2024.h"

using otherhost::CHost;
using otherhost::SElement;

namespace {

using PropertyList = std::list<std::shared_ptr<CMetaProperty2024>>;
using PropertyDict = std::map<std::string, std::shared_ptr<CMetaProperty2024>>;

/// A property or method of an element is recorded by the element and its own name.
std::string Member(const std::string& element, const std::string& name) {
  return element + "." + name;
}

PropertyList MakeProperties(const std::string& element, const SElement& values) {
  PropertyList properties;
  for (const otherhost::SProperty& property : values.properties) {
    properties.push_back(std::make_shared<CMetaProperty2024>(element, property));
  }
  return properties;
}

std::string LowerCased(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return name;
}

PropertyDict MakeDict(const SElement& values, const PropertyList& properties) {
  PropertyDict dict;
  auto property = properties.begin();
  for (const otherhost::SProperty& value : values.properties) {
    dict.emplace(LowerCased(value.name), *property++);
  }
  return dict;
}

/// Fills the elements of one kind of a dictionary.
template <typename Kind>
void Fill(Kind& kind, const std::string& record, const std::vector<SElement>& values,
          const std::set<std::string>& hollowNames) {
  using Element = typename decltype(kind.elements)::value_type::element_type;
  for (const SElement& value : values) {
    kind.elements.push_back(std::make_shared<Element>(record + " " + value.name, value));
    kind.byName.emplace(value.name, kind.elements.back());
  }
  for (const std::string& name : hollowNames) {
    kind.byName[name] = nullptr;
  }
}

template <typename Kind, typename Element>
bool Exist(const Kind& kind, const std::string& call, const std::string& name, std::shared_ptr<Element>& out) {
  CHost::Current().Record(call + "(" + name + ")");
  const auto found = kind.byName.find(name);
  if (found == kind.byName.end()) {
    return false;
  }
  out = found->second;
  return true;
}

template <typename Kind>
auto Get(const Kind& kind, const std::string& call, const std::string& name) {
  CHost::Current().Record(call + "(" + name + ")");
  const auto found = kind.byName.find(name);
  return found != kind.byName.end() ? found->second : nullptr;
}

template <typename Value>
Value Recorded(const std::string& record, const char* operation, Value value) {
  CHost::Current().Record(record + ": " + operation + "()");
  return value;
}

}  // namespace

CMetaMgr2024& CMetaMgr2024::Instance() {
  static CMetaMgr2024 instance;
  return instance;
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::LoadOriginalMeta(CUpgradeContext& /*upgradeContext*/) {
  CHost::Current().Record("LoadOriginalMeta()");
  return std::make_shared<CMetaDictionary2024>("original", CHost::Current().original);
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::LoadClientMeta(CUpgradeContext& /*upgradeContext*/) {
  CHost::Current().Record("LoadClientMeta()");
  return std::make_shared<CMetaDictionary2024>("client", CHost::Current().client);
}

CMetaDictionary2024::CMetaDictionary2024(const std::string& side, const otherhost::SModel& model) : side_(side) {
  Fill(classes_, side + " class", model.classes, model.hollowNames);
  Fill(links_, side + " link", model.links, model.hollowNames);
  Fill(behaviors_, side + " behavior", model.behaviors, model.hollowNames);
}

std::list<std::shared_ptr<CMetaClass2024>> CMetaDictionary2024::GetClasses() {
  return Recorded(side_, "GetClasses", classes_.elements);
}

std::list<std::shared_ptr<CMetaLink2024>> CMetaDictionary2024::GetLinks() {
  return Recorded(side_, "GetLinks", links_.elements);
}

std::list<std::shared_ptr<CMetaBehavior2024>> CMetaDictionary2024::GetBehaviors() {
  return Recorded(side_, "GetBehaviors", behaviors_.elements);
}

bool CMetaDictionary2024::ExistClass(const std::string& name, std::shared_ptr<CMetaClass2024>& out) {
  return Exist(classes_, side_ + ": ExistClass", name, out);
}

bool CMetaDictionary2024::ExistLink(const std::string& name, std::shared_ptr<CMetaLink2024>& out) {
  return Exist(links_, side_ + ": ExistLink", name, out);
}

bool CMetaDictionary2024::ExistBehavior(const std::string& name, std::shared_ptr<CMetaBehavior2024>& out) {
  return Exist(behaviors_, side_ + ": ExistBehavior", name, out);
}

std::shared_ptr<CMetaClass2024> CMetaDictionary2024::GetClass(const std::string& name) {
  return Get(classes_, side_ + ": GetClass", name);
}

std::shared_ptr<CMetaLink2024> CMetaDictionary2024::GetLink(const std::string& name) {
  return Get(links_, side_ + ": GetLink", name);
}

std::shared_ptr<CMetaBehavior2024> CMetaDictionary2024::GetBehavior(const std::string& name) {
  return Get(behaviors_, side_ + ": GetBehavior", name);
}

CMetaClass2024::CMetaClass2024(const std::string& record, const SElement& values)
    : record_(record), values_(std::make_unique<const SElement>(values)), properties_(MakeProperties(record, values)) {}

CMetaClass2024::~CMetaClass2024() = default;

std::string CMetaClass2024::GetInternalName() const {
  return Recorded(record_, "GetInternalName", values_->name);
}

std::string CMetaClass2024::GetDisplayName() const {
  return Recorded(record_, "GetDisplayName", values_->name + "!");
}

std::string CMetaClass2024::GetTableName() const {
  return Recorded(record_, "GetTableName", "T_" + values_->name);
}

std::uint32_t CMetaClass2024::GetClassId() const {
  return Recorded(record_, "GetClassId", 7U);
}

std::list<std::string> CMetaClass2024::GetBehaviors() const {
  return Recorded(record_, "GetBehaviors",
                  std::list<std::string>(values_->behaviors.begin(), values_->behaviors.end()));
}

PropertyList CMetaClass2024::GetProperties() const {
  return Recorded(record_, "GetProperties", properties_);
}

PropertyDict CMetaClass2024::GetPropertyDict() const {
  return Recorded(record_, "GetPropertyDict", MakeDict(*values_, properties_));
}

CMetaBehavior2024::CMetaBehavior2024(const std::string& record, const SElement& values)
    : record_(record), values_(std::make_unique<const SElement>(values)), properties_(MakeProperties(record, values)) {
  for (const std::string& name : values.methods) {
    methods_.push_back(std::make_shared<CMetaMethod2024>(record, name));
  }
}

CMetaBehavior2024::~CMetaBehavior2024() = default;

std::string CMetaBehavior2024::GetInternalName() const {
  return Recorded(record_, "GetInternalName", values_->name);
}

std::string CMetaBehavior2024::GetDisplayName() const {
  return Recorded(record_, "GetDisplayName", values_->name + "!");
}

PropertyList CMetaBehavior2024::GetProperties() const {
  return Recorded(record_, "GetProperties", properties_);
}

PropertyDict CMetaBehavior2024::GetPropertyDict() const {
  return Recorded(record_, "GetPropertyDict", MakeDict(*values_, properties_));
}

std::list<std::shared_ptr<CMetaMethod2024>> CMetaBehavior2024::GetMethods() const {
  return Recorded(record_, "GetMethods", methods_);
}

bool CMetaBehavior2024::ExistMethod(const std::string& name) const {
  CHost::Current().Record(record_ + ": ExistMethod(" + name + ")");
  return std::find(values_->methods.begin(), values_->methods.end(), name) != values_->methods.end();
}

CMetaMethod2024::CMetaMethod2024(const std::string& behavior, const std::string& name)
    : record_(Member(behavior, name)), name_(name) {}

std::string CMetaMethod2024::GetInternalName() const {
  return Recorded(record_, "GetInternalName", name_);
}

std::string CMetaMethod2024::GetDisplayName() const {
  return Recorded(record_, "GetDisplayName", name_ + "!");
}

CMetaProperty2024::CMetaProperty2024(const std::string& element, const otherhost::SProperty& values)
    : record_(Member(element, values.name)), values_(std::make_unique<const otherhost::SProperty>(values)) {}

CMetaProperty2024::~CMetaProperty2024() = default;

std::string CMetaProperty2024::GetInternalName() const {
  return Recorded(record_, "GetInternalName", values_->name);
}

std::string CMetaProperty2024::GetDisplayName() const {
  return Recorded(record_, "GetDisplayName", values_->name + "!");
}

std::string CMetaProperty2024::GetField() const {
  return Recorded(record_, "GetField", "F_" + values_->name);
}

std::string CMetaProperty2024::GetType() const {
  return Recorded(record_, "GetType", values_->type);
}

std::uint32_t CMetaProperty2024::GetLength() const {
  return Recorded(record_, "GetLength", values_->length);
}

std::uint16_t CMetaProperty2024::GetPrecision() const {
  return Recorded(record_, "GetPrecision", values_->precision);
}

void CMetaProperty2024::GetMaxMinValue(std::string& max, std::string& min) const {
  CHost::Current().Record(record_ + ": GetMaxMinValue()");
  max = values_->max;
  min = values_->min;
}

std::string CMetaProperty2024::GetDefaultValue() const {
  return Recorded(record_, "GetDefaultValue", values_->defaultValue);
}

std::string CMetaProperty2024::GetLookupClass() const {
  return Recorded(record_, "GetLookupClass", std::string("Unit"));
}
