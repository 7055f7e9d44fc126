#include "upgradesrv/StrategyModule.h"

#include <dlfcn.h>

#include <filesystem>

#include "upgradecontext/UpgradeStrategy.h"
#include "upgradesrv/Output.h"

namespace upgradesrv {
namespace {

constexpr const char* kFactoryName = "CreateReflectionClassObject";

std::string LoaderError() {
  const char* error = dlerror();
  return error != nullptr ? error : "unknown error of the loader";
}

}  // namespace

CStrategyModule::CStrategyModule(const std::string& directory, const std::string& name) {
  if (name.empty() || name.find('/') != std::string::npos || name.find('\0') != std::string::npos) {
    throw CTrouble("module \"" + name + "\": must be a bare name; its file is looked up in the module directory");
  }
  // With a separator in it the loader takes the path as it is and searches nowhere else.
  path_ = std::filesystem::absolute(directory) / ("lib" + name + ".so");
  std::error_code error;
  if (!std::filesystem::exists(path_, error)) {
    throw CTrouble("module " + name + ": there is no " + path_ +
                   "; install the module there or name its directory with --module-dir");
  }
  library_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library_ == nullptr) {
    throw CTrouble("module " + name + ": cannot be loaded: " + LoaderError());
  }
  // POSIX wants a pointer to a function to be readable from what dlsym returns.
  factory_ = reinterpret_cast<Factory*>(dlsym(library_, kFactoryName));
  if (factory_ == nullptr) {
    dlclose(library_);
    throw CTrouble("module " + name + ": " + path_ + " is not a strategy module: it does not export " + kFactoryName);
  }
}

CStrategyModule::~CStrategyModule() {
  dlclose(library_);
}

std::unique_ptr<CUpgradeStrategy> CStrategyModule::CreateStrategy(const std::string& className) const {
  std::unique_ptr<CUpgradeStrategy> strategy(factory_(className));
  if (strategy == nullptr) {
    throw CTrouble(path_ + ": the module has no strategy class \"" + className +
                   R"("; correct "class" in upgrade.json)");
  }
  return strategy;
}

std::string DefaultModuleDirectory() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "modules";
}

}  // namespace upgradesrv
