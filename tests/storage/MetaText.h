#pragma once

#include <string>

class CMetaDictionary2024;

namespace test {

/// Everything that a metamodel says, one value a line, so that two metamodels can be compared and a difference found.
std::string MetaText(const CMetaDictionary2024& dictionary);

}  // namespace test
