#pragma once

#include <string>
#include <string_view>

namespace upgradesrv {

/// Writes to standard output: the exact bytes to a file or pipe; to a terminal with control characters other than line
/// ends made visible. Throws CTrouble when not everything could be written.
void WriteOutput(const std::string& text);

/// Writes the exact bytes, to a terminal, too: for text in which every name and value is guarded already.
void WriteGuardedOutput(std::string_view text);

/// `text` as WriteOutput shows it on a terminal.
std::string TerminalText(const std::string& text);

/// "upgradesrv: TEXT" and "upgradesrv: error: TEXT" on standard error, each one line without passwords.
void WriteNote(const std::string& text);
void WriteError(const std::string& text);
/// "upgradesrv: error: out of memory" on standard error. Asks for none.
void WriteOutOfMemory() noexcept;

}  // namespace upgradesrv
