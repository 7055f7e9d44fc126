#include "checkmeta2024/ErrorLog.h"

#include "kvxsptlog/Log.h"

namespace checkmeta {
namespace {

constexpr const char* kLogName = "errormsg";
constexpr int kLogLevel = 40000;

}  // namespace

std::string CodedMessage(const std::string& message, std::uint32_t code) {
  std::string digits;
  for (; code != 0 || digits.empty(); code /= 16) {
    digits.insert(digits.begin(), "0123456789ABCDEF"[code % 16]);
  }
  return message + "<hr=0x" + digits + ">";
}

void LogError(const SLogPlace& place, const std::string& message, std::uint32_t code) {
  CLog::Print(place.file, place.line, place.function, kLogName, kLogLevel, CodedMessage(message, code));
}

}  // namespace checkmeta
