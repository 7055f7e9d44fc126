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
SFindings Compare(CMetaDictionary2024& clientDictionary, CMetaDictionary2024& originalDictionary) {
  SFindings findings;
  for (const auto& clientElement : Kind::List(clientDictionary)) {
    std::shared_ptr<typename Kind::Element> originalElement;
    if (!Kind::Exist(originalDictionary, clientElement->GetInternalName(), originalElement) ||
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
  for (const auto& originalElement : Kind::List(originalDictionary)) {
    std::shared_ptr<typename Kind::Element> clientElement;
    if (!Kind::Exist(clientDictionary, originalElement->GetInternalName(), clientElement)) {
      findings.passed = false;
      findings.deleted.push_back(ToJson<Kind>(*originalElement));
    }
  }
  return findings;
}

template <typename Kind>
bool CheckWithDocument(CMetaDictionary2024& clientDictionary, CMetaDictionary2024& originalDictionary,
                       CJsonObject& checkResult) {
  SFindings findings = Compare<Kind>(clientDictionary, originalDictionary);
  if (findings.passed) {
    return true;
  }
  // Filled before it is set: when a list cannot be set, the document is as it was.
  const auto kindObject = std::make_shared<CJsonObject>();
  // Each list has been copied once it is set; a large one need not stay beside its copies.
  const auto moveInto = [&kindObject](const char* key, std::list<std::shared_ptr<CJsonObject>>& entries) {
    checkmeta::SetArrayUnlessEmpty(*kindObject, key, entries);
    entries.clear();
  };
  moveInto(Kind::kInsertedKey, findings.inserted);
  moveInto(Kind::kUpdatedKey, findings.updated);
  moveInto(Kind::kDeletedKey, findings.deleted);
  checkResult.SetObjectValue(Kind::kKey, kindObject);
  return false;
}

template <typename Kind>
[[noreturn]] void Fail(const std::string& name, int line) {
  checkmeta::LogError({__FILE__, line, Kind::kFunction}, Kind::kLogPrefix + name, Kind::kCode);
  throw CKVXException(static_cast<int>(Kind::kCode));
}

template <typename Kind>
bool CheckWithoutDocument(CMetaDictionary2024& clientDictionary, CMetaDictionary2024& originalDictionary) {
  for (const auto& clientElement : Kind::List(clientDictionary)) {
    const std::string name = clientElement->GetInternalName();
    const auto originalElement = Kind::Get(originalDictionary, name);
    if (originalElement == nullptr) {
      continue;
    }
    typename Kind::Comparer comparer(*clientElement, *originalElement);
    if (!Kind::Compare(comparer)) {
      Fail<Kind>(name, Kind::kClientLine);
    }
  }
  for (const auto& originalElement : Kind::List(originalDictionary)) {
    const std::string name = originalElement->GetInternalName();
    if (Kind::Get(clientDictionary, name) == nullptr) {
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
