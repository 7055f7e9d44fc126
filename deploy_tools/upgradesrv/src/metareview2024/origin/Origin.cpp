#include "metareview2024/origin/Origin.h"

#include "metareview2024/rules/Number.h"

namespace metareview {
namespace {

bool IsNumberText(EAttribute attribute) {
  return attribute == EAttribute::kMax || attribute == EAttribute::kMin || attribute == EAttribute::kDefaultValue;
}

bool AreSameNumber(const Value& a, const Value& b) {
  return CompareNumbers(std::get<std::string>(a), std::get<std::string>(b)) == 0;
}

}  // namespace

EOrigin OriginOfValue(EAttribute attribute, const std::optional<Value>& base, const Value& original,
                      const Value& client) {
  if (!base) {
    return EOrigin::kBoth;
  }
  if (*base == original) {
    return EOrigin::kCustomer;
  }
  if (*base == client) {
    return EOrigin::kVendor;
  }
  if (IsNumberText(attribute) && AreSameNumber(*base, original)) {
    return EOrigin::kCustomer;
  }
  if (IsNumberText(attribute) && AreSameNumber(*base, client)) {
    return EOrigin::kVendor;
  }
  return EOrigin::kBoth;
}

EOrigin OriginOfWhole(EChange change, bool inBase, bool sameInBase) {
  if (inBase && !sameInBase) {
    return EOrigin::kBoth;
  }
  // Nobody but the customer adds what only the client has, and removes what only the original has.
  const bool added = !inBase;
  const bool onlyClientHasIt = change == EChange::kInserted;
  return added == onlyClientHasIt ? EOrigin::kCustomer : EOrigin::kVendor;
}

}  // namespace metareview
