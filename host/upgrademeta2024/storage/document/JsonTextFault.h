#pragma once

#include <simdjson.h>

#include <cstddef>
#include <string>
#include <string_view>

/// The offset in `text` at which an error of the parser lies. Errors of its first stage come without a location; the
/// place is then searched for. `location` is the offset that the parser gave, negative for none.
std::size_t FindJsonTextFault(std::string_view text, simdjson::error_code error, std::ptrdiff_t location);

/// What is wrong, in words for the reader of the document.
std::string JsonTextFaultMessage(simdjson::error_code error);
