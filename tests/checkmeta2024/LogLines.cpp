#include "checkmeta2024/LogLines.h"

namespace test {
namespace {

using testing::AllOf;
using testing::Field;

testing::Matcher<const SLogLine&> Line(const testing::Matcher<int>& line, const std::string& file,
                                       const std::string& function, const std::string& message) {
  return AllOf(Field("file", &SLogLine::file, "deploy_tools/upgradesrv/src/checkmeta2024/" + file),
               Field("line", &SLogLine::line, line), Field("function", &SLogLine::function, function),
               Field("log name", &SLogLine::logName, "errormsg"), Field("level", &SLogLine::level, 40000),
               Field("message", &SLogLine::message, message));
}

}  // namespace

testing::Matcher<const SLogLine&> ErrorLine(const std::string& file, const std::string& function,
                                            const std::string& message) {
  return Line(testing::Gt(0), file, function, message);
}

testing::Matcher<const SLogLine&> ErrorLineAt(int line, const std::string& file, const std::string& function,
                                              const std::string& message) {
  return Line(testing::Eq(line), file, function, message);
}

}  // namespace test
