#include <charconv>
#include <cstdio>
#include <exception>
#include <string>

#include "generator/Metamodel.h"
#include "generator/UpgradeDirectory.h"

namespace {

template <typename Rows>
std::string Names(const Rows& rows) {
  std::string names;
  for (const auto& row : rows) {
    names += (names.empty() ? "" : ", ") + std::string(row.name);
  }
  return names;
}

bool ParseSeed(const std::string& text, std::uint32_t& seed) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seed);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const std::string self = arguments[0];
  const bool hasSeed = argumentCount == 5;
  const bench::SSize* size = argumentCount > 1 ? bench::FindNamed(bench::kSizes, arguments[1]) : nullptr;
  const bench::SVariant* variant = argumentCount > 2 ? bench::FindNamed(bench::kVariants, arguments[2]) : nullptr;
  std::uint32_t seed = bench::kDefaultSeed;
  if (size == nullptr || variant == nullptr || (argumentCount != 4 && !hasSeed) ||
      (hasSeed && !ParseSeed(arguments[4], seed))) {
    const std::string usage = "usage: " + self + " SIZE VARIANT DIRECTORY [SEED]\nsizes: " + Names(bench::kSizes) +
                              "; variants of the installation: " + Names(bench::kVariants) + "\n";
    std::fputs(usage.c_str(), stderr);
    return 2;
  }
  try {
    bench::WriteUpgradeDirectory(*size, *variant, seed, arguments[3]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: error: %s\n", self.c_str(), error.what());
    return 2;
  }
  return 0;
}
