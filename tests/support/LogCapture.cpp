#include "support/LogCapture.h"

#include <memory>
#include <tuple>
#include <utility>

#include "kvxsptlog/Log.h"
#include "kvxsptlog/LogDestination.h"

namespace test {

class CLogCollector : public CLogDestination {
 public:
  void Write(const SLogEvent& event) override {
    lines.push_back({event.file, event.line, event.function, event.logName, event.level, event.message});
  }

  std::vector<SLogLine> lines;
};

bool operator==(const SLogLine& a, const SLogLine& b) {
  return std::tie(a.file, a.line, a.function, a.logName, a.level, a.message) ==
         std::tie(b.file, b.line, b.function, b.logName, b.level, b.message);
}

void PrintTo(const SLogLine& line, std::ostream* output) {
  *output << line.file << ":" << line.line << " " << line.function << " [" << line.logName << "] " << line.level << " "
          << line.message;
}

CLogCapture::CLogCapture() {
  auto collector = std::make_unique<CLogCollector>();
  collector_ = collector.get();
  CLog::SetDestination(std::move(collector));
}

CLogCapture::~CLogCapture() {
  CLog::SetDestination(nullptr);
}

const std::vector<SLogLine>& CLogCapture::Lines() const {
  return collector_->lines;
}

std::vector<std::string> CLogCapture::Messages() const {
  std::vector<std::string> messages;
  for (const SLogLine& line : Lines()) {
    messages.push_back(line.message);
  }
  return messages;
}

}  // namespace test
