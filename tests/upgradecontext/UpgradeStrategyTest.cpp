#include "upgradecontext/UpgradeStrategy.h"

#include <gtest/gtest.h>

#include <memory>

#include "kvxsptjson/JsonObject.h"
#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/UpgradeContext.h"

namespace {

/// Reports what it was given.
class CStrategy : public CUpgradeStrategy {
 public:
  explicit CStrategy(bool& destroyed) : destroyed_(&destroyed) {}
  CStrategy(const CStrategy&) = default;
  CStrategy& operator=(const CStrategy&) = default;
  ~CStrategy() override { *destroyed_ = true; }

  void Invoke(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext) override {
    auto result = std::make_shared<CJsonObject>();
    result->SetStringValue("error_info", handlerContext.GetStrategyName() + " " + upgradeContext.GetLang() + " " +
                                             GetParameter()->GetStringValue("name"));
    SetResult(result);
  }

 private:
  bool* destroyed_;
};

class UpgradeStrategyTest : public testing::Test {
 protected:
  bool destroyed_ = false;
};

TEST_F(UpgradeStrategyTest, HasAnEmptyParameterAndNoResultUntilSet) {
  const CStrategy strategy(destroyed_);
  ASSERT_NE(strategy.GetParameter(), nullptr);
  EXPECT_EQ(strategy.GetParameter()->ToText(), "{}");
  EXPECT_EQ(strategy.GetResult(), nullptr);
}

TEST_F(UpgradeStrategyTest, HandsOutTheVeryObjectsThatWereSet) {
  CStrategy strategy(destroyed_);
  const auto parameter = std::make_shared<CJsonObject>();
  const auto result = std::make_shared<CJsonObject>();
  strategy.SetParameter(parameter);
  strategy.SetResult(result);
  EXPECT_EQ(strategy.GetParameter(), parameter);
  EXPECT_EQ(strategy.GetResult(), result);

  strategy.SetParameter(nullptr);
  strategy.SetResult(nullptr);
  ASSERT_NE(strategy.GetParameter(), nullptr);
  EXPECT_EQ(strategy.GetParameter()->ToText(), "{}");
  EXPECT_EQ(strategy.GetResult(), nullptr);
}

TEST_F(UpgradeStrategyTest, CopiesShareParameterAndResult) {
  CStrategy strategy(destroyed_);
  strategy.SetParameter(std::make_shared<CJsonObject>());
  strategy.SetResult(std::make_shared<CJsonObject>());
  const CStrategy copy(strategy);
  CStrategy assigned(destroyed_);
  assigned = strategy;
  EXPECT_EQ(copy.GetParameter(), strategy.GetParameter());
  EXPECT_EQ(copy.GetResult(), strategy.GetResult());
  EXPECT_EQ(assigned.GetParameter(), strategy.GetParameter());
  EXPECT_EQ(assigned.GetResult(), strategy.GetResult());
}

TEST_F(UpgradeStrategyTest, InvokeThroughTheBaseReachesTheStrategy) {
  CHandlerContext handlerContext("CStrategy");
  CUpgradeContext upgradeContext;
  upgradeContext.SetLang("en");
  const auto parameter = std::make_shared<CJsonObject>();
  parameter->SetStringValue("name", "value");

  const std::unique_ptr<CUpgradeStrategy> strategy = std::make_unique<CStrategy>(destroyed_);
  strategy->SetParameter(parameter);
  strategy->Invoke(handlerContext, upgradeContext);
  EXPECT_EQ(strategy->GetResult()->GetStringValue("error_info"), "CStrategy en value");
}

TEST_F(UpgradeStrategyTest, IsDestroyedThroughTheReflectionBase) {
  std::unique_ptr<CEnableReflection> object = std::make_unique<CStrategy>(destroyed_);
  EXPECT_FALSE(destroyed_);
  object.reset();
  EXPECT_TRUE(destroyed_);
}

}  // namespace
