#include "checkmeta2024/CheckMeta2024Helper.h"

#include <list>

#include "checkmeta2024/ErrorLog.h"
#include "checkmeta2024/JsonArrays.h"
#include "checkmeta2024/MetaKinds.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptjson/JsonObject.h"
#include "upgrademeta2024/MetaMgr2024.h"

namespace {

template <typename Kind>
std::shared_ptr<CJsonObject> ToJson(const typename Kind::Element& element) {
  auto entry = std::make_shared<CJsonObject>();
  Kind::kConvert(element, entry);
  return entry;
}

/// What a check found, in the order of the lists.
struct SFindings {
  bool passed = true;
  std::list<std::shared_ptr<CJsonObject>> inserted;
  std::list<std::shared_ptr<CJsonObject>> updated;
  std::list<std::shared_ptr<CJsonObject>> deleted;
};

template <typename Kind>
SFindings Compare(const CMetaDictionary2024& clientDictionary, const CMetaDictionary2024& originalDictionary) {
  SFindings findings;
  for (const auto& clientElement : (clientDictionary.*Kind::kList)()) {
    std::shared_ptr<typename Kind::Element> originalElement;
    if (!(originalDictionary.*Kind::kExist)(clientElement->GetInternalName(), originalElement) ||
        originalElement == nullptr) {
      findings.inserted.push_back(ToJson<Kind>(*clientElement));
      continue;
    }
    auto entry = std::make_shared<CJsonObject>();
    typename Kind::Comparer comparer(*clientElement, *originalElement);
    if (!Kind::Compare(comparer, entry)) {
      findings.passed = false;
      findings.updated.push_back(std::move(entry));
    }
  }
  for (const auto& originalElement : (originalDictionary.*Kind::kList)()) {
    std::shared_ptr<typename Kind::Element> clientElement;
    if (!(clientDictionary.*Kind::kExist)(originalElement->GetInternalName(), clientElement)) {
      findings.passed = false;
      findings.deleted.push_back(ToJson<Kind>(*originalElement));
    }
  }
  return findings;
}

template <typename Kind>
bool CheckWithDocument(const CMetaDictionary2024& clientDictionary, const CMetaDictionary2024& originalDictionary,
                       CJsonObject& checkResult) {
  SFindings findings = Compare<Kind>(clientDictionary, originalDictionary);
  if (findings.passed) {
    return true;
  }
  // The kind object is filled where it stays: a large one is not copied once more.
  checkResult.SetObjectValue(Kind::Key(), std::make_shared<CJsonObject>());
  const std::shared_ptr<CJsonObject> kindObject = checkResult.GetObjectValue(Kind::Key());
  // Each list has been copied once it is set; a large one need not stay beside its copies.
  const auto moveInto = [&kindObject](const std::string& key, std::list<std::shared_ptr<CJsonObject>>& entries) {
    checkmeta::SetArrayUnlessEmpty(*kindObject, key, entries);
    entries.clear();
  };
  moveInto(Kind::InsertedKey(), findings.inserted);
  moveInto(Kind::UpdatedKey(), findings.updated);
  moveInto(Kind::DeletedKey(), findings.deleted);
  return false;
}

template <typename Kind>
[[noreturn]] void Fail(const std::string& name, int line) {
  checkmeta::LogError({__FILE__, line, Kind::kFunction}, Kind::kLogPrefix + name, Kind::kCode);
  throw CKVXException(static_cast<int>(Kind::kCode));
}

template <typename Kind>
bool CheckWithoutDocument(const CMetaDictionary2024& clientDictionary, const CMetaDictionary2024& originalDictionary) {
  for (const auto& clientElement : (clientDictionary.*Kind::kList)()) {
    const std::string name = clientElement->GetInternalName();
    const auto originalElement = (originalDictionary.*Kind::kGet)(name);
    if (originalElement == nullptr) {
      continue;
    }
    typename Kind::Comparer comparer(*clientElement, *originalElement);
    if (!Kind::Compare(comparer)) {
      Fail<Kind>(name, Kind::kClientLine);
    }
  }
  for (const auto& originalElement : (originalDictionary.*Kind::kList)()) {
    const std::string name = originalElement->GetInternalName();
    if ((clientDictionary.*Kind::kGet)(name) == nullptr) {
      Fail<Kind>(name, Kind::kOriginalLine);
    }
  }
  return true;
}

}  // namespace

CCheckMeta2024Helper::CCheckMeta2024Helper(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext)
    : CSupportUpgradeHandler(handlerContext, upgradeContext) {}

CCheckMeta2024Helper::CCheckMeta2024Helper(const CCheckMeta2024Helper&) = default;

CCheckMeta2024Helper::~CCheckMeta2024Helper() = default;

void CCheckMeta2024Helper::InitMetaDictionary() {
  if (originalDictionary_ != nullptr && clientDictionary_ != nullptr) {
    return;
  }
  clientDictionary_ = CMetaMgr2024::Instance().LoadClientMeta(GetUpgradeContext());
  originalDictionary_ = CMetaMgr2024::Instance().LoadOriginalMeta(GetUpgradeContext());
}

bool CCheckMeta2024Helper::CheckMetaClasses(std::shared_ptr<CJsonObject>& checkResult) {
  InitMetaDictionary();
  return CheckWithDocument<checkmeta::SClassKind>(*clientDictionary_, *originalDictionary_, *checkResult);
}

bool CCheckMeta2024Helper::CheckMetaClasses() {
  InitMetaDictionary();
  return CheckWithoutDocument<checkmeta::SClassKind>(*clientDictionary_, *originalDictionary_);
}

bool CCheckMeta2024Helper::CheckMetaLinks(std::shared_ptr<CJsonObject>& checkResult) {
  InitMetaDictionary();
  return CheckWithDocument<checkmeta::SLinkKind>(*clientDictionary_, *originalDictionary_, *checkResult);
}

bool CCheckMeta2024Helper::CheckMetaLinks() {
  InitMetaDictionary();
  return CheckWithoutDocument<checkmeta::SLinkKind>(*clientDictionary_, *originalDictionary_);
}

bool CCheckMeta2024Helper::CheckMetaBehaviors(std::shared_ptr<CJsonObject>& checkResult) {
  InitMetaDictionary();
  return CheckWithDocument<checkmeta::SBehaviorKind>(*clientDictionary_, *originalDictionary_, *checkResult);
}

bool CCheckMeta2024Helper::CheckMetaBehaviors() {
  InitMetaDictionary();
  return CheckWithoutDocument<checkmeta::SBehaviorKind>(*clientDictionary_, *originalDictionary_);
}
