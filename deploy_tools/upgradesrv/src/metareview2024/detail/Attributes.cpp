#include "metareview2024/detail/Attributes.h"

#include <array>

namespace metareview {

EThing ThingOf(EKind kind) {
  constexpr std::array<EThing, 3> kThings = {EThing::kClass, EThing::kLink, EThing::kBehavior};
  return kThings.at(static_cast<std::size_t>(kind));
}

const std::vector<EAttribute>& AttributesOf(EThing thing) {
  using A = EAttribute;
  static const std::vector<EAttribute> ofClass = {A::kInternalName, A::kDisplayName, A::kClassId, A::kTableName};
  static const std::vector<EAttribute> named = {A::kInternalName, A::kDisplayName};
  static const std::vector<EAttribute> none = {};
  static const std::vector<EAttribute> ofProperty = {A::kInternalName, A::kDisplayName,       A::kField,     A::kType,
                                                     A::kLength,       A::kDefaultValue,      A::kPrecision, A::kMax,
                                                     A::kMin,          A::kLookupInternalName};
  // In the order of EThing.
  static const std::array<const std::vector<EAttribute>*, 6> lists = {&ofClass, &ofClass, &named,
                                                                      &none,    &named,   &ofProperty};
  return *lists.at(static_cast<std::size_t>(thing));
}

}  // namespace metareview
