#include "checkmeta2024/Meta2024ToJsonConverter.h"

#include <string>

#include "checkmeta2024/CheckMetaConstants.h"
#include "kvxsptjson/JsonObject.h"
#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaLink2024.h"
#include "upgrademeta2024/MetaMethod2024.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace {

/// What the JSON of every kind of element begins with.
template <typename Element>
void WriteNames(const Element& element, std::shared_ptr<CJsonObject>& target) {
  if (target == nullptr) {
    target = std::make_shared<CJsonObject>();
  }
  target->SetStringValue(checkmeta::kInternalName, element.GetInternalName());
  target->SetStringValue(checkmeta::kDisplayName, element.GetDisplayName());
}

}  // namespace

void CMeta2024ToJsonConverter::ConversionClass2024ToJson(const CMetaClass2024& element,
                                                         std::shared_ptr<CJsonObject>& target) {
  WriteNames(element, target);
  target->SetUInt32Value(checkmeta::kClassId, element.GetClassId());
  target->SetStringValue(checkmeta::kTableName, element.GetTableName());
}

void CMeta2024ToJsonConverter::ConversionLink2024ToJson(const CMetaLink2024& element,
                                                        std::shared_ptr<CJsonObject>& target) {
  ConversionClass2024ToJson(element, target);
}

void CMeta2024ToJsonConverter::ConversionBehavior2024ToJson(const CMetaBehavior2024& element,
                                                            std::shared_ptr<CJsonObject>& target) {
  WriteNames(element, target);
}

void CMeta2024ToJsonConverter::ConversionMethod2024ToJson(const CMetaMethod2024& element,
                                                          std::shared_ptr<CJsonObject>& target) {
  WriteNames(element, target);
}

void CMeta2024ToJsonConverter::ConversionProperty2024ToJson(const CMetaProperty2024& element,
                                                            std::shared_ptr<CJsonObject>& target) {
  std::string max;
  std::string min;
  element.GetMaxMinValue(max, min);
  WriteNames(element, target);
  target->SetStringValue(checkmeta::kField, element.GetField());
  target->SetStringValue(checkmeta::kType, element.GetType());
  target->SetUInt32Value(checkmeta::kLength, element.GetLength());
  target->SetStringValue(checkmeta::kDefaultValue, element.GetDefaultValue());
  target->SetUInt32Value(checkmeta::kPrecision, element.GetPrecision());
  target->SetStringValue(checkmeta::kMax, max);
  target->SetStringValue(checkmeta::kMin, min);
  target->SetStringValue(checkmeta::kLookupInternalName, element.GetLookupClass());
}
