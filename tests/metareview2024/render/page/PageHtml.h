#pragma once

#include <string>

#include "metareview2024/Review.h"

namespace test {

/// The page that shows a review, in English.
std::string PageHtml(const metareview::SReview& review);

/// The first text of the page between these two; empty where it has none.
std::string Between(const std::string& html, const std::string& begin, const std::string& end);

/// How often the page has a text.
std::size_t CountOf(const std::string& html, const std::string& text);

}  // namespace test
