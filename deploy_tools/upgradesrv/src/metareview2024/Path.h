#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "metareview2024/Terms.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// Where a difference is: "class/Part/property/Code/length" taken apart.
struct SPath {
  EKind kind = EKind::kClass;
  /// What differs, or what the differing attribute belongs to.
  EThing thing = EThing::kClass;
  EAttribute attribute = EAttribute::kNone;
  /// The element's internal name.
  std::string element;
  /// The name of the listed behavior, method or property; empty where the thing is the element.
  std::string part;

  /// The internal name of the thing.
  const std::string& Name() const { return thing <= EThing::kBehavior ? element : part; }
};

/// The path as text: "~", "/" and "*" in names become "~0", "~1" and "~2".
METAREVIEW2024_EXPORT std::string FormatPath(const SPath& path);

/// Nothing for a text that is no path of any difference.
METAREVIEW2024_EXPORT std::optional<SPath> ParsePath(std::string_view text);

/// Patterns are paths in which "*" may stand for any one whole segment. A path is a pattern, too.
METAREVIEW2024_EXPORT bool HasWildcard(std::string_view pattern);

/// The kinds of elements that the pattern may be about, in the order of kKinds; none for a text that is no pattern of
/// any path.
METAREVIEW2024_EXPORT std::vector<EKind> KindsOfPattern(std::string_view pattern);

/// Why the text is no pattern of any path; nothing when it is one.
METAREVIEW2024_EXPORT std::optional<std::string> ProblemOfPattern(std::string_view text);

/// Whether the pattern is about changed attributes, not about whole things.
METAREVIEW2024_EXPORT bool IsAboutAttributes(std::string_view pattern);

/// Whether the path fits the pattern, ASCII case ignored.
METAREVIEW2024_EXPORT bool MatchesPath(std::string_view pattern, std::string_view path);

}  // namespace metareview
