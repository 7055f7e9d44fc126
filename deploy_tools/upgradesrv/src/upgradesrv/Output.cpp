#include "upgradesrv/Output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "kvxsptstring/StringHelper.h"

namespace upgradesrv {

std::string TerminalText(const std::string& text) {
  std::string visible;
  std::string line;
  const auto endLine = [&] {
    visible += CStringHelper::ToVisible(line);
    line.clear();
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
    if (text[i] == '\n') {
      endLine();
      visible += '\n';
    } else if (text[i] == '\xC2' && next >= 0x80 && next < 0xA0) {
      // U+0080 to U+009F are control characters too; U+009B begins an escape sequence.
      constexpr const char* kDigits = "0123456789ABCDEF";
      line += std::string("\\u00") + kDigits[next / 16] + kDigits[next % 16];
      ++i;
    } else {
      line += text[i];
    }
  }
  endLine();
  return visible;
}

void WriteOutput(const std::string& text) {
  const std::string shown = isatty(STDOUT_FILENO) != 0 ? TerminalText(text) : text;
  if (std::fwrite(shown.data(), 1, shown.size(), stdout) != shown.size() || std::fflush(stdout) != 0) {
    throw CTrouble("standard output cannot be written: " + std::string(std::strerror(errno)));
  }
}

void WriteNote(const std::string& text) {
  const std::string line = "upgradesrv: " + CStringHelper::ToVisible(text) + "\n";
  // There is no one left to tell when even this fails.
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

void WriteError(const std::string& text) {
  WriteNote("error: " + text);
}

}  // namespace upgradesrv
