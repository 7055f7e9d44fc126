#pragma once

#include <stdexcept>
#include <string>

namespace upgradesrv {

/// What a command ends with.
enum EExitStatus { kNothingToReport = 0, kDifferencesReported = 1, kTrouble = 2 };

/// `text` with "***" in place of what may be a password: the value of "password=", and what stands between "://" or
/// ":/" and "@" when there is a ":" in it. For what a user has typed in the wrong place.
std::string WithoutPasswords(const std::string& text);

/// Trouble that ends the command; what() is a whole sentence for the user, on one line, control characters of names
/// and texts in it made visible, without passwords.
class CTrouble : public std::runtime_error {
 public:
  explicit CTrouble(const std::string& text);
};

/// Writes to standard output: the exact bytes to a file or pipe; to a terminal with control characters other than line
/// ends made visible. Throws CTrouble when not everything could be written.
void WriteOutput(const std::string& text);

/// `text` as WriteOutput shows it on a terminal.
std::string TerminalText(const std::string& text);

/// "upgradesrv: TEXT" and "upgradesrv: error: TEXT" on standard error, each one line without passwords.
void WriteNote(const std::string& text);
void WriteError(const std::string& text);
/// "upgradesrv: error: out of memory" on standard error. Asks for none.
void WriteOutOfMemory() noexcept;

}  // namespace upgradesrv
