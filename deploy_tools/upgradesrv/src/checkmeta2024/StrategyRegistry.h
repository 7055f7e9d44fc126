#pragma once

#include <algorithm>
#include <cctype>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>

#include "upgradecontext/UpgradeStrategy.h"

namespace checkmeta {

/// The strategies that the module can create, by class name without regard to letter case.
class CStrategyRegistry {
 public:
  /// Makes a new strategy, which the caller owns.
  using Factory = std::function<CUpgradeStrategy*()>;

  /// The first factory of a name stays; a later one is dropped.
  void Register(const std::string& className, Factory factory) {
    factories_.emplace(LowerCase(className), std::move(factory));
  }

  /// A new strategy, or null for an unknown name. Throws std::bad_function_call when the name's factory is empty.
  CUpgradeStrategy* Create(const std::string& className) const {
    const auto found = factories_.find(LowerCase(className));
    return found != factories_.end() ? found->second() : nullptr;
  }

 private:
  static std::string LowerCase(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
  }

  std::unordered_map<std::string, Factory> factories_;
};

}  // namespace checkmeta
