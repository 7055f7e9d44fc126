#pragma once

#include <list>
#include <memory>
#include <string>

#include "checkmeta2024/checkmeta2024_export.h"

class CJsonObject;
class CMetaProperty2024;

/// Compares a property of the client with the original's of the same name: type, length, precision, maximum, minimum
/// and default value, texts byte by byte. Both properties must outlive the helper. Copies share what has been
/// serialized.
class CHECKMETA2024_EXPORT CCheckProperty2024Helper {
 public:
  CCheckProperty2024Helper(const CMetaProperty2024& clientProperty, const CMetaProperty2024& originalProperty);
  CCheckProperty2024Helper(const CCheckProperty2024Helper&);
  CCheckProperty2024Helper& operator=(const CCheckProperty2024Helper&) = delete;
  ~CCheckProperty2024Helper();

  /// Appends one property update entry for each attribute that differs and logs nothing. An entry has the members
  /// "updated_field" ("type", "length", "precision", "max", "min" or "default_value", which is also the attribute's key
  /// in the element JSON), "client_property" and "original_property" (the element JSON of either side). True when
  /// nothing differs.
  bool CheckProperty(std::list<std::shared_ptr<CJsonObject>>& entries);

  /// Logs one line for each check that fails, maximum and minimum being one check. True when none does.
  bool CheckProperty();

 private:
  bool CheckPropertyType() const;
  bool CheckPropertyLength() const;
  bool CheckPrecision() const;
  bool CheckMaxMinValue() const;
  bool CheckMaxValue() const;
  bool CheckMinValue() const;
  bool CheckDefaultValue() const;
  std::shared_ptr<CJsonObject> GetPropertyCheckResult(const std::string& updatedField);

  std::shared_ptr<CJsonObject> clientPropertyJson_;
  std::shared_ptr<CJsonObject> originalPropertyJson_;
  const CMetaProperty2024& clientProperty_;
  const CMetaProperty2024& originalProperty_;
};
