#pragma once

#include <string_view>
#include <vector>

namespace metareview {

using PathSegments = std::vector<std::string_view>;

/// What stands for any one segment of a path.
constexpr std::string_view kWildcard = "*";

/// The text between the slashes of a path or pattern.
PathSegments SplitPath(std::string_view text);

/// Whether the segments of a path fit those of a pattern; all in lower case.
bool FitPattern(const PathSegments& pattern, const PathSegments& path);

}  // namespace metareview
