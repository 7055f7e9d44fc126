#pragma once

#include <string>

/// What the strategy CSetsBytes reports: bytes that something on the way might want to change.
inline const std::string kBytes("\x1B[1m\r\n\0\t\xC2\x9B\x32J\xE4\xB8\xAD\n end", 20);
