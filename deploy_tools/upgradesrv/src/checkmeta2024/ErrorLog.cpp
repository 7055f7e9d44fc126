#include "checkmeta2024/ErrorLog.h"

#include <ios>
#include <locale>
#include <sstream>

#include "kvxsptlog/Log.h"

namespace checkmeta {
namespace {

const std::string kLogName = "errormsg";
constexpr int kLogLevel = 40000;

}  // namespace

std::string CodedMessage(const std::string& message, std::uint32_t code) {
  std::ostringstream text;
  // The process may have set a locale that groups digits.
  text.imbue(std::locale::classic());
  text << message << "<hr=0x" << std::uppercase << std::hex << code << ">";
  return text.str();
}

void LogError(const SLogPlace& place, const std::string& message, std::uint32_t code) {
  CLog::Print(place.file, place.line, place.function, kLogName, kLogLevel, CodedMessage(message, code));
}

}  // namespace checkmeta
