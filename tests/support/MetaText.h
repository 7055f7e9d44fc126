#pragma once

#include <string>

class CMetaDictionary2024;

namespace test {

/// Every value of every element, read through the getters, one element to a line, in the order of the lists. Two
/// metamodels are equal when their texts are.
std::string TextOf(const CMetaDictionary2024& dictionary);

}  // namespace test
