#include "metareview2024/origin/BaseNotes.h"

#include <cstddef>

#include "metareview2024/compare/Comparison.h"

namespace metareview {

std::vector<ENote> NotesOnBase(const CMetaDictionary2024& client, const CMetaDictionary2024& original,
                               const CMetaDictionary2024& base, const std::vector<EKind>& kinds) {
  constexpr std::size_t kEnoughChanges = 20;
  std::size_t customerChanges = 0;
  std::size_t vendorChanges = 0;
  std::size_t shared = 0;
  for (const EKind kind : kinds) {
    CompareKind(kind, client, base, nullptr, [&](const SDifference&) { ++customerChanges; });
    // With the client in the base's place, the client has what the original has where the origin is "customer".
    CompareKind(kind, base, original, &client, [&](const SDifference& difference) {
      ++vendorChanges;
      shared += difference.origin == EOrigin::kCustomer ? 1 : 0;
    });
  }
  std::vector<ENote> notes;
  if (customerChanges == 0) {
    notes.push_back(ENote::kBaseEqualsClient);
  }
  if (vendorChanges == 0) {
    notes.push_back(ENote::kBaseEqualsOriginal);
  }
  if (vendorChanges >= kEnoughChanges && 10 * shared > 9 * vendorChanges) {
    notes.push_back(ENote::kClientHasVendorChanges);
  }
  return notes;
}

}  // namespace metareview
