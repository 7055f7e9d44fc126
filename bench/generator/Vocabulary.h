#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// One name in the forms in which a metamodel holds it.
struct SName {
  std::string internalName;
  std::string displayName;
  /// In capitals with underscores, for columns and tables.
  std::string storedName;
};

/// The names that properties have, none twice.
const std::vector<SName>& PropertyNames();

/// Names of elements and methods; each function gives another name for every index.
SName ClassName(std::uint32_t index);
SName LinkName(std::uint32_t index);
SName BehaviorName(std::uint32_t index);
SName MethodName(std::uint32_t index);

}  // namespace bench
