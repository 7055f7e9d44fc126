#include "checkmeta2024/StrategyRegistry.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using checkmeta::CStrategyRegistry;

template <int Number>
class CNumbered : public CUpgradeStrategy {
 public:
  void Invoke(CHandlerContext& /*handlerContext*/, CUpgradeContext& /*upgradeContext*/) override {}
};

template <int Number>
CUpgradeStrategy* Make() {
  return new CNumbered<Number>;
}

template <int Number>
bool Creates(const CStrategyRegistry& registry, const std::string& name) {
  const std::unique_ptr<CUpgradeStrategy> strategy(registry.Create(name));
  return dynamic_cast<CNumbered<Number>*>(strategy.get()) != nullptr;
}

TEST(StrategyRegistryTest, CreatesTheStrategyOfTheName) {
  CStrategyRegistry registry;
  registry.Register("CFirst", &Make<1>);
  registry.Register("CSecond", &Make<2>);
  EXPECT_TRUE(Creates<1>(registry, "CFirst"));
  EXPECT_TRUE(Creates<2>(registry, "CSecond"));
}

TEST(StrategyRegistryTest, NamesMatchWithoutRegardToLetterCase) {
  CStrategyRegistry registry;
  registry.Register("CFirst", &Make<1>);
  EXPECT_TRUE(Creates<1>(registry, "cfirst"));
  EXPECT_TRUE(Creates<1>(registry, "CFIRST"));
  EXPECT_TRUE(Creates<1>(registry, "cfIRst"));
}

TEST(StrategyRegistryTest, AnUnknownNameGivesNull) {
  CStrategyRegistry registry;
  EXPECT_EQ(registry.Create("CFirst"), nullptr);
  registry.Register("CFirst", &Make<1>);
  for (const char* name : {"", "C", "CFirs", "CFirst2", " CFirst", "First"}) {
    EXPECT_EQ(registry.Create(name), nullptr) << name;
  }
}

TEST(StrategyRegistryTest, TheFirstFactoryOfANameStays) {
  CStrategyRegistry registry;
  registry.Register("CFirst", &Make<1>);
  registry.Register("cFIRST", &Make<2>);
  EXPECT_TRUE(Creates<1>(registry, "CFirst"));
}

TEST(StrategyRegistryTest, AnEmptyFactoryThrowsBadFunctionCallWhenItIsNeeded) {
  CStrategyRegistry registry;
  registry.Register("CFirst", CStrategyRegistry::Factory());
  EXPECT_THROW(registry.Create("CFirst"), std::bad_function_call);
  EXPECT_EQ(registry.Create("CSecond"), nullptr);
}

}  // namespace
