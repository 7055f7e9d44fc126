#include "kvxsptexception/KVXException.h"

#include <array>
#include <cstdio>

namespace {

std::string CodeText(std::uint32_t code) {
  std::array<char, 24> text{};
  std::snprintf(text.data(), text.size(), "error 0x%X", static_cast<unsigned>(code));
  return text.data();
}

}  // namespace

CKVXException::CKVXException(int code) : CKVXException(static_cast<std::uint32_t>(code)) {}

CKVXException::CKVXException(int code, const std::string& message)
    : CKVXException(static_cast<std::uint32_t>(code), message) {}

CKVXException::CKVXException(std::uint32_t code)
    : std::runtime_error(CodeText(code)), code_(code), hasMessage_(false) {}

CKVXException::CKVXException(std::uint32_t code, const std::string& message)
    : std::runtime_error(message), code_(code), hasMessage_(true) {}

CKVXException::~CKVXException() = default;

std::uint32_t CKVXException::GetCode() const noexcept {
  return code_;
}

bool CKVXException::HasMessage() const noexcept {
  return hasMessage_;
}
