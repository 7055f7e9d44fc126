#include "kvxsptlog/Log.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <system_error>
#include <utility>

#include "kvxsptlog/LogDestination.h"
#include "kvxsptlog/detail/Log4cplusLibrary.h"
#include "kvxsptlog/detail/StandardErrorLog.h"
#include "kvxsptstring/StringHelper.h"

namespace {

constexpr int kErrorLevel = 40000;

std::atomic<std::size_t> errorCount{0};

std::mutex destinationMutex;
/// Null for the default.
std::unique_ptr<CLogDestination> theDestination;

struct SDefaultAtEnd {
  SDefaultAtEnd() = default;
  ~SDefaultAtEnd() { CLog::SetDestination(nullptr); }
  SDefaultAtEnd(const SDefaultAtEnd&) = delete;
  SDefaultAtEnd& operator=(const SDefaultAtEnd&) = delete;
};

std::string Visible(const char* text) {
  return CStringHelper::ToVisible(text != nullptr ? text : "");
}

}  // namespace

void CLog::Configure(const std::string& propertiesFile) {
  // What was configured ends first: two configurations may name one file.
  SetDestination(nullptr);
  std::error_code error;
  if (std::filesystem::exists(propertiesFile, error) || error) {
    SetDestination(kvx::OpenLog4cplus(propertiesFile));
    // Made after log4cplus is loaded, and so gone before it is.
    static const SDefaultAtEnd defaultAtEnd;
  }
}

void CLog::SetDestination(std::unique_ptr<CLogDestination> destination) {
  const std::lock_guard<std::mutex> lock(destinationMutex);
  theDestination = std::move(destination);
}

void CLog::Print(const char* file, int line, const char* function, const std::string& logName, int level,
                 const std::string& message) {
  if (level >= kErrorLevel) {
    ++errorCount;
  }
  const SLogEvent event{Visible(file),
                        line,
                        Visible(function),
                        CStringHelper::ToVisible(logName),
                        level,
                        CStringHelper::ToVisible(message)};
  const std::lock_guard<std::mutex> lock(destinationMutex);
  if (theDestination != nullptr) {
    theDestination->Write(event);
  } else {
    kvx::WriteToStandardError(event);
  }
}

std::size_t CLog::GetErrorCount() noexcept {
  return errorCount;
}
