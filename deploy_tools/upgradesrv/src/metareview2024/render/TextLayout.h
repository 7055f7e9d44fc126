#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text in columns, as a terminal shows UTF-8: wide characters take two, combining ones none.
namespace metareview {

std::size_t DisplayWidth(std::string_view text);

/// Spaces added until the text is that wide; a wider one stays as it is.
std::string PadRight(std::string text, std::size_t width);
std::string PadLeft(std::string text, std::size_t width);

/// Breaks a text into lines at spaces, and between characters of scripts that write without. What cannot be broken, a
/// long path for example, is a line of its own that may be too wide.
std::vector<std::string> WrapText(std::string_view text, std::size_t width);

}  // namespace metareview
