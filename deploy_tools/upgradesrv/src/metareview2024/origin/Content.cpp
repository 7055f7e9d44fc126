#include "metareview2024/origin/Content.h"

#include <algorithm>
#include <vector>

#include "metareview2024/Terms.h"
#include "metareview2024/compare/Attributes.h"
#include "metareview2024/compare/Parts.h"
#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaMethod2024.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace metareview {
namespace {

template <typename Thing>
bool HaveSameAttributes(EThing thing, const Thing& a, const Thing& b) {
  const std::vector<EAttribute>& attributes = AttributesOf(thing);
  return std::all_of(attributes.begin(), attributes.end(), [&a, &b](EAttribute attribute) {
    return attribute == EAttribute::kInternalName || ValueOf(a, attribute) == ValueOf(b, attribute);
  });
}

/// Whether both have the same names, and `same` holds for the positions of each pair.
template <typename Same>
bool HaveSameItems(CNames& a, CNames& b, const Same& same) {
  if (a.Size() != b.Size()) {
    return false;
  }
  for (std::size_t i = 0; i < a.Size(); ++i) {
    const std::optional<std::size_t> found = b.Find(a.At(i));
    if (!found || !same(i, *found)) {
      return false;
    }
  }
  return true;
}

template <typename Part>
bool HaveSameParts(CParts<Part> a, CParts<Part> b) {
  return HaveSameItems(a.Names(), b.Names(),
                       [&a, &b](std::size_t i, std::size_t j) { return HaveSameContent(a.At(i), b.At(j)); });
}

template <typename Element>
bool HaveSameProperties(const Element& a, const Element& b) {
  return HaveSameParts(CParts<CMetaProperty2024>(a.GetProperties()), CParts<CMetaProperty2024>(b.GetProperties()));
}

bool ListSameBehaviors(const CMetaClass2024& a, const CMetaClass2024& b) {
  CNames namesOfA = ListedBehaviors(a);
  CNames namesOfB = ListedBehaviors(b);
  return HaveSameItems(namesOfA, namesOfB, [](std::size_t, std::size_t) { return true; });
}

}  // namespace

bool HaveSameContent(const CMetaClass2024& a, const CMetaClass2024& b) {
  return HaveSameAttributes(EThing::kClass, a, b) && ListSameBehaviors(a, b) && HaveSameProperties(a, b);
}

bool HaveSameContent(const CMetaBehavior2024& a, const CMetaBehavior2024& b) {
  return HaveSameAttributes(EThing::kBehavior, a, b) &&
         HaveSameParts(CParts<CMetaMethod2024>(a.GetMethods()), CParts<CMetaMethod2024>(b.GetMethods())) &&
         HaveSameProperties(a, b);
}

bool HaveSameContent(const CMetaMethod2024& a, const CMetaMethod2024& b) {
  return HaveSameAttributes(EThing::kMethod, a, b);
}

bool HaveSameContent(const CMetaProperty2024& a, const CMetaProperty2024& b) {
  return HaveSameAttributes(EThing::kProperty, a, b);
}

}  // namespace metareview
