#pragma once

#include "metareview2024/Finding.h"
#include "metareview2024/Terms.h"

class CMetaBehavior2024;
class CMetaClass2024;
class CMetaMethod2024;
class CMetaProperty2024;

/// The value of an attribute that AttributesOf() lists for the thing.
namespace metareview {

Value ValueOf(const CMetaClass2024& element, EAttribute attribute);
Value ValueOf(const CMetaBehavior2024& behavior, EAttribute attribute);
Value ValueOf(const CMetaMethod2024& method, EAttribute attribute);
Value ValueOf(const CMetaProperty2024& property, EAttribute attribute);

}  // namespace metareview
