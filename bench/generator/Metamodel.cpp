#include "generator/Metamodel.h"

#include <array>
#include <utility>

#include "generator/PropertyTemplates.h"
#include "generator/Random.h"
#include "generator/StratifiedPick.h"

namespace bench {
namespace {

// Streams of random numbers; those below stand for the kinds.
constexpr std::uint32_t kElementStream = 10;
constexpr std::uint32_t kPropertyStream = 11;
constexpr std::uint32_t kChangeStream = 12;

/// Calls `visit(kind, index in the kind, index among all)`.
template <typename Visit>
void ForEachElement(const SSize& size, const Visit& visit) {
  std::uint32_t ordinal = 0;
  for (const auto& [kind, count] :
       {std::pair{kClasses, size.classes}, {kLinks, size.links}, {kBehaviors, size.behaviors}}) {
    for (std::uint32_t index = 0; index < count; ++index) {
      visit(kind, index, ordinal++);
    }
  }
}

class CClient {
 public:
  CClient(const SSize& size, const SVariant& variant, std::uint32_t seed)
      : size_(size),
        seed_(seed),
        properties_(seed, kPropertyStream, kPropertyBlock,
                    {variant.changedProperties, variant.deletedProperties, variant.insertedProperties}) {}

  void Edit(SElement& element, std::uint32_t ordinal) {
    CRandom random(seed_, kChangeStream, ordinal);
    std::vector<SMetaPropertyValues2024> edited;
    std::uint64_t index = std::uint64_t{ordinal} * size_.propertiesEach;
    for (const SMetaPropertyValues2024& property : element.properties) {
      const std::uint32_t mark = properties_.At(index++);
      if (mark != kDeleted) {
        edited.push_back(property);
      }
      if (mark == kChanged) {
        ChangeOneAttribute(edited.back(), random.Below(6));
      } else if (mark == kFollowedByInserted) {
        SMetaPropertyValues2024& inserted = edited.emplace_back(property);
        inserted.internalName = element.Keep("CU_" + std::string(property.internalName));
        inserted.field = element.Keep("CU_" + std::string(property.field));
      }
    }
    element.properties = std::move(edited);
  }

 private:
  enum EMark : std::uint32_t { kUntouched, kChanged, kDeleted, kFollowedByInserted };

  SSize size_;
  std::uint32_t seed_;
  CStratifiedPick properties_;
};

}  // namespace

void GenerateOriginal(const SSize& size, std::uint32_t seed, const ElementSink& sink) {
  const CElementSource source(seed, size.propertiesEach);
  ForEachElement(size, [&](EKind kind, std::uint32_t index, std::uint32_t) { sink(kind, source.Make(kind, index)); });
}

void GenerateClient(const SSize& size, const SVariant& variant, std::uint32_t seed, const ElementSink& sink) {
  enum EMark : std::uint32_t { kKept, kDeleted, kFollowedByInserted };
  const CElementSource source(seed, size.propertiesEach);
  CStratifiedPick elements(seed, kElementStream, kElementBlock, {variant.replacedElements, variant.replacedElements});
  CClient client(size, variant, seed);
  ForEachElement(size, [&](EKind kind, std::uint32_t index, std::uint32_t ordinal) {
    const std::uint32_t mark = elements.At(ordinal);
    if (mark != kDeleted) {
      SElement element = source.Make(kind, index);
      client.Edit(element, ordinal);
      sink(kind, element);
    }
    if (mark == kFollowedByInserted) {
      // No original element has an index as high as that.
      sink(kind, source.Make(kind, size.Elements() + index));
    }
  });
}

}  // namespace bench
