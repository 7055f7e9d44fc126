#include "generator/ElementSource.h"

#include <utility>

#include "checkmeta2024/PropertyTypes.h"
#include "generator/PropertyTemplates.h"
#include "generator/Random.h"

namespace bench {
namespace {

// No divisor in common with the number of property names, so that a walk meets each name once.
constexpr std::uint32_t kNameStep = 611;
constexpr std::uint32_t kReferableClasses = 500;
constexpr std::uint32_t kUsedBehaviors = 100;

SMetaPropertyValues2024 MakeProperty(const SName& name, CRandom& random, SElement& element) {
  SMetaPropertyValues2024 values =
      element.properties.empty() ? PrimaryKeyTemplate() : PropertyTemplate(random.Below(1U << 16U));
  values.internalName = name.internalName;
  values.displayName = name.displayName;
  values.field = element.Keep("F_" + name.storedName);
  if (values.type == checkmeta::kTypeLookup || values.type == checkmeta::kTypeReferenceObjectArray) {
    values.lookupClass = element.Keep(ClassName(random.Below(kReferableClasses)).internalName);
  }
  return values;
}

}  // namespace

CElementSource::CElementSource(std::uint32_t seed, std::uint32_t propertiesEach)
    : seed_(seed), propertiesEach_(propertiesEach) {}

SElement CElementSource::Make(EKind kind, std::uint32_t index) const {
  CRandom random(seed_, kind, index);
  SElement element;
  if (kind == kBehaviors) {
    element.name = BehaviorName(index);
    const std::uint32_t first = random.Below(1U << 16U);
    const std::uint32_t count = 2 + random.Below(3);
    for (std::uint32_t i = 0; i < count; ++i) {
      element.methods.push_back(MethodName(first + i));
    }
  } else {
    element.name = kind == kClasses ? ClassName(index) : LinkName(index);
    element.classId = (kind == kClasses ? 1000U : 1000000U) + index;
    const std::uint32_t first = random.Below(kUsedBehaviors);
    const std::uint32_t count = 1 + random.Below(kind == kClasses ? 8 : 3);
    for (std::uint32_t i = 0; i < count; ++i) {
      element.behaviors.push_back(BehaviorName((first + 7 * i) % kUsedBehaviors).internalName);
    }
  }
  const std::vector<SName>& names = PropertyNames();
  const auto first = random.Below(static_cast<std::uint32_t>(names.size()));
  for (std::uint32_t i = 0; i < propertiesEach_; ++i) {
    element.properties.push_back(MakeProperty(names[(first + kNameStep * i) % names.size()], random, element));
  }
  return element;
}

}  // namespace bench
