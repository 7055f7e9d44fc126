#include "kvxsptexception/KVXException.h"

#include <ios>
#include <locale>
#include <sstream>

namespace {

std::string CodeText(std::uint32_t code) {
  std::ostringstream text;
  // The process may have set a locale that groups digits.
  text.imbue(std::locale::classic());
  text << "0x" << std::uppercase << std::hex << code;
  return text.str();
}

}  // namespace

CKVXException::CKVXException(int code) : CKVXException(static_cast<std::uint32_t>(code)) {}

CKVXException::CKVXException(int code, const std::string& message)
    : CKVXException(static_cast<std::uint32_t>(code), message) {}

CKVXException::CKVXException(std::uint32_t code)
    : std::runtime_error("error " + CodeText(code)), code_(code), hasMessage_(false) {}

CKVXException::CKVXException(std::uint32_t code, const std::string& message)
    : std::runtime_error(message), code_(code), hasMessage_(true) {}

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
