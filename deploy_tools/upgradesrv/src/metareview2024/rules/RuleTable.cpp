#include "metareview2024/rules/RuleTable.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

#include "kvxsptstring/Nearest.h"
#include "kvxsptstring/StringHelper.h"
#include "metareview2024/rules/Number.h"
#include "metareview2024/rules/TypeChange.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace metareview {
namespace {

using Difference = const SDifference&;

const std::string& ClientText(Difference difference) {
  return std::get<std::string>(*difference.client);
}

const std::string& OriginalText(Difference difference) {
  return std::get<std::string>(*difference.original);
}

std::uint32_t ClientNumber(Difference difference) {
  return std::get<std::uint32_t>(*difference.client);
}

std::uint32_t OriginalNumber(Difference difference) {
  return std::get<std::uint32_t>(*difference.original);
}

// What the rules ask of a difference.

bool Always(Difference /*difference*/) {
  return true;
}

bool IsWithdrawn(Difference difference) {
  return difference.origin == EOrigin::kVendor || difference.origin == EOrigin::kBoth;
}

bool IsWithdrawnWithColumns(Difference difference) {
  return IsWithdrawn(difference) && difference.hasColumns;
}

bool IsTaken(Difference difference) {
  return difference.taken != nullptr;
}

bool IsNew(Difference difference) {
  return difference.origin == EOrigin::kVendor;
}

bool AreBothSet(Difference difference) {
  return !ClientText(difference).empty() && !OriginalText(difference).empty();
}

bool DifferInCaseOnly(Difference difference) {
  return CStringHelper::StringCompare(ClientText(difference), OriginalText(difference), /*ignoreCase=*/true) == 0;
}

template <ETypeChange Change>
bool IsTypeChange(Difference difference) {
  return TypeChangeOf(ClientText(difference), OriginalText(difference)) == Change;
}

bool DoTypesDiffer(Difference difference) {
  return difference.clientProperty->GetType() != difference.originalProperty->GetType();
}

bool IsOneZero(Difference difference) {
  return ClientNumber(difference) == 0 || OriginalNumber(difference) == 0;
}

bool Shrinks(Difference difference) {
  return ClientNumber(difference) > OriginalNumber(difference);
}

bool TakesDigits(Difference difference) {
  const std::int64_t clientLength = difference.clientProperty->GetLength();
  const std::int64_t originalLength = difference.originalProperty->GetLength();
  return clientLength != 0 && originalLength != 0 &&
         originalLength - OriginalNumber(difference) < clientLength - ClientNumber(difference);
}

std::optional<int> OriginalAgainstClient(Difference difference) {
  return CompareNumbers(OriginalText(difference), ClientText(difference));
}

bool IsSameNumber(Difference difference) {
  return OriginalAgainstClient(difference) == 0;
}

bool IsOriginalLess(Difference difference) {
  return OriginalAgainstClient(difference).value_or(0) < 0;
}

bool IsOriginalGreater(Difference difference) {
  return OriginalAgainstClient(difference).value_or(0) > 0;
}

bool IsMaxTightened(Difference difference) {
  return ClientText(difference).empty() || IsOriginalLess(difference);
}

bool IsMaxRelaxed(Difference difference) {
  return OriginalText(difference).empty() || IsOriginalGreater(difference);
}

bool IsMinTightened(Difference difference) {
  return ClientText(difference).empty() || IsOriginalGreater(difference);
}

bool IsMinRelaxed(Difference difference) {
  return OriginalText(difference).empty() || IsOriginalLess(difference);
}

/// What a rule applies to: for whole things the thing, else up to three attributes.
struct SSubject {
  // Tables of rules name one or the other.
  // NOLINTNEXTLINE(google-explicit-constructor)
  constexpr SSubject(EThing wholeThing) : thing(wholeThing) {}
  // NOLINTNEXTLINE(google-explicit-constructor)
  constexpr SSubject(EAttribute first, EAttribute second = EAttribute::kNone, EAttribute third = EAttribute::kNone)
      : attributes{first, second, third} {}

