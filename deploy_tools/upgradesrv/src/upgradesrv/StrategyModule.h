#pragma once

#include <memory>
#include <string>

class CUpgradeStrategy;

namespace upgradesrv {

/// A loaded module. Everything that came out of it (strategies, their results, exceptions) must be gone before the
/// module is.
class CStrategyModule {
 public:
  /// Loads DIRECTORY/lib<name>.so. Throws CTrouble for a name with a separator and for a file that is missing, cut off,
  /// not a shared library or without factory.
  CStrategyModule(const std::string& directory, const std::string& name);
  ~CStrategyModule();
  CStrategyModule(const CStrategyModule&) = delete;
  CStrategyModule& operator=(const CStrategyModule&) = delete;

  /// A new strategy. Throws CTrouble when the module has none of that name; what the factory throws passes through.
  std::unique_ptr<CUpgradeStrategy> CreateStrategy(const std::string& className) const;

 private:
  using Factory = CUpgradeStrategy*(const std::string&);

  std::string path_;
  void* library_ = nullptr;
  Factory* factory_ = nullptr;
};

/// Where a module of that name is loaded from.
std::string ModulePath(const std::string& directory, const std::string& name);

/// The directory "modules" beside the running executable.
std::string DefaultModuleDirectory();

}  // namespace upgradesrv
