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

/// The object that an element is written to; an empty pointer gets a new one.
CJsonObject& Object(std::shared_ptr<CJsonObject>& target) {
  if (target == nullptr) {
    target = std::make_shared<CJsonObject>();
  }
  return *target;
}

/// What the JSON of every kind of element begins with.
template <typename Element>
void WriteNames(const Element& element, CJsonObject& json) {
  json.SetStringValue(checkmeta::kInternalName, element.GetInternalName());
  json.SetStringValue(checkmeta::kDisplayName, element.GetDisplayName());
}

}  // namespace

void CMeta2024ToJsonConverter::ConversionClass2024ToJson(const CMetaClass2024& element,
                                                         std::shared_ptr<CJsonObject>& target) {
  CJsonObject& json = Object(target);
  WriteNames(element, json);
  json.SetUInt32Value(checkmeta::kClassId, element.GetClassId());
  json.SetStringValue(checkmeta::kTableName, element.GetTableName());
}

void CMeta2024ToJsonConverter::ConversionLink2024ToJson(const CMetaLink2024& element,
                                                        std::shared_ptr<CJsonObject>& target) {
  ConversionClass2024ToJson(element, target);
}

void CMeta2024ToJsonConverter::ConversionBehavior2024ToJson(const CMetaBehavior2024& element,
                                                            std::shared_ptr<CJsonObject>& target) {
  WriteNames(element, Object(target));
}

void CMeta2024ToJsonConverter::ConversionMethod2024ToJson(const CMetaMethod2024& element,
                                                          std::shared_ptr<CJsonObject>& target) {
  WriteNames(element, Object(target));
}

void CMeta2024ToJsonConverter::ConversionProperty2024ToJson(const CMetaProperty2024& element,
                                                            std::shared_ptr<CJsonObject>& target) {
  CJsonObject& json = Object(target);
  std::string max;
  std::string min;
  element.GetMaxMinValue(max, min);
  WriteNames(element, json);
  json.SetStringValue(checkmeta::kField, element.GetField());
  json.SetStringValue(checkmeta::kType, element.GetType());
  json.SetUInt32Value(checkmeta::kLength, element.GetLength());
  json.SetStringValue(checkmeta::kDefaultValue, element.GetDefaultValue());
  json.SetUInt32Value(checkmeta::kPrecision, element.GetPrecision());
  json.SetStringValue(checkmeta::kMax, max);
  json.SetStringValue(checkmeta::kMin, min);
  json.SetStringValue(checkmeta::kLookupInternalName, element.GetLookupClass());
}
