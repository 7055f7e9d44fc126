#pragma once

#include <string>
#include <string_view>

namespace upgradesrv {

/// Writes to standard output: the exact bytes to a file or pipe; to a terminal with control characters other than line
/// ends made visible. A reader that has closed the pipe, as head does, has seen enough: what it does not read is
/// dropped. Throws CTrouble when the text cannot be written for another reason.
void WriteOutput(const std::string& text);

/// Writes the exact bytes, to a terminal, too: for text in which every name and value is guarded already.
void WriteGuardedOutput(std::string_view text);

/// `text` as WriteOutput shows it on a terminal.
std::string TerminalText(const std::string& text);

/// "upgradesrv: TEXT" and "upgradesrv: error: TEXT", each one line without passwords.
std::string NoteLine(const std::string& text);
std::string ErrorLine(const std::string& text);
/// The same on standard error.
void WriteNote(const std::string& text);
void WriteError(const std::string& text);
/// WriteNote, but for a note that was written by it before: of what a command looks at twice, for example. Any thread
/// may call it.
void WriteNoteOnce(const std::string& text);
/// "upgradesrv: error: out of memory" on standard error. Asks for none.
void WriteOutOfMemory() noexcept;

}  // namespace upgradesrv
