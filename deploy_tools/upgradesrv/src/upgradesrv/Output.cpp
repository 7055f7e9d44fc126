#include "upgradesrv/Output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <regex>

#include "kvxsptstring/StringHelper.h"

namespace upgradesrv {

std::string WithoutPasswords(const std::string& text) {
  static const std::regex value("(pass(word|wd)[ ]*=[ ]*)('([^'\\\\]|\\\\.)*'?|[^ &,;\"']*)",
                                std::regex::icase | std::regex::optimize);
  static const std::regex authority("(:/+)[^ \"'@/]*:[^ \"']*@", std::regex::optimize);
  return std::regex_replace(std::regex_replace(text, value, "$1***"), authority, "$1***@");
}

// A NUL would end what().
CTrouble::CTrouble(const std::string& text) : std::runtime_error(WithoutPasswords(CStringHelper::ToVisible(text))) {}

std::string TerminalText(const std::string& text) {
  std::string visible;
  std::size_t begin = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
    visible += CStringHelper::ToVisible(text.substr(begin, end - begin)) + '\n';
    begin = end + 1;
  }
  return visible + CStringHelper::ToVisible(text.substr(begin));
}

void WriteOutput(const std::string& text) {
  const std::string shown = isatty(STDOUT_FILENO) != 0 ? TerminalText(text) : text;
  if (std::fwrite(shown.data(), 1, shown.size(), stdout) != shown.size() || std::fflush(stdout) != 0) {
    throw CTrouble("standard output cannot be written: " + std::string(std::strerror(errno)));
  }
}

void WriteNote(const std::string& text) {
  const std::string line = "upgradesrv: " + WithoutPasswords(CStringHelper::ToVisible(text)) + "\n";
  // There is no one left to tell when even this fails.
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

void WriteError(const std::string& text) {
  WriteNote("error: " + text);
}

}  // namespace upgradesrv
