#include "checkmeta2024/CheckClass2024Helper.h"

#include <set>

#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/ElementProperties.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaClass2024.h"

namespace {

constexpr checkmeta::SPropertyCheckLog kPropertyLog = {__FILE__,
                                                       "CCheckClass2024Helper::CheckPropertiesOfClass",
                                                       checkmeta::kClassCheckError,
                                                       {__LINE__, "class check HasDeletedProperties error.class:"},
                                                       {__LINE__, "class check HasInsertedProperties error.class:"},
                                                       {__LINE__, "class check HasUpdatedProperties error.class:"}};

std::list<std::string> LowerCased(std::list<std::string> names) {
  for (std::string& name : names) {
    CStringHelper::ToLower(name);
  }
  return names;
}

/// Appends the names that `others` lacks. True when there are none.
bool AppendMissing(const std::list<std::string>& names, const std::list<std::string>& others,
                   std::list<std::string>& missing) {
  const std::set<std::string> known(others.begin(), others.end());
  bool complete = true;
  for (const std::string& name : names) {
    if (known.count(name) == 0) {
      missing.push_back(name);
      complete = false;
    }
  }
  return complete;
}

}  // namespace

CCheckClass2024Helper::CCheckClass2024Helper(const CMetaClass2024& clientClass, const CMetaClass2024& originalClass)
    : clientClass_(clientClass), originalClass_(originalClass) {}

bool CCheckClass2024Helper::CheckClass(std::shared_ptr<CJsonObject>& entry) {
  std::list<std::string> deleted;
  std::list<std::string> inserted;
  const bool sameBehaviors = CheckBehaviorsOfClass(deleted, inserted);
  if (!sameBehaviors) {
    checkmeta::WriteElementOnce(elementWritten_, clientClass_, entry,
                                &CMeta2024ToJsonConverter::ConversionClass2024ToJson);
    if (!deleted.empty()) {
      entry->SetStringArrayValue(checkmeta::kDeletedBehaviors, deleted);
    }
    if (!inserted.empty()) {
      entry->SetStringArrayValue(checkmeta::kInsertedBehaviors, inserted);
    }
  }
  return CheckPropertiesOfClass(entry) && sameBehaviors;
}

bool CCheckClass2024Helper::CheckClass() {
  constexpr const char* kFunction = "CCheckClass2024Helper::CheckClass";
  bool passed = true;
  std::list<std::string> deleted;
  std::list<std::string> inserted;
  if (!CheckBehaviorsOfClass(deleted, inserted)) {
    passed = false;
    checkmeta::LogError({__FILE__, __LINE__, kFunction},
                        "class check CheckBehaviorsOfClass error.class:" + clientClass_.GetInternalName(),
                        checkmeta::kClassCheckError);
  }
  if (!CheckPropertiesOfClass()) {
    passed = false;
    checkmeta::LogError({__FILE__, __LINE__, kFunction},
                        "class check CheckPropertiesOfClass error.class:" + clientClass_.GetInternalName(),
                        checkmeta::kClassCheckError);
  }
  return passed;
}

bool CCheckClass2024Helper::CheckBehaviorsOfClass(std::list<std::string>& deleted,
                                                  std::list<std::string>& inserted) const {
  const std::list<std::string> original = LowerCased(originalClass_.GetBehaviors());
  const std::list<std::string> client = LowerCased(clientClass_.GetBehaviors());
  const bool noneDeleted = AppendMissing(original, client, deleted);
  const bool noneInserted = AppendMissing(client, original, inserted);
  return noneDeleted && noneInserted;
}

bool CCheckClass2024Helper::CheckPropertiesOfClass(std::shared_ptr<CJsonObject>& entry) {
  const bool passed = checkmeta::CheckElementProperties(clientClass_, originalClass_, entry);
  if (!passed) {
    checkmeta::WriteElementOnce(elementWritten_, clientClass_, entry,
                                &CMeta2024ToJsonConverter::ConversionClass2024ToJson);
  }
  return passed;
}

bool CCheckClass2024Helper::CheckPropertiesOfClass() const {
  return checkmeta::CheckElementProperties(clientClass_, originalClass_, kPropertyLog);
}
