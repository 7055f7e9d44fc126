#include "metareview2024/compare/Comparison.h"

#include <optional>
#include <type_traits>
#include <utility>

#include "metareview2024/compare/Attributes.h"
#include "metareview2024/compare/ElementKinds.h"
#include "metareview2024/compare/Holders.h"
#include "metareview2024/compare/Parts.h"
#include "metareview2024/origin/Origin.h"

namespace metareview {
namespace {

/// What the base's element lists, read where it is first asked for: most elements have no difference.
template <typename Part>
class CBaseParts {
 public:
  using List = std::list<std::shared_ptr<Part>>;

  /// `getList` is called once at most.
  explicit CBaseParts(std::function<List()> getList) : getList_(std::move(getList)) {}

  const Part* Find(const std::string& name) {
    if (!parts_) {
      parts_.emplace(getList_());
    }
    return parts_->Find(name);
  }

 private:
  std::function<List()> getList_;
  std::optional<CParts<Part>> parts_;
};

/// What only properties have and take.
class CPropertySides {
 public:
  static void Set(SDifference& difference, const CMetaProperty2024* client, const CMetaProperty2024* original) {
    difference.clientProperty = client;
    difference.originalProperty = original;
  }
  void AddInserted(const CMetaProperty2024& property) { holders_.Add(property); }
  void SetTaken(SDifference& difference, const CMetaProperty2024& property) const {
    difference.taken = holders_.FindHolder(property, difference.path);
  }

  static void Set(SDifference& /*difference*/, const CMetaMethod2024* /*client*/, const CMetaMethod2024* /*original*/) {
  }
  void AddInserted(const CMetaMethod2024& /*method*/) const {}
  void SetTaken(SDifference& /*difference*/, const CMetaMethod2024& /*method*/) const {}

 private:
  CFieldHolders holders_;
};

bool HasColumns(const CMetaDictionary2024& dictionary, const std::string& behavior) {
  const auto found = dictionary.GetBehavior(behavior);
  return found != nullptr && !found->GetProperties().empty();
}

template <typename Kind>
class CComparison {
 public:
  using Element = typename Kind::Element;

  CComparison(const CMetaDictionary2024& client, const CMetaDictionary2024& original, const CMetaDictionary2024* base,
              const DifferenceVisitor& visitor, const EqualVisitor& equalVisitor)
      : client_(client), original_(original), base_(base), visitor_(visitor), equalVisitor_(equalVisitor) {}

  void Run() {
    for (const auto& element : ElementsOf<Kind>(client_)) {
      if (const auto original = FindElement<Kind>(&original_, element->GetInternalName())) {
        differs_ = false;
        ComparePair(*element, *original);
        if (!differs_ && equalVisitor_) {
          equalVisitor_(About(EChange::kChanged, *element).path);
        }
      } else {
        VisitElement(EChange::kInserted, *element);
      }
    }
    for (const auto& element : ElementsOf<Kind>(original_)) {
      if (FindElement<Kind>(&client_, element->GetInternalName()) == nullptr) {
        VisitElement(EChange::kDeleted, *element);
      }
    }
  }

 private:
  void Visit(const SDifference& difference) {
    differs_ = true;
    visitor_(difference);
  }

  static SDifference About(EChange change, const Element& element) {
    SDifference difference;
    difference.path.kind = Kind::kKind;
    difference.path.thing = ThingOf(Kind::kKind);
    difference.path.element = element.GetInternalName();
    difference.change = change;
    return difference;
  }

  /// `client` is the element.
  static SDifference About(EChange change, const Element& client, EThing thing, const std::string& part) {
    SDifference difference = About(change, client);
    difference.path.thing = thing;
    difference.path.part = part;
    return difference;
  }

  void VisitElement(EChange change, const Element& element) {
    SDifference difference = About(change, element);
    difference.displayName = element.GetDisplayName();
    if constexpr (std::is_same_v<Kind, SBehaviorKind>) {
      difference.hasColumns = !element.GetProperties().empty();
    } else if (change == EChange::kDeleted) {
      difference.taken = FindHolder(element);
    }
    VisitWhole(difference, FindElement<Kind>(base_, difference.path.element).get(), element);
  }

  std::shared_ptr<const STaken> FindHolder(const CMetaClass2024& element) {
    if (!holders_) {
      holders_.emplace(client_, original_);
    }
    return holders_->FindHolder(element);
  }

  /// `present` is the thing on the side that has it, `base` the base's.
  template <typename Thing>
  void VisitWhole(SDifference& difference, const Thing* base, const Thing& present) {
    if (base_ != nullptr) {
      difference.origin = OriginOfWhole(difference.change, base, present);
    }
    Visit(difference);
  }

  void ComparePair(const Element& client, const Element& original) {
    const auto base = FindElement<Kind>(base_, client.GetInternalName());
    CompareAttributes(
        ThingOf(Kind::kKind), client, original, [&client] { return About(EChange::kChanged, client); },
        [&base] { return base.get(); });
    if constexpr (std::is_same_v<Kind, SBehaviorKind>) {
      CompareParts<CMetaMethod2024>(EThing::kMethod, &Element::GetMethods, client, original, base.get());
    } else {
      CompareListedBehaviors(client, original, base.get());
    }
    CompareParts<CMetaProperty2024>(EThing::kProperty, &Element::GetProperties, client, original, base.get());
  }

