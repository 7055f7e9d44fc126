#pragma once

#include <string>

namespace upgradesrv {

/// `word` as a shell's user types it: in single quotes, unless a shell takes it by the letter.
std::string ShellWord(const std::string& word);

}  // namespace upgradesrv
