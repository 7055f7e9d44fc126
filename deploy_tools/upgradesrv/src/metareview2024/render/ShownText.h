#pragma once

#include <string>
#include <string_view>

namespace metareview {

/// A text that comes from a metamodel or from people, as people are shown it: control characters made visible, and of a
/// very long one only its beginning and its end.
std::string ShownText(std::string_view text);

}  // namespace metareview
