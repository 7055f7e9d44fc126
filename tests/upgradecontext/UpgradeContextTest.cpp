#include "upgradecontext/UpgradeContext.h"

#include <gtest/gtest.h>

namespace {

CUpgradeContext FilledContext() {
  CUpgradeContext context;
  context.SetUpgradeCfgPath("/cfg");
  context.SetVersionUpgradeCfgPath("/cfg/2024");
  context.SetLang("zh");
  context.SetOriginalMetaLocation("/cfg/2024/metamodel.json");
  context.SetClientMetaLocation("/cfg/installation.json");
  return context;
}

void ExpectFilled(const CUpgradeContext& context) {
  EXPECT_EQ(context.GetUpgradeCfgPath(), "/cfg");
  EXPECT_EQ(context.GetVersionUpgradeCfgPath(), "/cfg/2024");
  EXPECT_EQ(context.GetLang(), "zh");
  EXPECT_EQ(context.GetOriginalMetaLocation(), "/cfg/2024/metamodel.json");
  EXPECT_EQ(context.GetClientMetaLocation(), "/cfg/installation.json");
}

TEST(UpgradeContextTest, EverythingIsEmptyUntilSet) {
  const CUpgradeContext context;
  EXPECT_EQ(context.GetUpgradeCfgPath(), "");
  EXPECT_EQ(context.GetVersionUpgradeCfgPath(), "");
  EXPECT_EQ(context.GetLang(), "");
  EXPECT_EQ(context.GetOriginalMetaLocation(), "");
  EXPECT_EQ(context.GetClientMetaLocation(), "");
}

TEST(UpgradeContextTest, EachValueIsKeptForItself) {
  ExpectFilled(FilledContext());
}

TEST(UpgradeContextTest, ValuesAreKeptAsGiven) {
  CUpgradeContext context;
  context.SetUpgradeCfgPath("dir/../\u96F6/");
  EXPECT_EQ(context.GetUpgradeCfgPath(), "dir/../\u96F6/");
}

TEST(UpgradeContextTest, CopiesAreIndependent) {
  CUpgradeContext context = FilledContext();
  const CUpgradeContext copy(context);
  CUpgradeContext assigned;
  assigned = context;
  context.SetLang("en");
  ExpectFilled(copy);
  ExpectFilled(assigned);
}

}  // namespace
