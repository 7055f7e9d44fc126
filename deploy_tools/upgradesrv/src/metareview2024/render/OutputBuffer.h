#pragma once

#include <string>
#include <string_view>

#include "metareview2024/render/Render.h"

namespace metareview {

/// Gathers small parts of an output and passes them on together; Flush() the rest.
class COutputBuffer {
 public:
  explicit COutputBuffer(const Sink& sink) : sink_(sink) { buffer_.reserve(kSize); }

  void Write(std::string_view text) {
    if (buffer_.size() + text.size() > kSize) {
      Flush();
    }
    buffer_ += text;
  }
  void Flush() {
    if (!buffer_.empty()) {
      sink_(buffer_);
      buffer_.clear();
    }
  }

 private:
  static constexpr std::size_t kSize = 65536;

  const Sink& sink_;
  std::string buffer_;
};

}  // namespace metareview
