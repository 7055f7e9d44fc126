#pragma once

#include <memory>
#include <string>

#include "support/MetaMaker.h"
#include "upgrademeta2024/MetaDictionary2024.h"

namespace test {

/// A metamodel that takes long enough to read and write for being interrupted.
inline std::shared_ptr<CMetaDictionary2024> LargeMetamodel(int classes) {
  auto dictionary = std::make_shared<CMetaDictionary2024>();
  std::vector<SProperty> properties;
  for (int i = 0; i < 200; ++i) {
    properties.push_back(Property("Property" + std::to_string(i)));
  }
  for (int i = 0; i < classes; ++i) {
    dictionary->AddClass(MakeClass({"Class" + std::to_string(i), {}, properties}));
  }
  dictionary->AddBehavior(MakeBehavior({"Last", {"Method"}, {}}));
  return dictionary;
}

}  // namespace test
