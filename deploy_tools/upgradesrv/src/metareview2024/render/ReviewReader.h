#pragma once

#include <string>

#include "metareview2024/Review.h"

namespace metareview {

/// Reads a review that was saved as JSON. `name` is what messages call the text. Throws CKVXException
/// (kvx::kMalformedDocument, "NAME:LINE:COLUMN: PLACE: what is wrong", PLACE a JSON pointer) for whatever is not a
/// whole review of this version: another document, a later version, a review that failed, one that was cut off, an
/// unknown member, and members that contradict one another.
SReview ReadReview(const std::string& text, const std::string& name);

}  // namespace metareview
