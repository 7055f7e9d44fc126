#pragma once

#include <optional>
#include <string>
#include <vector>

#include "metareview2024/Decision.h"
#include "metareview2024/Review.h"
#include "metareview2024/metareview2024_export.h"

/// The text of decisions files. What cannot be understood whole throws CKVXException (kvx::kMalformedDocument,
/// "NAME:LINE:COLUMN: PLACE: what is wrong"), PLACE a JSON pointer; NAME is what the caller calls the text.
namespace metareview {

/// Whether `text` is a day, written YYYY-MM-DD.
METAREVIEW2024_EXPORT bool IsDate(const std::string& text);

METAREVIEW2024_EXPORT SDecisions ParseDecisions(const std::string& text, const std::string& name);

/// The text of a decisions file: entries sorted by path and change, one a line.
METAREVIEW2024_EXPORT std::string FormatDecisions(const SDecisions& decisions);

/// Accepts the current findings at `paths`, with their values. An entry of the same path and change that is outdated or
/// expired is replaced; every other entry stays. Throws CKVXException (kvx::kMetamodelError) for a path without a
/// finding, an empty reason, a bad date, and an entry that still accepts.
METAREVIEW2024_EXPORT SDecisions Decide(SDecisions decisions, const SReview& review,
                                        const std::vector<std::string>& paths, const SAcceptance& acceptance,
                                        const std::string& today);

/// Leaves out the entries that are stale.
METAREVIEW2024_EXPORT SDecisions Prune(SDecisions decisions, const SReview& review);

}  // namespace metareview
