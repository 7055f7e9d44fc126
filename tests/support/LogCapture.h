#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace test {

/// One event of the log, as a destination gets it.
struct SLogLine {
  std::string file;
  int line;
  std::string function;
  std::string logName;
  int level;
  std::string message;
};

bool operator==(const SLogLine& a, const SLogLine& b);
void PrintTo(const SLogLine& line, std::ostream* output);

class CLogCollector;

/// Collects every event of the log, in place of all other destinations, while it lives.
class CLogCapture {
 public:
  CLogCapture();
  ~CLogCapture();
  CLogCapture(const CLogCapture&) = delete;
  CLogCapture& operator=(const CLogCapture&) = delete;

  const std::vector<SLogLine>& Lines() const;
  std::vector<std::string> Messages() const;

 private:
  // The log owns it.
  CLogCollector* collector_;
};

}  // namespace test
