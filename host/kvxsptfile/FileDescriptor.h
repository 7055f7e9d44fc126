#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace kvx {

/// Owns the descriptor of an open file, or none.
class CFileDescriptor {
 public:
  CFileDescriptor() = default;
  /// A negative number is none.
  explicit CFileDescriptor(int descriptor) : descriptor_(descriptor) {}
  ~CFileDescriptor() { Close(); }
  CFileDescriptor(CFileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  CFileDescriptor& operator=(CFileDescriptor&& other) noexcept {
    if (this != &other) {
      Close();
      descriptor_ = std::exchange(other.descriptor_, -1);
    }
    return *this;
  }

  bool IsOpen() const { return descriptor_ >= 0; }
  int Get() const { return descriptor_; }
  /// Answers with 0 or an errno.
  int Close() { return IsOpen() && close(std::exchange(descriptor_, -1)) != 0 ? errno : 0; }

 private:
  int descriptor_ = -1;
};

}  // namespace kvx
