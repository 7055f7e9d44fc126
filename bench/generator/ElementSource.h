#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "generator/Vocabulary.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace bench {

enum EKind : std::uint32_t { kClasses, kLinks, kBehaviors };

/// An element of any kind; what its kind lacks is empty.
struct SElement {
  SName name;
  std::uint32_t classId = 0;
  std::vector<std::string> behaviors;
  std::vector<SName> methods;
  std::vector<SMetaPropertyValues2024> properties;
  /// Texts of the properties that are in no vocabulary.
  std::deque<std::string> texts;

  std::string_view Keep(std::string text) { return texts.emplace_back(std::move(text)); }
};

/// Makes elements from nothing but the seed, the kind and the index, so that any may be made at any time.
class CElementSource {
 public:
  CElementSource(std::uint32_t seed, std::uint32_t propertiesEach);

  SElement Make(EKind kind, std::uint32_t index) const;

 private:
  std::uint32_t seed_;
  std::uint32_t propertiesEach_;
};

}  // namespace bench
