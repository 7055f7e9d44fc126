#pragma once

#include <gmock/gmock.h>

#include <string>

#include "support/LogCapture.h"

namespace test {

/// An error line of the module, from a line of its source file `file`.
testing::Matcher<const SLogLine&> ErrorLine(const std::string& file, const std::string& function,
                                            const std::string& message);
/// The same from this line only.
testing::Matcher<const SLogLine&> ErrorLineAt(int line, const std::string& file, const std::string& function,
                                              const std::string& message);

}  // namespace test
