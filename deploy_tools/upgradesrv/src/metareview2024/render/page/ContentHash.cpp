#include "metareview2024/render/page/ContentHash.h"

#include <sha2.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace metareview::page {

namespace {

using Digest = std::array<std::uint8_t, SHA256_DIGEST_LENGTH>;

std::string Base64(const Digest& bytes) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = group << 8U | (i + k < bytes.size() ? bytes.at(i + k) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      text += i + k <= bytes.size() ? kDigits[group >> (18U - 6U * k) & 0x3FU] : '=';
    }
  }
  return text;
}

}  // namespace

std::string ContentHash(std::string_view content) {
  SHA2_CTX context;
  SHA256Init(&context);
  SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
  Digest digest{};
  SHA256Final(digest.data(), &context);
  return Base64(digest);
}

}  // namespace metareview::page
