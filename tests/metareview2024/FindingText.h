#pragma once

#include <string>
#include <vector>

#include "metareview2024/Finding.h"

namespace test {

/// A finding as JSON on one line, with the members of a review's document but `id`, `data` and `since`, in their order.
std::string TextOf(const metareview::SFinding& finding);
std::vector<std::string> TextsOf(const std::vector<metareview::SFinding>& findings);

/// The items of a JSON array in a file, each on one line.
std::vector<std::string> ItemsOf(const std::string& path);

}  // namespace test
