#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace bench {

/// How much a generated metamodel holds.
struct SSize {
  std::string_view name;
  std::uint32_t classes;
  std::uint32_t links;
  std::uint32_t behaviors;
  std::uint32_t propertiesEach;

  std::uint32_t Elements() const { return classes + links + behaviors; }
  std::uint64_t Properties() const { return std::uint64_t{Elements()} * propertiesEach; }
};

constexpr std::array<SSize, 3> kSizes = {{
    {"S", 500, 200, 100, 20},
    {"M", 5000, 2000, 1000, 40},
    {"L", 20000, 8000, 4000, 50},
}};

constexpr std::uint32_t kPropertyBlock = 200;
constexpr std::uint32_t kElementBlock = 500;

/// How the installation's metamodel differs from the original. The three counts are of every kPropertyBlock properties:
/// changed in one attribute, deleted, and followed by an inserted one. `replacedElements` of every kElementBlock
/// elements are deleted, and as many are inserted.
struct SVariant {
  std::string_view name;
  std::uint32_t changedProperties;
  std::uint32_t deletedProperties;
  std::uint32_t insertedProperties;
  std::uint32_t replacedElements;
};

constexpr std::array<SVariant, 3> kVariants = {{
    {"same", 0, 0, 0, 0},
    {"usual", 2, 1, 1, 1},
    {"worst", kPropertyBlock, 0, 0, 0},
}};

/// The row of that name; null when there is none.
template <typename Rows>
const typename Rows::value_type* FindNamed(const Rows& rows, std::string_view name) {
  for (const auto& row : rows) {
    if (row.name == name) {
      return &row;
    }
  }
  return nullptr;
}

}  // namespace bench
