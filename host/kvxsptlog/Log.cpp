#include "kvxsptlog/Log.h"

#include <log4cplus/configurator.h>
#include <log4cplus/consoleappender.h>
#include <log4cplus/hierarchy.h>
#include <log4cplus/initializer.h>
#include <log4cplus/logger.h>

#include <atomic>
#include <filesystem>
#include <memory>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptlog/detail/OneLineLayout.h"

namespace {

std::atomic<std::size_t> errorCount{0};

bool HasDestination() {
  if (!log4cplus::Logger::getRoot().getAllAppenders().empty()) {
    return true;
  }
  for (log4cplus::Logger& logger : log4cplus::Logger::getCurrentLoggers()) {
    if (!logger.getAllAppenders().empty()) {
      return true;
    }
  }
  return false;
}

void ConfigureDefault() {
  const log4cplus::SharedAppenderPtr console(
      std::make_unique<log4cplus::ConsoleAppender>(/*logToStdErr=*/true, /*immediateFlush=*/true).release());
  console->setLayout(std::make_unique<COneLineLayout>());
  log4cplus::Logger::getRoot().addAppender(console);
}

/// Keeps log4cplus alive from the first use of the log to the end of the process.
void EnsureInitialized() {
  static const log4cplus::Initializer initializer;
}

}  // namespace

void CLog::Configure(const std::string& propertiesFile) {
  EnsureInitialized();
  log4cplus::Logger::getDefaultHierarchy().resetConfiguration();
  if (!std::filesystem::exists(propertiesFile)) {
    ConfigureDefault();
    return;
  }
  log4cplus::PropertyConfigurator::doConfigure(propertiesFile);
  if (!HasDestination()) {
    throw CKVXException(kvx::kFileError, propertiesFile +
                                             ": configures no log destination; name an appender for "
                                             "log4cplus.rootLogger, or remove the file to log on standard error");
  }
}

void CLog::Print(const char* file, int line, const char* function, const std::string& logName, int level,
                 const std::string& message) {
  EnsureInitialized();
  if (level >= log4cplus::ERROR_LOG_LEVEL) {
    ++errorCount;
  }
  if (!HasDestination()) {
    ConfigureDefault();
  }
  log4cplus::Logger::getInstance(logName).log(level, message, file != nullptr ? file : "", line,
                                              function != nullptr ? function : "");
}

std::size_t CLog::GetErrorCount() noexcept {
  return errorCount;
}
