#include "metareview2024/render/LookupsDigest.h"

#include <sha2.h>

#include <array>
#include <cstdint>
#include <string_view>

#include "metareview2024/Finding.h"

namespace metareview {

namespace {

class CDigest {
 public:
  CDigest() { SHA256Init(&context_); }

  /// With its length before it, so that no two lists of texts are the same in a row.
  void Add(std::string_view text) {
    Update(std::to_string(text.size()) + ":");
    Update(text);
  }

  std::uint64_t Take() {
    std::array<std::uint8_t, SHA256_DIGEST_LENGTH> digest{};
    SHA256Final(digest.data(), &context_);
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof(number); ++i) {
      number = number << 8U | digest.at(i);
    }
    return number;
  }

 private:
  void Update(std::string_view text) {
    SHA256Update(&context_, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  }

  SHA2_CTX context_{};
};

}  // namespace

std::string LookupsDigest(const SLookups& lookups, EKind kind) {
  const std::string begin = std::string(NameOf(kind)) + "/";
  CDigest digest;
  for (const SLookup& lookup : lookups.lookups) {
    if (lookup.path.compare(0, begin.size(), begin) != 0) {
      continue;
    }
    digest.Add(lookup.path);
    digest.Add(lookup.rule);
    digest.Add(lookup.table);
    digest.Add(std::to_string(lookup.columns.size()));
    for (const std::string& column : lookup.columns) {
      digest.Add(column);
    }
    digest.Add(std::to_string(static_cast<int>(lookup.measure)));
    digest.Add(lookup.limit);
  }
  return IdText(digest.Take());
}

}  // namespace metareview
