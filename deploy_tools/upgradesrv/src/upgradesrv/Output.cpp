#include "upgradesrv/Output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "kvxsptstring/StringHelper.h"

namespace upgradesrv {
namespace {

constexpr const char* kHidden = "***";

/// Where a value of connection words ends that begins at `begin`; in quotes, where these end.
std::size_t EndOfValue(const std::string& text, std::size_t begin) {
  if (begin == text.size() || text[begin] != '\'') {
    return std::min(text.find_first_of(" &,;\"'", begin), text.size());
  }
  std::size_t end = begin + 1;
  while (end < text.size() && text[end] != '\'') {
    end += text[end] == '\\' ? 2 : 1;
  }
  return std::min(end + 1, text.size());
}

/// The text with the values of "password = VALUE" hidden.
std::string WithoutValues(const std::string& text) {
  std::string lower = text;
  CStringHelper::ToLower(lower);
  std::string shown;
  std::size_t copied = 0;
  constexpr const char* kWord = "password";
  for (std::size_t at = lower.find(kWord); at != std::string::npos; at = lower.find(kWord, at)) {
    at += std::strlen(kWord);
    const std::size_t equals = lower.find_first_not_of(' ', at);
    if (equals == std::string::npos || text[equals] != '=') {
      continue;
    }
    const std::size_t begin = std::min(lower.find_first_not_of(' ', equals + 1), text.size());
    shown.append(text, copied, begin - copied).append(kHidden);
    copied = EndOfValue(text, begin);
    at = copied;
  }
  return shown.append(text, copied);
}

/// The text with what stands before "@" in an address hidden, when it holds a ":".
std::string WithoutLogins(const std::string& text) {
  std::string shown;
  std::size_t copied = 0;
  for (std::size_t at = text.find(":/"); at != std::string::npos; at = text.find(":/", at + 1)) {
    const std::size_t begin = std::min(text.find_first_not_of('/', at + 1), text.size());
    const std::size_t colon = text.find_first_of(":@/ \"'", begin);
    if (begin < copied || colon == std::string::npos || text[colon] != ':') {
      continue;
    }
    const std::size_t end = std::min(text.find_first_of(" \"'", begin), text.size());
    const std::size_t address = text.rfind('@', end);
    if (address != std::string::npos && address > colon) {
      shown.append(text, copied, begin - copied).append(kHidden);
      copied = address;
    }
  }
  return shown.append(text, copied);
}

}  // namespace

std::string WithoutPasswords(const std::string& text) {
  return WithoutLogins(WithoutValues(text));
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

void WriteOutOfMemory() noexcept {
  constexpr std::string_view kLine = "upgradesrv: error: out of memory\n";
  static_cast<void>(write(STDERR_FILENO, kLine.data(), kLine.size()) < 0);
}

}  // namespace upgradesrv
