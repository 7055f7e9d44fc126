#pragma once

#include <cstddef>
#include <string>

namespace test {

/// What client and original have to do with each other.
enum class ERelation {
  /// The same names, each property with another length.
  kChanged,
  /// No name in common.
  kReplaced
};

/// One side of a comparison, of a size, as a metamodel document.
using Shape = std::string (*)(std::size_t size, const std::string& prefix, int length);

/// `size` classes with one property each.
std::string ClassesOfOneProperty(std::size_t size, const std::string& prefix, int length);
/// One class with `size` properties.
std::string PropertiesOfOneClass(std::size_t size, const std::string& prefix, int length);
/// One behavior with `size` methods.
std::string MethodsOfOneBehavior(std::size_t size, const std::string& prefix, int length);
/// One class with `size` behavior names.
std::string BehaviorNamesOfOneClass(std::size_t size, const std::string& prefix, int length);
/// One element of each kind, with a property, a method and a behavior name, all names 10 bytes times `size` long.
std::string LongNames(std::size_t size, const std::string& prefix, int length);

}  // namespace test
