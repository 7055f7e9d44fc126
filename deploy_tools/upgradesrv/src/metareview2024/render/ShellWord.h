#pragma once

#include <string>
#include <string_view>

namespace metareview {

/// The text as one word of a POSIX shell's command line, quoted where it must be. Control characters and those that
/// change the direction of writing are written as numbers, so that the word can be shown and copied.
std::string ShellWord(std::string_view text);

}  // namespace metareview
