#pragma once

#include <string_view>

/// The files beside this one that make the page, as the build puts them into the library.
namespace metareview::page::assets {

extern const std::string_view page;
extern const std::string_view place;
extern const std::string_view element;
extern const std::string_view row;
extern const std::string_view style;
extern const std::string_view script;

}  // namespace metareview::page::assets
