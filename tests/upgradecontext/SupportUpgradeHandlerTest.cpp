#include "upgradecontext/SupportUpgradeHandler.h"

#include <gtest/gtest.h>

#include <memory>

#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/UpgradeContext.h"

namespace {

class CHandler : public CSupportUpgradeHandler {
 public:
  CHandler(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext, bool& destroyed)
      : CSupportUpgradeHandler(handlerContext, upgradeContext), destroyed_(destroyed) {}
  CHandler(const CHandler&) = default;
  ~CHandler() override { destroyed_ = true; }

  CUpgradeContext& Upgrade() const { return GetUpgradeContext(); }
  CHandlerContext& Handler() const { return GetHandlerContext(); }

 private:
  bool& destroyed_;
};

class SupportUpgradeHandlerTest : public testing::Test {
 protected:
  CHandlerContext handlerContext_{"Strategy"};
  CUpgradeContext upgradeContext_;
  bool destroyed_ = false;
};

TEST_F(SupportUpgradeHandlerTest, HandsOutTheContextsItWasMadeWith) {
  const CHandler handler(handlerContext_, upgradeContext_, destroyed_);
  EXPECT_EQ(&handler.Upgrade(), &upgradeContext_);
  EXPECT_EQ(&handler.Handler(), &handlerContext_);
}

TEST_F(SupportUpgradeHandlerTest, SeesLaterChangesOfTheContext) {
  const CHandler handler(handlerContext_, upgradeContext_, destroyed_);
  upgradeContext_.SetLang("de");
  EXPECT_EQ(handler.Upgrade().GetLang(), "de");
}

TEST_F(SupportUpgradeHandlerTest, CopySharesTheContexts) {
  const CHandler handler(handlerContext_, upgradeContext_, destroyed_);
  const CHandler copy(handler);
  EXPECT_EQ(&copy.Upgrade(), &upgradeContext_);
  EXPECT_EQ(&copy.Handler(), &handlerContext_);
}

TEST_F(SupportUpgradeHandlerTest, IsDestroyedThroughItsBase) {
  std::unique_ptr<CSupportUpgradeHandler> handler =
      std::make_unique<CHandler>(handlerContext_, upgradeContext_, destroyed_);
  EXPECT_FALSE(destroyed_);
  handler.reset();
  EXPECT_TRUE(destroyed_);
}

}  // namespace
