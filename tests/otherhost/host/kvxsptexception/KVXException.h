#pragma once

#include <string>

namespace otherhost {
struct STestAccess;
}  // namespace otherhost

class CKVXException {
 public:
  explicit CKVXException(int code) : code_(code) {}
  CKVXException(int code, const std::string& message) : code_(code), message_(message) {}

 private:
  friend struct otherhost::STestAccess;

  int code_;
  std::string message_;
};
