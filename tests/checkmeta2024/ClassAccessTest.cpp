#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "checkmeta2024/CheckBehavior2024Helper.h"
#include "checkmeta2024/CheckClass2024Helper.h"
#include "checkmeta2024/CheckMeta2024Helper.h"
#include "checkmeta2024/CheckMetaStrategy2024.h"
#include "checkmeta2024/CheckProperty2024Helper.h"
#include "checkmeta2024/CheckProperty2024Interface.h"
#include "checkmeta2024/CheckResultConverter.h"

// Which operations there are that only their own class may call, and what they take.
namespace {

using Interface = CCheckProperty2024Interface;
using PropertyList = Interface::PropertyList;
using PropertyDict = Interface::PropertyDict;
using JsonPointer = std::shared_ptr<CJsonObject>;
using MethodList = std::list<std::shared_ptr<CMetaMethod2024>>;

/// An instance of this compiles only while Member is of the type. Access is not checked for the names in it.
template <typename Type, Type Member>
struct SIsOfType {};

template struct SIsOfType<void (CCheckMeta2024Helper::*)(), &CCheckMeta2024Helper::InitMetaDictionary>;
template struct SIsOfType<std::string (CCheckMetaStrategy2024::*)(const JsonPointer&, CCheckResultConverter&),
                          &CCheckMetaStrategy2024::ConversionCheckResultToString>;
template struct SIsOfType<bool (CCheckClass2024Helper::*)(std::list<std::string>&, std::list<std::string>&) const,
                          &CCheckClass2024Helper::CheckBehaviorsOfClass>;
template struct SIsOfType<bool (CCheckClass2024Helper::*)(JsonPointer&),
                          &CCheckClass2024Helper::CheckPropertiesOfClass>;
template struct SIsOfType<bool (CCheckClass2024Helper::*)() const, &CCheckClass2024Helper::CheckPropertiesOfClass>;
template struct SIsOfType<bool (CCheckBehavior2024Helper::*)(MethodList&, MethodList&) const,
                          &CCheckBehavior2024Helper::CheckMethodsOfBehavior>;
template struct SIsOfType<void (CCheckBehavior2024Helper::*)(const std::string&, MethodList&, JsonPointer&) const,
                          &CCheckBehavior2024Helper::GetMethodChekResult>;
template struct SIsOfType<bool (CCheckBehavior2024Helper::*)(JsonPointer&),
                          &CCheckBehavior2024Helper::CheckPropertiesOfBehavior>;
template struct SIsOfType<bool (CCheckBehavior2024Helper::*)() const,
                          &CCheckBehavior2024Helper::CheckPropertiesOfBehavior>;
template struct SIsOfType<bool (CCheckProperty2024Helper::*)() const, &CCheckProperty2024Helper::CheckPropertyType>;
template struct SIsOfType<bool (CCheckProperty2024Helper::*)() const, &CCheckProperty2024Helper::CheckPropertyLength>;
template struct SIsOfType<bool (CCheckProperty2024Helper::*)() const, &CCheckProperty2024Helper::CheckPrecision>;
template struct SIsOfType<bool (CCheckProperty2024Helper::*)() const, &CCheckProperty2024Helper::CheckMaxMinValue>;
template struct SIsOfType<bool (CCheckProperty2024Helper::*)() const, &CCheckProperty2024Helper::CheckMaxValue>;
template struct SIsOfType<bool (CCheckProperty2024Helper::*)() const, &CCheckProperty2024Helper::CheckMinValue>;
template struct SIsOfType<bool (CCheckProperty2024Helper::*)() const, &CCheckProperty2024Helper::CheckDefaultValue>;
template struct SIsOfType<JsonPointer (CCheckProperty2024Helper::*)(const std::string&),
                          &CCheckProperty2024Helper::GetPropertyCheckResult>;
template struct SIsOfType<bool (*)(const PropertyList&, const PropertyDict&, PropertyList&),
                          &Interface::HasChangedProperties>;
template struct SIsOfType<void (*)(const std::string&, PropertyList&, JsonPointer&), &Interface::GetPropertyChekResult>;

/// Whether what `call` tries may be called from outside the class.
template <typename Class, typename Call>
constexpr bool IsOpen(const Call& /*call*/) {
  return std::is_invocable_v<Call, Class&>;
}

TEST(ClassAccessTest, AnOperationThatMayBeCalledIsSeenAsSuch) {
  static_assert(IsOpen<CCheckClass2024Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckClass())> {}));
  static_assert(IsOpen<CCheckClass2024Helper>(
      [](auto& helper) -> std::void_t<decltype(helper.CheckClass(std::declval<JsonPointer&>()))> {}));
}

