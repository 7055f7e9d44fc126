#pragma once

#include <string>

namespace fuzz {

/// Ends the process, for the fuzzer to report, when a promise of the code under test is broken. `detail` is shown with
/// control characters made visible.
void Require(bool holds, const char* promise, const std::string& detail = "");

}  // namespace fuzz
