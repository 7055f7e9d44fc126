#pragma once

#include <memory>
#include <string>
#include <vector>

class CUpgradeStrategy;

namespace upgradesrv {

/// A loaded module. Everything that came out of it (strategies, their results, exceptions) must be gone before the
/// module is.
class CStrategyModule {
 public:
  /// Loads lib<name>.so out of the first of the directories that has it. Throws CTrouble for a name with a separator
  /// and for a file that is missing, cut off, not a shared library or without factory, or that others may write to when
  /// this process is root's.
  CStrategyModule(const std::vector<std::string>& directories, const std::string& name);
  ~CStrategyModule();
  CStrategyModule(const CStrategyModule&) = delete;
  CStrategyModule& operator=(const CStrategyModule&) = delete;

  /// A new strategy; an empty pointer when the module has none of that name. What the factory throws passes through.
  std::unique_ptr<CUpgradeStrategy> CreateStrategy(const std::string& className) const;

  const std::string& GetPath() const { return path_; }

 private:
  using Factory = CUpgradeStrategy*(const std::string&);

  std::string path_;
  void* library_ = nullptr;
  Factory* factory_ = nullptr;
};

/// What the file of a module is called.
std::string ModuleFile(const std::string& name);

/// The directory lib/upgradesrv/modules of the tree that the running executable is in.
std::string DefaultModuleDirectory();

}  // namespace upgradesrv
