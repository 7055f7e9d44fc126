#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "metareview2024/Decision.h"
#include "metareview2024/Finding.h"
#include "metareview2024/Terms.h"

namespace metareview {

struct SLookups;

/// A decision that accepts nothing because the values are others now.
struct SOutdated {
  SDecision decision;
  Value original;
  Value client;
};

/// A finding of an earlier review that is no more.
struct SGone {
  std::uint64_t id = 0;
  std::string path;
  EChange change = EChange::kChanged;
};

enum class ENote {
  kBaseEqualsClient,
  kBaseEqualsOriginal,
  /// The client has most of what the vendor changed since the base: the installation seems upgraded already, or the
  /// base is not its own.
  kClientHasVendorChanges
};

/// The version of the document that a review is saved as.
constexpr std::uint32_t kReviewVersion = 1;

/// All that a review says. What it is made of is as documents have it, so that a saved review can be read back; how
/// often each risk occurs is counted, see Totals.h.
struct SReview {
  /// False for a review that failed; `problem` then says why, and nothing else can be relied on.
  bool complete = true;
  std::string problem;

  /// Locations as a reader may see them, without passwords.
  std::string client;
  std::string original;
  std::optional<std::string> base;
  /// The upgrade directory, as it was given.
  std::string directory;
  /// The earlier review and the database, where given.
  std::optional<std::string> against;
  std::optional<std::string> data;

  /// The kinds compared, in the order of kKinds.
  std::vector<EKind> elements;
  std::vector<SFinding> findings;

  /// Decisions that accept nothing, in the order of the file. One may be in several of these lists.
  std::vector<SOutdated> outdated;
  std::vector<SDecision> expired;
  std::vector<SDecision> stale;
  /// Only of kinds that were compared now.
  std::vector<SGone> gone;

  /// The paths of the elements that both sides have and that do not differ, "class/Part". Not part of a saved review.
  std::vector<std::string> equal;
  /// What is peculiar about the metamodels. Not part of a saved review.
  std::vector<ENote> notes;
  /// Which stored values are to be counted; null where nobody asked. Not part of a saved review.
  std::shared_ptr<const SLookups> lookups;
};

}  // namespace metareview
