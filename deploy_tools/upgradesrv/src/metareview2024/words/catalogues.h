#pragma once

#include <string_view>

/// The compiled message catalogues: each is made by the build from the file catalogues/LANGUAGE.po.
namespace metareview::catalogues {

extern const std::string_view en;
extern const std::string_view zh;
extern const std::string_view de;
extern const std::string_view fr;
extern const std::string_view ja;
extern const std::string_view es;

}  // namespace metareview::catalogues
