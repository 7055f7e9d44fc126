#include <log4cplus/configurator.h>
#include <log4cplus/hierarchy.h>
#include <log4cplus/initializer.h>
#include <log4cplus/logger.h>

#include <memory>
#include <sstream>
#include <string>
#include <system_error>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/ReadFile.h"
#include "kvxsptlog/LogDestination.h"
#include "kvxsptstring/StringHelper.h"

namespace {

using log4cplus::Logger;
using log4cplus::helpers::Properties;

[[noreturn]] void Fail(const std::string& propertiesFile, const std::string& problem) {
  throw CKVXException(kvx::kFileError, CStringHelper::ToVisible(propertiesFile + ": " + problem) +
                                           ", or remove the file to log on standard error");
}

Properties ReadProperties(const std::string& file) {
  std::istringstream text(kvx::ReadFile(file));
  // A stream would keep a failed allocation to itself, and the lines after it.
  text.exceptions(std::ios::badbit);
  return Properties(text);
}

/// log4cplus empties a file that it opens, unless it is told to append.
void AppendToFiles(Properties& properties) {
  const std::string prefix = "log4cplus.appender.";
  const std::string suffix = "FileAppender";
  for (const std::string& name : properties.propertyNames()) {
    const std::string value = properties.getProperty(name);
    const bool isFile = name.compare(0, prefix.size(), prefix) == 0 && value.size() >= suffix.size() &&
                        value.compare(value.size() - suffix.size(), suffix.size(), suffix) == 0;
    if (isFile && !properties.exists(name + ".Append")) {
      properties.setProperty(name + ".Append", "true");
    }
  }
}

bool HasAppender() {
  if (!Logger::getRoot().getAllAppenders().empty()) {
    return true;
  }
  for (Logger& logger : Logger::getCurrentLoggers()) {
    if (!logger.getAllAppenders().empty()) {
      return true;
    }
  }
  return false;
}

/// The default hierarchy of log4cplus as a file configures it; each log is a logger.
class CLog4cplusDestination : public CLogDestination {
 public:
  explicit CLog4cplusDestination(const std::string& propertiesFile) {
    Properties properties = ReadProperties(propertiesFile);
    AppendToFiles(properties);
    Logger::getDefaultHierarchy().resetConfiguration();
    try {
      log4cplus::PropertyConfigurator(properties).configure();
    } catch (const std::system_error& error) {
      // Some appenders start threads.
      Fail(propertiesFile, "cannot be followed: " + error.code().message() + "; allow more threads or memory");
    }
    if (!HasAppender()) {
      Fail(propertiesFile, "configures no log destination; name an appender for log4cplus.rootLogger");
    }
  }

  ~CLog4cplusDestination() override { Logger::getDefaultHierarchy().resetConfiguration(); }

  CLog4cplusDestination(const CLog4cplusDestination&) = delete;
  CLog4cplusDestination& operator=(const CLog4cplusDestination&) = delete;

  void Write(const SLogEvent& event) override {
    Logger::getInstance(event.logName)
        .log(event.level, event.message, event.file.c_str(), event.line, event.function.c_str());
  }
};

}  // namespace

/// The one symbol that kvxsptlog looks up. The destination becomes the caller's.
extern "C" __attribute__((visibility("default"))) CLogDestination* OpenLog4cplusDestination(
    const std::string& propertiesFile) {
  // Keeps log4cplus alive to the end of the process.
  static const log4cplus::Initializer initializer;
  return std::make_unique<CLog4cplusDestination>(propertiesFile).release();
}
