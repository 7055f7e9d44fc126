#pragma once

#include <memory>

#include "checkmeta2024/checkmeta2024_export.h"

class CJsonObject;
class CMetaBehavior2024;
class CMetaClass2024;
class CMetaLink2024;
class CMetaMethod2024;
class CMetaProperty2024;

/// Writes the element JSON, the flat object by which the check result document names an element. Every member of a kind
/// is always written, values as the metamodel gives them, in this order:
///
///     class, link       "internal_name" "display_name" "class_id" (number) "table_name"
///     behavior, method  "internal_name" "display_name"
///     property          "internal_name" "display_name" "field" "type" "length" (number) "default_value"
///                       "precision" (number) "max" "min" "lookup_internal_name"
///
/// An empty target pointer gets a new object. Other members of a target stay as they are.
class CHECKMETA2024_EXPORT CMeta2024ToJsonConverter {
 public:
  static void ConversionClass2024ToJson(const CMetaClass2024& element, std::shared_ptr<CJsonObject>& target);
  static void ConversionLink2024ToJson(const CMetaLink2024& element, std::shared_ptr<CJsonObject>& target);
  static void ConversionBehavior2024ToJson(const CMetaBehavior2024& element, std::shared_ptr<CJsonObject>& target);
  static void ConversionMethod2024ToJson(const CMetaMethod2024& element, std::shared_ptr<CJsonObject>& target);
  static void ConversionProperty2024ToJson(const CMetaProperty2024& element, std::shared_ptr<CJsonObject>& target);
};
