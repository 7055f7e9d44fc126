#pragma once

#include <string>
#include <string_view>

namespace metareview::page {

/// SHA-256 in base64, as a Content-Security-Policy names a script or a style that may be used.
std::string ContentHash(std::string_view content);

}  // namespace metareview::page
