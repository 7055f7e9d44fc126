#pragma once

struct SLogEvent;

namespace kvx {

/// "LEVEL file:line function - message" and a line end on standard error.
void WriteToStandardError(const SLogEvent& event);

}  // namespace kvx
