#pragma once

#include <list>
#include <memory>
#include <string>

#include "metareview2024/Terms.h"
#include "upgrademeta2024/MetaDictionary2024.h"

/// What tells the three kinds of elements apart; the comparison is written once over these.
namespace metareview {

struct SClassKind {
  using Element = CMetaClass2024;
  static constexpr EKind kKind = EKind::kClass;
  static constexpr auto kList = &CMetaDictionary2024::GetClasses;
  static constexpr auto kFind = &CMetaDictionary2024::GetClass;
};

struct SLinkKind {
  using Element = CMetaLink2024;
  static constexpr EKind kKind = EKind::kLink;
  static constexpr auto kList = &CMetaDictionary2024::GetLinks;
  static constexpr auto kFind = &CMetaDictionary2024::GetLink;
};

struct SBehaviorKind {
  using Element = CMetaBehavior2024;
  static constexpr EKind kKind = EKind::kBehavior;
  static constexpr auto kList = &CMetaDictionary2024::GetBehaviors;
  static constexpr auto kFind = &CMetaDictionary2024::GetBehavior;
};

template <typename Kind>
std::list<std::shared_ptr<typename Kind::Element>> ElementsOf(const CMetaDictionary2024& dictionary) {
  return (dictionary.*Kind::kList)();
}

/// Null where the dictionary has no such element, and where there is no dictionary.
template <typename Kind>
std::shared_ptr<const typename Kind::Element> FindElement(const CMetaDictionary2024* dictionary,
                                                          const std::string& name) {
  return dictionary != nullptr ? (dictionary->*Kind::kFind)(name) : nullptr;
}

}  // namespace metareview
