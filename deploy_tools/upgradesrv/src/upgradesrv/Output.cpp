#include "upgradesrv/Output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "kvxsptstring/StringHelper.h"

namespace upgradesrv {

namespace {

/// U+0080 to U+009F are control characters too; U+009B begins an escape sequence.
std::string ShowC1Controls(const std::string& text) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
    if (text[i] == '\xC2' && next >= 0x80 && next < 0xA0) {
      shown += std::string("\\u00") + kDigits[next / 16] + kDigits[next % 16];
      ++i;
    } else {
      shown += text[i];
    }
  }
  return shown;
}

}  // namespace

// A NUL would end what().
CTrouble::CTrouble(const std::string& text) : std::runtime_error(CStringHelper::ToVisible(text)) {}

std::string TerminalText(const std::string& text) {
  const std::string shown = ShowC1Controls(text);
  std::string visible;
  std::size_t begin = 0;
  for (std::size_t end = shown.find('\n'); end != std::string::npos; end = shown.find('\n', begin)) {
    visible += CStringHelper::ToVisible(shown.substr(begin, end - begin)) + '\n';
    begin = end + 1;
  }
  return visible + CStringHelper::ToVisible(shown.substr(begin));
}

void WriteOutput(const std::string& text) {
  const std::string shown = isatty(STDOUT_FILENO) != 0 ? TerminalText(text) : text;
  if (std::fwrite(shown.data(), 1, shown.size(), stdout) != shown.size() || std::fflush(stdout) != 0) {
    throw CTrouble("standard output cannot be written: " + std::string(std::strerror(errno)));
  }
}

void WriteNote(const std::string& text) {
  const std::string line = "upgradesrv: " + CStringHelper::ToVisible(ShowC1Controls(text)) + "\n";
  // There is no one left to tell when even this fails.
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

void WriteError(const std::string& text) {
  WriteNote("error: " + text);
}

}  // namespace upgradesrv