  EThing thing = EThing::kClass;
  std::array<EAttribute, 3> attributes{};

  bool Is(Difference difference) const {
    return difference.path.attribute == EAttribute::kNone
               ? difference.path.thing == thing
               : std::find(attributes.begin(), attributes.end(), difference.path.attribute) != attributes.end();
  }
};

struct SRow {
  SRule rule;
  EChange change;
  SSubject subject;
  bool (*applies)(Difference);
};

constexpr EChange kInserted = EChange::kInserted;
constexpr EChange kDeleted = EChange::kDeleted;
constexpr EChange kChanged = EChange::kChanged;
constexpr ERisk kLoss = ERisk::kLoss;
constexpr ERisk kBlock = ERisk::kBlock;
constexpr ERisk kAttention = ERisk::kAttention;
constexpr ERisk kSafe = ERisk::kSafe;

// Of the rows for a difference's change and subject the first that applies holds.
constexpr std::array<SRow, 56> kRows = {{
    {{"class-withdrawn", kLoss}, kInserted, EThing::kClass, IsWithdrawn},
    {{"link-withdrawn", kLoss}, kInserted, EThing::kLink, IsWithdrawn},
    {{"behavior-columns-withdrawn", kLoss}, kInserted, EThing::kBehavior, IsWithdrawnWithColumns},
    {{"behavior-withdrawn", kAttention}, kInserted, EThing::kBehavior, IsWithdrawn},
    {{"listed-behavior-columns-withdrawn", kLoss}, kInserted, EThing::kListedBehavior, IsWithdrawnWithColumns},
    {{"listed-behavior-withdrawn", kAttention}, kInserted, EThing::kListedBehavior, IsWithdrawn},
    {{"method-withdrawn", kAttention}, kInserted, EThing::kMethod, IsWithdrawn},
    {{"property-withdrawn", kLoss}, kInserted, EThing::kProperty, IsWithdrawn},
    {{"class-inserted", kSafe}, kInserted, EThing::kClass, Always},
    {{"link-inserted", kSafe}, kInserted, EThing::kLink, Always},
    {{"behavior-inserted", kSafe}, kInserted, EThing::kBehavior, Always},
    {{"listed-behavior-inserted", kSafe}, kInserted, EThing::kListedBehavior, Always},
    {{"method-inserted", kSafe}, kInserted, EThing::kMethod, Always},
    {{"property-inserted", kSafe}, kInserted, EThing::kProperty, Always},

    {{"class-identity-taken", kBlock}, kDeleted, EThing::kClass, IsTaken},
    {{"link-identity-taken", kBlock}, kDeleted, EThing::kLink, IsTaken},
    {{"property-field-taken", kBlock}, kDeleted, EThing::kProperty, IsTaken},
    {{"class-new", kSafe}, kDeleted, EThing::kClass, IsNew},
    {{"link-new", kSafe}, kDeleted, EThing::kLink, IsNew},
    {{"behavior-new", kSafe}, kDeleted, EThing::kBehavior, IsNew},
    {{"listed-behavior-new", kSafe}, kDeleted, EThing::kListedBehavior, IsNew},
    {{"method-new", kSafe}, kDeleted, EThing::kMethod, IsNew},
    {{"property-new", kSafe}, kDeleted, EThing::kProperty, IsNew},
    {{"class-deleted", kAttention}, kDeleted, EThing::kClass, Always},
    {{"link-deleted", kAttention}, kDeleted, EThing::kLink, Always},
    {{"behavior-deleted", kAttention}, kDeleted, EThing::kBehavior, Always},
    {{"listed-behavior-deleted", kAttention}, kDeleted, EThing::kListedBehavior, Always},
    {{"method-deleted", kAttention}, kDeleted, EThing::kMethod, Always},
    {{"property-deleted", kAttention}, kDeleted, EThing::kProperty, Always},

    {{"spelling", kSafe}, kChanged, {EAttribute::kInternalName, EAttribute::kLookupInternalName}, DifferInCaseOnly},
    {{"display-name", kSafe}, kChanged, EAttribute::kDisplayName, Always},
    {{"class-id", kBlock}, kChanged, EAttribute::kClassId, Always},
    {{"table-moved", kLoss}, kChanged, EAttribute::kTableName, AreBothSet},
    {{"table-unset", kAttention}, kChanged, EAttribute::kTableName, Always},
    {{"field-moved", kLoss}, kChanged, EAttribute::kField, AreBothSet},
    {{"field-unset", kAttention}, kChanged, EAttribute::kField, Always},
    {{"lookup-moved", kBlock}, kChanged, EAttribute::kLookupInternalName, AreBothSet},
    {{"lookup-unset", kAttention}, kChanged, EAttribute::kLookupInternalName, Always},
    {{"type-widened", kSafe}, kChanged, EAttribute::kType, IsTypeChange<ETypeChange::kWidened>},
    {{"type-narrowed", kLoss}, kChanged, EAttribute::kType, IsTypeChange<ETypeChange::kNarrowed>},
    {{"type-relaxed", kAttention}, kChanged, EAttribute::kType, IsTypeChange<ETypeChange::kRelaxed>},
    {{"type-changed", kBlock}, kChanged, EAttribute::kType, Always},
    {{"follows-type", kSafe}, kChanged, {EAttribute::kLength, EAttribute::kPrecision}, DoTypesDiffer},
    {{"length-unset", kAttention}, kChanged, EAttribute::kLength, IsOneZero},
    {{"length-shrinks", kLoss}, kChanged, EAttribute::kLength, Shrinks},
    {{"length-grows", kSafe}, kChanged, EAttribute::kLength, Always},
    {{"precision-shrinks", kLoss}, kChanged, EAttribute::kPrecision, Shrinks},
    {{"precision-takes-digits", kBlock}, kChanged, EAttribute::kPrecision, TakesDigits},
    {{"precision-grows", kSafe}, kChanged, EAttribute::kPrecision, Always},
    {{"same-number", kSafe}, kChanged, {EAttribute::kMax, EAttribute::kMin, EAttribute::kDefaultValue}, IsSameNumber},
    {{"max-tightens", kBlock}, kChanged, EAttribute::kMax, IsMaxTightened},
    {{"max-relaxes", kAttention}, kChanged, EAttribute::kMax, IsMaxRelaxed},
    {{"min-tightens", kBlock}, kChanged, EAttribute::kMin, IsMinTightened},
    {{"min-relaxes", kAttention}, kChanged, EAttribute::kMin, IsMinRelaxed},
    {{"limit-unclear", kAttention}, kChanged, {EAttribute::kMax, EAttribute::kMin}, Always},
    {{"default-changes", kAttention}, kChanged, EAttribute::kDefaultValue, Always},
}};

}  // namespace

const std::vector<const SRule*>& Rules() {
  static const std::vector<const SRule*> rules = [] {
    std::vector<const SRule*> list;
    list.reserve(kRows.size());
    for (const SRow& row : kRows) {
      list.push_back(&row.rule);
    }
    return list;
  }();
  return rules;
}

const SRule* FindRule(std::string_view name) {
  const auto* const found =
      std::find_if(kRows.begin(), kRows.end(), [name](const SRow& row) { return row.rule.name == name; });
  return found != kRows.end() ? &found->rule : nullptr;
}

std::string QuestionAboutRule(std::string_view name) {
  kvx::CNearest nearest(name);
  for (const SRow& row : kRows) {
    nearest.Offer(row.rule.name);
  }
  return nearest.Question();
}

const SRule& RuleFor(const SDifference& difference) {
  const auto* const found = std::find_if(kRows.begin(), kRows.end(), [&difference](const SRow& row) {
    return row.change == difference.change && row.subject.Is(difference) && row.applies(difference);
  });
  if (found == kRows.end()) {
    throw std::logic_error("no rule for a difference");
  }
  return found->rule;
}

}  // namespace metareview
