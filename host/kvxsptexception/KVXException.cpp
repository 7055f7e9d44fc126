#include "kvxsptexception/KVXException.h"

#include <array>
#include <charconv>

namespace {

std::string CodeText(std::uint32_t code) {
  // Not by a stream: it would keep a failed allocation to itself.
  std::array<char, 8> digits{};
  char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), code, 16).ptr;
  std::string text = "0x";
  for (const char* digit = digits.data(); digit != end; ++digit) {
    text += *digit >= 'a' ? static_cast<char>(*digit - 'a' + 'A') : *digit;
  }
  return text;
}

}  // namespace

CKVXException::CKVXException(int code)
    : std::runtime_error("error " + CodeText(static_cast<std::uint32_t>(code))),
      code_(static_cast<std::uint32_t>(code)),
      hasMessage_(false) {}

CKVXException::CKVXException(int code, const std::string& message)
    : std::runtime_error(message), code_(static_cast<std::uint32_t>(code)), hasMessage_(true) {}

CKVXException::~CKVXException() = default;

std::uint32_t CKVXException::GetCode() const noexcept {
  return code_;
}

std::string CKVXException::GetCodeText() const {
  return CodeText(code_);
}

bool CKVXException::HasMessage() const noexcept {
  return hasMessage_;
}
