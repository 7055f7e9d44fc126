#include "upgradecontext/HandlerContext.h"

#include <gtest/gtest.h>

namespace {

TEST(HandlerContextTest, KnowsTheStrategyName) {
  EXPECT_EQ(CHandlerContext("CCheckMetaStrategy2024").GetStrategyName(), "CCheckMetaStrategy2024");
}

TEST(HandlerContextTest, MadeWithoutArgumentsItKnowsNoName) {
  EXPECT_EQ(CHandlerContext().GetStrategyName(), "");
}

}  // namespace
