#pragma once

#include <memory>

class CMetaDictionary2024;

namespace test {

/// A metamodel that RapidCheck's current case determines: any characters but NUL, any numbers, any order.
std::shared_ptr<CMetaDictionary2024> GenerateMetamodel();

}  // namespace test
