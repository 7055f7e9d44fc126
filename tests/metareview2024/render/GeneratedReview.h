#pragma once

#include <cstddef>

#include "metareview2024/Review.h"

namespace test {

/// A review with that many findings of all kinds, risks, origins and decisions, the same each time. Names are unique.
metareview::SReview GeneratedReview(std::size_t findings);

/// A review whose names, values and reasons are what no output expects: markup, quotes, control characters, marks of
/// the writing direction, a megabyte, and what other formats take for their own.
metareview::SReview HostileReview();

}  // namespace test
