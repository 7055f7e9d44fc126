#pragma once

#include <filesystem>

#include "metareview2024/Review.h"

namespace test {

/// The review of metamodel documents, of all kinds; `base` need not be there.
metareview::SReview Compared(const std::filesystem::path& client, const std::filesystem::path& original,
                             const std::filesystem::path& base);

/// The example's, with its decisions.
metareview::SReview ExampleReview();

}  // namespace test
