#include "metareview2024/words/Catalogue.h"

namespace metareview {

namespace {

// The header is seven numbers: magic number, revision, how many messages, where the table of keys is and where that of
// texts, and two about a hash table. A table has two numbers for each message: size and offset.
constexpr std::size_t kSizeOffset = 8;
constexpr std::size_t kKeysOffset = 12;
constexpr std::size_t kTextsOffset = 16;
constexpr std::size_t kNumberSize = 4;

}  // namespace

CCatalogue::CCatalogue(std::string_view bytes)
    : bytes_(bytes), size_(Number(kSizeOffset)), keys_(Number(kKeysOffset)), texts_(Number(kTextsOffset)) {}

std::string_view CCatalogue::Find(std::string_view key) const {
  std::size_t begin = 0;
  std::size_t end = size_;
  while (begin < end) {
    const std::size_t middle = begin + (end - begin) / 2;
    if (Key(middle) < key) {
      begin = middle + 1;
    } else {
      end = middle;
    }
  }
  return begin < size_ && Key(begin) == key ? Text(begin) : std::string_view();
}

std::string_view CCatalogue::Key(std::size_t index) const {
  // The key of a message with plural forms is followed by a NUL byte and the key of its plural.
  const std::string_view entry = Entry(keys_, index);
  return entry.substr(0, entry.find('\0'));
}

std::string_view CCatalogue::Text(std::size_t index) const {
  return Entry(texts_, index);
}

std::uint32_t CCatalogue::Number(std::size_t offset) const {
  std::uint32_t number = 0;
  for (std::size_t i = kNumberSize; i > 0; --i) {
    number = number << 8U | static_cast<unsigned char>(bytes_.at(offset + i - 1));
  }
  return number;
}

std::string_view CCatalogue::Entry(std::uint32_t table, std::size_t index) const {
  const std::size_t place = table + 2 * kNumberSize * index;
  return bytes_.substr(Number(place + kNumberSize), Number(place));
}

}  // namespace metareview