TEST(ClassAccessTest, OperationsOfTheStrategyAndTheCheckOfTwoMetamodelsAreNotOpenBesideTheirOwn) {
  static_assert(!IsOpen<CCheckMetaStrategy2024>(
      [](auto& strategy) -> std::void_t<decltype(strategy.ConversionCheckResultToString(
                             JsonPointer(), std::declval<CCheckResultConverter&>()))> {}));
  static_assert(
      !IsOpen<CCheckMeta2024Helper>([](auto& helper) -> std::void_t<decltype(helper.InitMetaDictionary())> {}));
  static_assert(
      !IsOpen<CCheckMeta2024Helper>([](auto& helper) -> std::void_t<decltype(helper.GetUpgradeContext())> {}));
}

TEST(ClassAccessTest, StepsOfTheElementComparersAreNotOpen) {
  using Names = std::list<std::string>;
  static_assert(!IsOpen<CCheckClass2024Helper>(
      [](auto& helper)
          -> std::void_t<decltype(helper.CheckBehaviorsOfClass(std::declval<Names&>(), std::declval<Names&>()))> {}));
  static_assert(
      !IsOpen<CCheckClass2024Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckPropertiesOfClass())> {}));
  static_assert(!IsOpen<CCheckClass2024Helper>(
      [](auto& helper) -> std::void_t<decltype(helper.CheckPropertiesOfClass(std::declval<JsonPointer&>()))> {}));
  static_assert(!IsOpen<CCheckBehavior2024Helper>(
      [](auto& helper) -> std::void_t<decltype(helper.CheckMethodsOfBehavior(std::declval<MethodList&>(),
                                                                             std::declval<MethodList&>()))> {}));
  static_assert(!IsOpen<CCheckBehavior2024Helper>(
      [](auto& helper) -> std::void_t<decltype(helper.GetMethodChekResult(std::string(), std::declval<MethodList&>(),
                                                                          std::declval<JsonPointer&>()))> {}));
  static_assert(!IsOpen<CCheckBehavior2024Helper>(
      [](auto& helper) -> std::void_t<decltype(helper.CheckPropertiesOfBehavior())> {}));
  static_assert(!IsOpen<CCheckBehavior2024Helper>(
      [](auto& helper) -> std::void_t<decltype(helper.CheckPropertiesOfBehavior(std::declval<JsonPointer&>()))> {}));
}

TEST(ClassAccessTest, StepsOfThePropertyComparersAreNotOpen) {
  using Helper = CCheckProperty2024Helper;
  static_assert(!IsOpen<Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckPropertyType())> {}));
  static_assert(!IsOpen<Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckPropertyLength())> {}));
  static_assert(!IsOpen<Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckPrecision())> {}));
  static_assert(!IsOpen<Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckMaxMinValue())> {}));
  static_assert(!IsOpen<Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckMaxValue())> {}));
  static_assert(!IsOpen<Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckMinValue())> {}));
  static_assert(!IsOpen<Helper>([](auto& helper) -> std::void_t<decltype(helper.CheckDefaultValue())> {}));
  static_assert(
      !IsOpen<Helper>([](auto& helper) -> std::void_t<decltype(helper.GetPropertyCheckResult(std::string()))> {}));
  static_assert(
      !IsOpen<Interface>([](auto& lists) -> std::void_t<decltype(lists.HasChangedProperties(
                                             PropertyList(), PropertyDict(), std::declval<PropertyList&>()))> {}));
  static_assert(!IsOpen<Interface>(
      [](auto& lists) -> std::void_t<decltype(lists.GetPropertyChekResult(std::string(), std::declval<PropertyList&>(),
                                                                          std::declval<JsonPointer&>()))> {}));
}

TEST(ClassAccessTest, BlocksOfTheConverterAreNotOpen) {
  using Converter = CCheckResultConverter;
  using Text = std::string;
  using Kinds = std::list<std::string>;
  using Objects = std::list<JsonPointer>;
  static_assert(!IsOpen<Converter>([](auto& converter) -> std::void_t<decltype(converter.Init())> {}));
  static_assert(!IsOpen<Converter>(
      [](auto& converter)
          -> std::void_t<decltype(converter.ConversionMetaInfoByType(Text(), Text(), Text(), Objects()))> {}));
  static_assert(!IsOpen<Converter>(
      [](auto& converter) -> std::void_t<decltype(converter.ConversionUpdatedMetaInfo(Text(), Text(), Objects()))> {}));
  static_assert(!IsOpen<Converter>(
      [](auto& converter)
          -> std::void_t<decltype(converter.ConversionUpdatedNestedMetaInfo(Text(), Kinds(), Objects()))> {}));
  static_assert(
      !IsOpen<Converter>([](auto& converter) -> std::void_t<decltype(converter.ConversionUpdatedNestedMetaInfo(
                                                 Text(), Text(), Text(), Text(), Text(), Objects()))> {}));
  static_assert(
      !IsOpen<Converter>([](auto& converter) -> std::void_t<decltype(converter.ConversionUpdatedBehaviorInfoOfClass(
                                                 Text(), Text(), Text(), Text(), Objects()))> {}));
  static_assert(!IsOpen<Converter>(
      [](auto& converter) -> std::void_t<decltype(converter.ConversionUpdatedPropertyInfo(Text(), Objects()))> {}));
}

}  // namespace
