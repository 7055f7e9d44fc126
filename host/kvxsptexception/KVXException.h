#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "kvxsptexception/kvxsptexception_export.h"

/// The exception of the host framework, thrown and copied by value: a 32-bit code and, optionally, a message.
class KVXSPTEXCEPTION_EXPORT CKVXException : public std::runtime_error {
 public:
  /// what() becomes "error 0x" and the code in upper-case hexadecimal.
  explicit CKVXException(int code);
  /// what() becomes the message, unchanged.
  CKVXException(int code, const std::string& message);
  /// The same for a code of another integer type (those of ErrorCodes.h are unsigned); 32 bits of it count.
  template <typename Code, typename = std::enable_if_t<std::is_integral_v<Code>>>
  explicit CKVXException(Code code) : CKVXException(static_cast<int>(code)) {}
  template <typename Code, typename = std::enable_if_t<std::is_integral_v<Code>>>
  CKVXException(Code code, const std::string& message) : CKVXException(static_cast<int>(code), message) {}

  CKVXException(const CKVXException&) = default;
  CKVXException& operator=(const CKVXException&) = default;
  ~CKVXException() override;

  std::uint32_t GetCode() const noexcept;
  /// "0x" and the code in upper-case hexadecimal without leading zeros.
  std::string GetCodeText() const;
  /// Whether the exception was made with a message of its own.
  bool HasMessage() const noexcept;

 private:
  std::uint32_t code_;
  bool hasMessage_;
};
