#pragma once

#include <string>
#include <vector>

#include "metareview2024/Decision.h"
#include "metareview2024/Review.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// Whether `text` is a day, written YYYY-MM-DD.
METAREVIEW2024_EXPORT bool IsDate(const std::string& text);

/// What a decisions file says. `name` is what messages call it. A text that cannot be understood whole throws
/// CKVXException (kvx::kMalformedDocument, "NAME:LINE:COLUMN: POINTER: what is wrong").
METAREVIEW2024_EXPORT SDecisions ParseDecisions(const std::string& text, const std::string& name);

/// The text of a decisions file: an entry a line, those that accept sorted by path and change.
METAREVIEW2024_EXPORT std::string FormatDecisions(const SDecisions& decisions);

/// Accepts the current findings at `paths`, with their values; a path with a "*" becomes an entry with that path for
/// each change that it matches. `review` is one to which ApplyDecisions() has applied the decisions. An entry that is
/// outdated or expired is replaced by one of its path and change; every other entry stays.
/// Throws CKVXException (kvx::kRefused) for a path without a finding, one that would accept nothing, an entry that
/// still accepts, an empty reason, and an `until` that is no day or before `today`.
METAREVIEW2024_EXPORT SDecisions Decide(const SDecisions& decisions, const SReview& review,
                                        const std::vector<std::string>& paths, const SAcceptance& acceptance,
                                        const std::string& today);

/// Leaves out the entries that are stale in the review.
METAREVIEW2024_EXPORT SDecisions Prune(const SDecisions& decisions, const SReview& review);

}  // namespace metareview
