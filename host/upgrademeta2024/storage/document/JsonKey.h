#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "kvxsptstring/detail/TextWords.h"

/// The name of a member that a reader knows, without escapes; compared a word at a time with the text of a document.
class CJsonKey {
 public:
  /// How many bytes IsAt() reads.
  static constexpr std::size_t kSize = 24;

  // Tables of names are lists of literals.
  template <std::size_t N>
  // cppcheck-suppress noExplicitConstructor
  // NOLINTNEXTLINE(google-explicit-constructor,modernize-avoid-c-arrays)
  constexpr CJsonKey(const char (&name)[N]) : text_(name, N - 1) {
    static_assert(N <= kSize, "the name and a quotation mark have no room");
    for (std::size_t i = 0; i < N; ++i) {
      bytes_[i] = i < N - 1 ? name[i] : '"';
      mask_[i] = static_cast<char>(0xFF);
    }
  }

  constexpr std::string_view Text() const { return text_; }

  /// Whether the name and a quotation mark stand at `text`, of which kSize bytes can be read.
  bool IsAt(const char* text) const {
    std::uint64_t difference = 0;
    for (std::size_t i = 0; i < kSize; i += sizeof(std::uint64_t)) {
      difference |= (kvx::WordAt(text + i) ^ kvx::WordAt(bytes_.data() + i)) & kvx::WordAt(mask_.data() + i);
    }
    return difference == 0;
  }

 private:
  std::string_view text_;
  std::array<char, kSize> bytes_{};
  std::array<char, kSize> mask_{};
};
