#include "metareview2024/compare/Attributes.h"

#include <utility>

#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaMethod2024.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace metareview {
namespace {

/// What everything that has a name has.
template <typename Thing>
Value NameValueOf(const Thing& thing, EAttribute attribute) {
  return attribute == EAttribute::kInternalName ? thing.GetInternalName() : thing.GetDisplayName();
}

}  // namespace

Value ValueOf(const CMetaClass2024& element, EAttribute attribute) {
  switch (attribute) {
    case EAttribute::kClassId:
      return element.GetClassId();
    case EAttribute::kTableName:
      return element.GetTableName();
    default:
      return NameValueOf(element, attribute);
  }
}

Value ValueOf(const CMetaBehavior2024& behavior, EAttribute attribute) {
  return NameValueOf(behavior, attribute);
}

Value ValueOf(const CMetaMethod2024& method, EAttribute attribute) {
  return NameValueOf(method, attribute);
}

Value ValueOf(const CMetaProperty2024& property, EAttribute attribute) {
  switch (attribute) {
    case EAttribute::kField:
      return property.GetField();
    case EAttribute::kType:
      return property.GetType();
    case EAttribute::kLength:
      return property.GetLength();
    case EAttribute::kDefaultValue:
      return property.GetDefaultValue();
    case EAttribute::kPrecision:
      return std::uint32_t{property.GetPrecision()};
    case EAttribute::kMax:
    case EAttribute::kMin: {
      std::string max;
      std::string min;
      property.GetMaxMinValue(max, min);
      return std::move(attribute == EAttribute::kMax ? max : min);
    }
    case EAttribute::kLookupInternalName:
      return property.GetLookupClass();
    default:
      return NameValueOf(property, attribute);
  }
}

}  // namespace metareview
