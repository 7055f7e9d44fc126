#include "support/LogCapture.h"

#include <log4cplus/hierarchy.h>
#include <log4cplus/logger.h>
#include <log4cplus/spi/loggingevent.h>

#include <memory>
#include <tuple>

#include "kvxsptlog/Log.h"

namespace test {
namespace {

class CCollector : public log4cplus::Appender {
 public:
  CCollector() = default;
  ~CCollector() override { destructorImpl(); }

  void close() override { closed = true; }
  void append(const log4cplus::spi::InternalLoggingEvent& event) override {
    lines.push_back({event.getFile(), event.getLine(), event.getFunction(), event.getLoggerName(), event.getLogLevel(),
                     event.getMessage()});
  }

  std::vector<SLogLine> lines;
};

}  // namespace

bool operator==(const SLogLine& a, const SLogLine& b) {
  return std::tie(a.file, a.line, a.function, a.logName, a.level, a.message) ==
         std::tie(b.file, b.line, b.function, b.logName, b.level, b.message);
}

void PrintTo(const SLogLine& line, std::ostream* output) {
  *output << line.file << ":" << line.line << " " << line.function << " [" << line.logName << "] " << line.level << " "
          << line.message;
}

CLogCapture::CLogCapture() {
  CLog::Configure("/nonexistent/log4cplus.properties");
  log4cplus::Logger::getRoot().removeAllAppenders();
  appender_ = log4cplus::SharedAppenderPtr(std::make_unique<CCollector>().release());
  log4cplus::Logger::getRoot().addAppender(appender_);
}

CLogCapture::~CLogCapture() {
  log4cplus::Logger::getRoot().removeAllAppenders();
}

const std::vector<SLogLine>& CLogCapture::Lines() const {
  return static_cast<CCollector&>(*appender_).lines;
}

std::vector<std::string> CLogCapture::Messages() const {
  std::vector<std::string> messages;
  for (const SLogLine& line : Lines()) {
    messages.push_back(line.message);
  }
  return messages;
}

}  // namespace test
