#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "upgrademeta2024/upgrademeta2024_export.h"

/// What a property is made of. The texts are copied when a property is made; "" and 0 mean unset.
struct SMetaPropertyValues2024 {
  std::string_view internalName;
  std::string_view displayName;
  /// The column that stores the property's values.
  std::string_view field;
  /// The name of the property type, for example "string" or "lookup"; not checked against a list.
  std::string_view type;
  std::uint32_t length = 0;
  std::string_view defaultValue;
  std::uint16_t precision = 0;
  /// Maximum and minimum as text.
  std::string_view max;
  std::string_view min;
  /// For lookups, the internal name of the class looked up.
  std::string_view lookupClass;
};

/// A property of a class, link or behavior. Immutable; all texts are UTF-8. Properties are made by
/// CMetaPropertyTable2024 and held by shared pointers.
class UPGRADEMETA2024_EXPORT CMetaProperty2024 {
 public:
  std::string GetInternalName() const;
  std::string GetDisplayName() const;
  std::string GetField() const;
  std::string GetType() const;
  std::uint32_t GetLength() const;
  std::uint16_t GetPrecision() const;
  /// Fills in the maximum, then the minimum.
  void GetMaxMinValue(std::string& max, std::string& min) const;
  std::string GetDefaultValue() const;
  std::string GetLookupClass() const;

  /// All values at once, without copies; valid as long as the property.
  SMetaPropertyValues2024 GetValues() const;

 private:
  friend class CMetaPropertyTable2024;

  enum EText { kInternalName, kDisplayName, kField, kType, kDefaultValue, kMax, kMin, kLookupClass, kTextCount };

  CMetaProperty2024(const std::string& texts, const SMetaPropertyValues2024& values, std::uint32_t begin);
  std::string_view Text(EText text) const {
    const std::uint32_t begin = text == kInternalName ? begin_ : ends_[text - 1U];
    return {texts_->data() + begin, ends_[text] - begin};
  }

  // All texts of a table's properties are in one string, one after the other: with a quarter of a million properties
  // a side, eight strings each would take several times the memory of their characters.
  const std::string* texts_;
  std::uint32_t begin_;
  std::array<std::uint32_t, kTextCount> ends_;
  std::uint32_t length_;
  std::uint16_t precision_;
};
