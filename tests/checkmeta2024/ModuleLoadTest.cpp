#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <string>

#include "support/FailingNew.h"
#include "upgradecontext/UpgradeStrategy.h"

namespace {

using Factory = CUpgradeStrategy*(const std::string&);

enum EExit { kStrategy = 40, kNoStrategy, kNoMemory, kNotLoaded };

/// Loads the module, the n-th allocation meanwhile failing, asks for the strategy and ends the process by what comes.
[[noreturn]] void LoadAndAsk(std::size_t number) {
  const std::string name = "CCheckMetaStrategy2024";
  Factory* factory = nullptr;
  // A host has its libraries loaded before it loads a module.
  if (dlopen(UPGRADESRV_HOST_LIBRARY, RTLD_NOW) == nullptr) {
    std::exit(kNotLoaded);
  }
  {
    const test::CFailingNew failing(number);
    if (void* const library = dlopen(UPGRADESRV_CHECK_MODULE, RTLD_NOW); library != nullptr) {
      factory = reinterpret_cast<Factory*>(dlsym(library, "CreateReflectionClassObject"));
    }
  }
  if (factory == nullptr) {
    std::exit(kNotLoaded);
  }
  try {
    const std::unique_ptr<CUpgradeStrategy> strategy(factory(name));
    std::exit(strategy != nullptr ? kStrategy : kNoStrategy);
  } catch (const std::bad_alloc&) {
    std::exit(kNoMemory);
  }
}

/// The registry has one entry: its name, twice, its node and the table of nodes.
constexpr std::size_t kAllocations = 4;

TEST(ModuleLoadTest, MemoryThatIsMissingWhileTheModuleIsLoadedIsReportedToWhoeverAsksForAStrategy) {
  for (std::size_t number = 1; number <= kAllocations; ++number) {
    EXPECT_EXIT(LoadAndAsk(number), testing::ExitedWithCode(kNoMemory), "") << number;
  }
}

TEST(ModuleLoadTest, NothingButTheRegistryNeedsMemoryWhileTheModuleIsLoaded) {
  EXPECT_EXIT(LoadAndAsk(kAllocations + 1), testing::ExitedWithCode(kStrategy), "");
}

}  // namespace
