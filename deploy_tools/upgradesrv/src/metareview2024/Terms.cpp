#include "metareview2024/Terms.h"

#include <algorithm>

namespace metareview {
namespace {

// Names in the order of their enumerators.
template <std::size_t N>
using Names = std::array<std::string_view, N>;

constexpr Names<3> kKindNames = {"class", "link", "behavior"};
constexpr Names<6> kThingNames = {"class", "link", "behavior", "listed-behavior", "method", "property"};
constexpr Names<13> kAttributeNames = {"",
                                       "internal_name",
                                       "display_name",
                                       "class_id",
                                       "table_name",
                                       "field",
                                       "type",
                                       "length",
                                       "default_value",
                                       "precision",
                                       "max",
                                       "min",
                                       "lookup_internal_name"};
constexpr Names<3> kChangeNames = {"inserted", "deleted", "changed"};
constexpr Names<4> kRiskNames = {"loss", "block", "attention", "safe"};
constexpr Names<4> kOriginNames = {"unknown", "customer", "vendor", "both"};
constexpr Names<3> kSinceNames = {"new", "known", "changed"};

template <typename Term, std::size_t N>
std::string_view Name(const Names<N>& names, Term term) {
  return names.at(static_cast<std::size_t>(term));
}

template <typename Term, std::size_t N>
std::optional<Term> Find(const Names<N>& names, std::string_view name) {
  const auto* const found = std::find(names.begin(), names.end(), name);
  if (found == names.end() || name.empty()) {
    return std::nullopt;
  }
  return static_cast<Term>(found - names.begin());
}

}  // namespace

EThing ThingOf(EKind kind) {
  constexpr std::array<EThing, 3> kThings = {EThing::kClass, EThing::kLink, EThing::kBehavior};
  return kThings.at(static_cast<std::size_t>(kind));
}

bool IsNumeric(EAttribute attribute) {
  return attribute == EAttribute::kClassId || attribute == EAttribute::kLength || attribute == EAttribute::kPrecision;
}

const std::vector<EAttribute>& AttributesOf(EThing thing) {
  using A = EAttribute;
  using List = std::vector<EAttribute>;
  static const List kOfClass = {A::kInternalName, A::kDisplayName, A::kClassId, A::kTableName};
  static const List kNames = {A::kInternalName, A::kDisplayName};
  static const List kOfProperty = {A::kInternalName, A::kDisplayName, A::kField, A::kType, A::kLength,
                                   A::kDefaultValue, A::kPrecision,   A::kMax,   A::kMin,  A::kLookupInternalName};
  // In the order of EThing.
  static const std::array<List, 6> kLists = {kOfClass, kOfClass, kNames, List(), kNames, kOfProperty};
  return kLists.at(static_cast<std::size_t>(thing));
}

std::string_view NameOf(EKind kind) {
  return Name(kKindNames, kind);
}

std::string_view NameOf(EThing thing) {
  return Name(kThingNames, thing);
}

std::string_view NameOf(EAttribute attribute) {
  return Name(kAttributeNames, attribute);
}

std::string_view NameOf(EChange change) {
  return Name(kChangeNames, change);
}

std::string_view NameOf(ERisk risk) {
  return Name(kRiskNames, risk);
}

std::string_view NameOf(EOrigin origin) {
  return Name(kOriginNames, origin);
}

std::string_view NameOf(ESince since) {
  return Name(kSinceNames, since);
}

std::optional<EKind> KindOf(std::string_view name) {
  return Find<EKind>(kKindNames, name);
}

std::optional<EAttribute> AttributeOf(std::string_view name) {
  return Find<EAttribute>(kAttributeNames, name);
}

std::optional<EChange> ChangeOf(std::string_view name) {
  return Find<EChange>(kChangeNames, name);
}

std::optional<ERisk> RiskOf(std::string_view name) {
  return Find<ERisk>(kRiskNames, name);
}

std::optional<EOrigin> OriginOf(std::string_view name) {
  return Find<EOrigin>(kOriginNames, name);
}

std::optional<ESince> SinceOf(std::string_view name) {
  return Find<ESince>(kSinceNames, name);
}

}  // namespace metareview