  /// `about` makes a difference without values, `findBase` finds the thing in the base.
  template <typename Thing, typename MakeDifference, typename FindBase>
  void CompareAttributes(EThing thing, const Thing& client, const Thing& original, const MakeDifference& about,
                         const FindBase& findBase) {
    for (const EAttribute attribute : AttributesOf(thing)) {
      Value clientValue = ValueOf(client, attribute);
      Value originalValue = ValueOf(original, attribute);
      if (clientValue == originalValue) {
        continue;
      }
      SDifference difference = about();
      difference.path.attribute = attribute;
      difference.displayName = client.GetDisplayName();
      if (base_ != nullptr) {
        if (const Thing* base = findBase(); base != nullptr) {
          difference.base = ValueOf(*base, attribute);
        }
        difference.origin = OriginOfValue(attribute, difference.base, originalValue, clientValue);
      }
      difference.client = std::move(clientValue);
      difference.original = std::move(originalValue);
      Visit(difference);
    }
  }

  template <typename Part, typename GetList>
  void CompareParts(EThing thing, const GetList& getList, const Element& client, const Element& original,
                    const Element* base) {
    CParts<Part> clientParts((client.*getList)());
    CParts<Part> originalParts((original.*getList)());
    CBaseParts<Part> baseParts(
        [&] { return base != nullptr ? (base->*getList)() : std::list<std::shared_ptr<Part>>(); });
    CPropertySides sides;

    const auto comparePair = [&](std::size_t clientIndex, std::size_t originalIndex) {
      const Part& clientPart = clientParts.At(clientIndex);
      const Part& originalPart = originalParts.At(originalIndex);
      const std::string& name = clientParts.Names().At(clientIndex);
      const auto about = [&] {
        SDifference difference = About(EChange::kChanged, client, thing, name);
        CPropertySides::Set(difference, &clientPart, &originalPart);
        return difference;
      };
      CompareAttributes(thing, clientPart, originalPart, about, [&] { return baseParts.Find(name); });
    };
    const auto visitInserted = [&](std::size_t index) {
      const Part& part = clientParts.At(index);
      SDifference difference = About(EChange::kInserted, client, thing, clientParts.Names().At(index));
      difference.displayName = part.GetDisplayName();
      CPropertySides::Set(difference, &part, nullptr);
      VisitWhole(difference, baseParts.Find(difference.path.part), part);
      sides.AddInserted(part);
    };
    const auto visitDeleted = [&](std::size_t index) {
      const Part& part = originalParts.At(index);
      SDifference difference = About(EChange::kDeleted, client, thing, originalParts.Names().At(index));
      difference.displayName = part.GetDisplayName();
      CPropertySides::Set(difference, nullptr, &part);
      sides.SetTaken(difference, part);
      VisitWhole(difference, baseParts.Find(difference.path.part), part);
    };
    MatchNames(clientParts.Names(), originalParts.Names(), comparePair, visitInserted, visitDeleted);
  }

  void CompareListedBehaviors(const Element& client, const Element& original, const Element* base) {
    const CNames clientNames = ListedBehaviors(client);
    CNames originalNames = ListedBehaviors(original);
    CNames baseNames = base != nullptr ? ListedBehaviors(*base) : CNames({});
    const auto visit = [&](EChange change, const std::string& name) {
      SDifference difference = About(change, client, EThing::kListedBehavior, name);
      difference.hasColumns = change == EChange::kInserted && HasColumns(client_, name);
      if (base_ != nullptr) {
        const bool inBase = baseNames.Find(name).has_value();
        difference.origin = OriginOfWhole(change, inBase, /*sameInBase=*/inBase);
      }
      Visit(difference);
    };
    MatchNames(
        clientNames, originalNames, [](std::size_t, std::size_t) {},
        [&](std::size_t index) { visit(EChange::kInserted, clientNames.At(index)); },
        [&](std::size_t index) { visit(EChange::kDeleted, originalNames.At(index)); });
  }

  const CMetaDictionary2024& client_;
  const CMetaDictionary2024& original_;
  const CMetaDictionary2024* base_;
  const DifferenceVisitor& visitor_;
  const EqualVisitor& equalVisitor_;
  bool differs_ = false;
  std::optional<CIdentityHolders> holders_;
};

}  // namespace

void CompareKind(EKind kind, const CMetaDictionary2024& client, const CMetaDictionary2024& original,
                 const CMetaDictionary2024* base, const DifferenceVisitor& visitor, const EqualVisitor& equalVisitor) {
  switch (kind) {
    case EKind::kClass:
      return CComparison<SClassKind>(client, original, base, visitor, equalVisitor).Run();
    case EKind::kLink:
      return CComparison<SLinkKind>(client, original, base, visitor, equalVisitor).Run();
    case EKind::kBehavior:
      return CComparison<SBehaviorKind>(client, original, base, visitor, equalVisitor).Run();
  }
}

}  // namespace metareview
