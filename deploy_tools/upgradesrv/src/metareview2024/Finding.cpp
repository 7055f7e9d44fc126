#include "metareview2024/Finding.h"

#include <sha2.h>

#include <array>

#include "kvxsptstring/StringHelper.h"

namespace metareview {

std::uint64_t FindingId(std::string_view path, EChange change) {
  std::string text(path);
  CStringHelper::ToLower(text);
  text += '\n';
  text += NameOf(change);
  SHA2_CTX context;
  SHA256Init(&context);
  SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  std::array<std::uint8_t, SHA256_DIGEST_LENGTH> digest{};
  SHA256Final(digest.data(), &context);
  std::uint64_t id = 0;
  for (std::size_t i = 0; i < sizeof(id); ++i) {
    id = id << 8U | digest.at(i);
  }
  return id;
}

std::string IdText(std::uint64_t id) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text(2 * sizeof(id), '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit) {
    *digit = kDigits[id & 0xFU];
    id >>= 4U;
  }
  return text;
}

}  // namespace metareview
