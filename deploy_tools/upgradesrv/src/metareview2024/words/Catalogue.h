#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace metareview {

/// The messages of one language: a compiled message catalogue (GNU MO, little endian) in memory, which must stay as
/// long as what is taken from it.
class CCatalogue {
 public:
  explicit CCatalogue(std::string_view bytes);

  /// The text of a message, its plural forms each ended by a NUL byte but the last; an empty view for an unknown key.
  /// The key "" is that of the catalogue's header.
  std::string_view Find(std::string_view key) const;

  std::size_t Size() const { return size_; }
  /// The keys are sorted.
  std::string_view Key(std::size_t index) const;
  std::string_view Text(std::size_t index) const;

 private:
  std::uint32_t Number(std::size_t offset) const;
  std::string_view Entry(std::uint32_t table, std::size_t index) const;

  std::string_view bytes_;
  std::uint32_t size_;
  std::uint32_t keys_;
  std::uint32_t texts_;
};

}  // namespace metareview
