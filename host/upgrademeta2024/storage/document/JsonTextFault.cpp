#include "upgrademeta2024/storage/document/JsonTextFault.h"

#include <algorithm>

namespace {

std::size_t SequenceLength(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  if (byte >= 0xF0) {
    return 4;
  }
  if (byte >= 0xE0) {
    return 3;
  }
  return byte >= 0xC0 ? 2 : 1;
}

std::size_t FirstInvalidUtf8(std::string_view text) {
  // Lines that are valid are passed over as a whole; the first that is not is walked character by character.
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
    if (!simdjson::validate_utf8(text.data() + begin, end - begin)) {
      break;
    }
    begin = end;
  }
  while (begin < text.size()) {
    const std::size_t length = std::min(SequenceLength(text[begin]), text.size() - begin);
    if (!simdjson::validate_utf8(text.data() + begin, length)) {
      break;
    }
    begin += length;
  }
  return begin;
}

std::size_t FirstControlInString(std::string_view text) {
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') {
      inString = !inString;
    } else if (inString && text[i] == '\\') {
      ++i;
    } else if (inString && static_cast<unsigned char>(text[i]) < 0x20) {
      return i;
    }
  }
  return text.size();
}

// An invalid escape sequence is found when its string has been passed; the place is the quote that closes the string.
std::size_t EndOfStringBefore(std::string_view text, std::size_t location) {
  const std::size_t quote = location > 0 ? text.rfind('"', location - 1) : std::string_view::npos;
  return quote != std::string_view::npos ? quote : location;
}

}  // namespace

std::size_t FindJsonTextFault(std::string_view text, simdjson::error_code error, std::ptrdiff_t location) {
  const std::size_t given = location < 0 ? text.size() : std::min(static_cast<std::size_t>(location), text.size());
  switch (error) {
    case simdjson::UTF8_ERROR:
      return FirstInvalidUtf8(text);
    case simdjson::UNESCAPED_CHARS:
    case simdjson::UNCLOSED_STRING:
      // A string that lacks its closing quote runs on over the end of its line.
      return FirstControlInString(text);
    case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
      return text.find_last_not_of(" \t\r\n") + 1;
    case simdjson::STRING_ERROR:
      return EndOfStringBefore(text, given);
    case simdjson::EMPTY:
      return 0;
    default:
      return given;
  }
}

std::string JsonTextFaultMessage(simdjson::error_code error) {
  switch (error) {
    case simdjson::EMPTY:
      return "the document is empty";
    case simdjson::UTF8_ERROR:
      return "not valid UTF-8";
    case simdjson::UNESCAPED_CHARS:
      return "a control character in a string is not escaped";
    case simdjson::UNCLOSED_STRING:
      return "a string is not closed";
    case simdjson::STRING_ERROR:
      return "a string holds an invalid escape sequence";
    case simdjson::TRAILING_CONTENT:
      return "text follows the end of the document";
    case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
      return "the document does not end with the } of its object; it is cut off, or text follows it";
    case simdjson::CAPACITY:
      return "the document is too large";
    default:
      return "not valid JSON";
  }
}
