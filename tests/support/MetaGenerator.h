#pragma once

#include <memory>

class CMetaDictionary2024;

namespace test {

/// Whether texts may hold NUL characters beside all other ones: a document can, a database cannot.
enum class EControls { kWithNul, kWithoutNul };

/// A metamodel that RapidCheck's current case determines: any characters, any numbers, any order.
std::shared_ptr<CMetaDictionary2024> GenerateMetamodel(EControls controls);

}  // namespace test
