#include "upgradesrv/Output.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <set>
#include <string_view>

#include "kvxsptstring/StringHelper.h"
#include "upgradesrv/Passwords.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {

std::string TerminalText(const std::string& text) {
  std::string visible;
  std::size_t begin = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
    visible += CStringHelper::ToVisible(text.substr(begin, end - begin)) + '\n';
    begin = end + 1;
  }
  return visible + CStringHelper::ToVisible(text.substr(begin));
}

void WriteGuardedOutput(std::string_view text) {
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!isWritten && errno != EPIPE) {
    throw CTrouble("standard output cannot be written: " + std::string(std::strerror(errno)));
  }
}

void WriteOutput(const std::string& text) {
  WriteGuardedOutput(isatty(STDOUT_FILENO) != 0 ? TerminalText(text) : text);
}

std::string NoteLine(const std::string& text) {
  return "upgradesrv: " + WithoutPasswords(CStringHelper::ToVisible(text)) + "\n";
}

std::string ErrorLine(const std::string& text) {
  return NoteLine("error: " + text);
}

void WriteNote(const std::string& text) {
  const std::string line = NoteLine(text);
  // There is no one left to tell when even this fails.
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

void WriteNoteOnce(const std::string& text) {
  static std::mutex mutex;
  static std::set<std::string> written;
  const std::lock_guard<std::mutex> lock(mutex);
  if (written.insert(text).second) {
    WriteNote(text);
  }
}

void WriteError(const std::string& text) {
  WriteNote("error: " + text);
}

void WriteOutOfMemory() noexcept {
  constexpr std::string_view kLine = "upgradesrv: error: out of memory\n";
  static_cast<void>(write(STDERR_FILENO, kLine.data(), kLine.size()) < 0);
}

}  // namespace upgradesrv
