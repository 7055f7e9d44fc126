#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Looking at texts eight bytes at a time.
namespace kvx {

inline constexpr std::uint64_t kLowBits = 0x0101010101010101U;
inline constexpr std::uint64_t kHighBits = 0x8080808080808080U;

/// The eight bytes that begin at `bytes`, in the machine's order.
inline std::uint64_t WordAt(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof(word));
  return word;
}

/// Whether a byte of the word is less than `Limit`.
template <unsigned char Limit>
constexpr bool HasByteBelow(std::uint64_t word) {
  static_assert(Limit <= 128, "bytes from 128 on are never found");
  return ((word - kLowBits * Limit) & ~word & kHighBits) != 0;
}

/// Whether a byte of the word is `byte`.
constexpr bool HasByte(std::uint64_t word, unsigned char byte) {
  return HasByteBelow<1>(word ^ kLowBits * byte);
}

/// Whether `predicate(word)` holds for words that together have every byte of the text and no other. Bytes may come
/// more than once.
template <typename Predicate>
[[gnu::always_inline]] inline bool AllWords(std::string_view text, const Predicate& predicate) {
  constexpr std::size_t kSize = sizeof(std::uint64_t);
  const char* const begin = text.data();
  const std::size_t size = text.size();
  if (size >= kSize) {
    const char* const last = begin + size - kSize;
    for (const char* at = begin; at < last; at += kSize) {
      if (!predicate(WordAt(at))) {
        return false;
      }
    }
    return predicate(WordAt(last));
  }
  if (size == 0) {
    return true;
  }
  // Up to four bytes from each end, or the first, the middle and the last one, are all that there are.
  constexpr std::size_t kHalf = kSize / 2;
  const auto byte = [begin](std::size_t at) {
    return static_cast<std::uint64_t>(static_cast<unsigned char>(begin[at]));
  };
  if (size < kHalf) {
    constexpr std::uint64_t kRest = kLowBits << 16U;
    return predicate(byte(0) * kRest | byte(size / 2) << 8U | byte(size - 1));
  }
  std::uint32_t first = 0;
  std::uint32_t second = 0;
  std::memcpy(&first, begin, kHalf);
  std::memcpy(&second, begin + size - kHalf, kHalf);
  return predicate(std::uint64_t{first} << 32U | second);
}

}  // namespace kvx
