#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaProperty2024.h"

/// What elements are made of, under the names that documents give their members and databases their columns, in the
/// order of both. The first is the name, which is never empty. A number may be whatever its type holds.
namespace metamembers {

template <typename Values>
struct SMember {
  using Text = decltype(Values::internalName);

  const char* name;
  std::variant<Text Values::*, std::uint32_t Values::*, std::uint16_t Values::*> value;

  bool IsText() const { return std::holds_alternative<Text Values::*>(value); }
  /// The greatest number that a member holds which is no text.
  std::uint64_t GetMax() const {
    return std::holds_alternative<std::uint16_t Values::*>(value) ? std::numeric_limits<std::uint16_t>::max()
                                                                  : std::numeric_limits<std::uint32_t>::max();
  }
};

/// Calls `text(value)` or `number(value)` with the value of a member.
template <typename Member, typename Values, typename OnText, typename OnNumber>
void Visit(const Member& member, Values& values, const OnText& text, const OnNumber& number) {
  std::visit(
      [&](const auto where) {
        if constexpr (std::is_integral_v<std::decay_t<decltype(values.*where)>>) {
          number(values.*where);
        } else {
          text(values.*where);
        }
      },
      member.value);
}

struct SMethodValues {
  std::string internalName;
  std::string displayName;
};

inline constexpr std::array<SMember<SMetaClassValues2024>, 4> kClass = {
    {{"internal_name", &SMetaClassValues2024::internalName},
     {"display_name", &SMetaClassValues2024::displayName},
     {"class_id", &SMetaClassValues2024::classId},
     {"table_name", &SMetaClassValues2024::tableName}}};

inline constexpr std::array<SMember<SMetaBehaviorValues2024>, 2> kBehavior = {
    {{"internal_name", &SMetaBehaviorValues2024::internalName},
     {"display_name", &SMetaBehaviorValues2024::displayName}}};

inline constexpr std::array<SMember<SMethodValues>, 2> kMethod = {
    {{"internal_name", &SMethodValues::internalName}, {"display_name", &SMethodValues::displayName}}};

inline constexpr std::array<SMember<SMetaPropertyValues2024>, 10> kProperty = {
    {{"internal_name", &SMetaPropertyValues2024::internalName},
     {"display_name", &SMetaPropertyValues2024::displayName},
     {"field", &SMetaPropertyValues2024::field},
     {"type", &SMetaPropertyValues2024::type},
     {"length", &SMetaPropertyValues2024::length},
     {"default_value", &SMetaPropertyValues2024::defaultValue},
     {"precision", &SMetaPropertyValues2024::precision},
     {"max", &SMetaPropertyValues2024::max},
     {"min", &SMetaPropertyValues2024::min},
     {"lookup_internal_name", &SMetaPropertyValues2024::lookupClass}}};

}  // namespace metamembers
