#pragma once

#include <functional>
#include <memory>

#include "metareview2024/compare/Difference.h"

class CMetaDictionary2024;

namespace metareview {

/// Called for each difference, in the order of findings.
using DifferenceVisitor = std::function<void(const SDifference&)>;

/// Called for each element that both sides have without a difference, in the client's order.
using EqualVisitor = std::function<void(const SPath&)>;

/// Compares the elements of a kind. `base` may be null; the origin of each difference is then unknown. Null for
/// `equalVisitor` when nobody wants to know.
void CompareKind(EKind kind, const CMetaDictionary2024& client, const CMetaDictionary2024& original,
                 const CMetaDictionary2024* base, const DifferenceVisitor& visitor,
                 const EqualVisitor& equalVisitor = nullptr);

}  // namespace metareview
