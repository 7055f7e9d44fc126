#include "checkmeta2024/CheckBehavior2024Helper.h"

#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/ElementProperties.h"
#include "checkmeta2024/JsonArrays.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "kvxsptjson/JsonObject.h"
#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaMethod2024.h"

namespace {

// The messages are those of the class check, word for word: readers of the log tell them apart by function and code.
constexpr checkmeta::SPropertyCheckLog kPropertyLog = {__FILE__,
                                                       "CCheckBehavior2024Helper::CheckPropertiesOfBehavior",
                                                       checkmeta::kBehaviorCheckError,
                                                       {__LINE__, "class check HasDeletedProperties error.class:"},
                                                       {__LINE__, "class check HasInsertedProperties error.class:"},
                                                       {__LINE__, "class check HasUpdatedProperties error.class:"}};

/// Appends the methods that `other` lacks. True when there are none.
bool AppendMissing(const CMetaBehavior2024& behavior, const CMetaBehavior2024& other,
                   std::list<std::shared_ptr<CMetaMethod2024>>& missing) {
  bool complete = true;
  for (const std::shared_ptr<CMetaMethod2024>& method : behavior.GetMethods()) {
    if (!other.ExistMethod(method->GetInternalName())) {
      missing.push_back(method);
      complete = false;
    }
  }
  return complete;
}

}  // namespace

CCheckBehavior2024Helper::CCheckBehavior2024Helper(const CMetaBehavior2024& clientBehavior,
                                                   const CMetaBehavior2024& originalBehavior)
    : clientBehavior_(clientBehavior), originalBehavior_(originalBehavior) {}

bool CCheckBehavior2024Helper::CheckBehavior(std::shared_ptr<CJsonObject>& entry) {
  MethodList deleted;
  MethodList inserted;
  const bool sameMethods = CheckMethodsOfBehavior(deleted, inserted);
  if (!sameMethods) {
    checkmeta::WriteElementOnce(elementWritten_, clientBehavior_, entry,
                                &CMeta2024ToJsonConverter::ConversionBehavior2024ToJson);
    GetMethodChekResult(checkmeta::kDeletedMethods, deleted, entry);
    GetMethodChekResult(checkmeta::kInsertedMethods, inserted, entry);
  }
  return CheckPropertiesOfBehavior(entry) && sameMethods;
}

bool CCheckBehavior2024Helper::CheckBehavior() {
  constexpr const char* kFunction = "CCheckBehavior2024Helper::CheckBehavior";
  bool passed = true;
  MethodList deleted;
  MethodList inserted;
  if (!CheckMethodsOfBehavior(deleted, inserted)) {
    passed = false;
    checkmeta::LogError({__FILE__, __LINE__, kFunction},
                        "behavior check CheckMethodsOfBehavior error.behavior:" + clientBehavior_.GetInternalName(),
                        checkmeta::kBehaviorCheckError);
  }
  if (!CheckPropertiesOfBehavior()) {
    passed = false;
    checkmeta::LogError({__FILE__, __LINE__, kFunction},
                        "behavior check CheckPropertiesOfBehavior error.behavior:" + clientBehavior_.GetInternalName(),
                        checkmeta::kBehaviorCheckError);
  }
  return passed;
}

bool CCheckBehavior2024Helper::CheckMethodsOfBehavior(MethodList& deleted, MethodList& inserted) const {
  const bool noneDeleted = AppendMissing(originalBehavior_, clientBehavior_, deleted);
  const bool noneInserted = AppendMissing(clientBehavior_, originalBehavior_, inserted);
  return noneDeleted && noneInserted;
}

void CCheckBehavior2024Helper::GetMethodChekResult(const std::string& key, MethodList& methods,
                                                   std::shared_ptr<CJsonObject>& entry) const {
  checkmeta::SetElementArray(*entry, key, methods, &CMeta2024ToJsonConverter::ConversionMethod2024ToJson);
}

bool CCheckBehavior2024Helper::CheckPropertiesOfBehavior(std::shared_ptr<CJsonObject>& entry) {
  const bool passed = checkmeta::CheckElementProperties(clientBehavior_, originalBehavior_, entry);
  if (!passed) {
    checkmeta::WriteElementOnce(elementWritten_, clientBehavior_, entry,
                                &CMeta2024ToJsonConverter::ConversionBehavior2024ToJson);
  }
  return passed;
}

bool CCheckBehavior2024Helper::CheckPropertiesOfBehavior() const {
  return checkmeta::CheckElementProperties(clientBehavior_, originalBehavior_, kPropertyLog);
}
