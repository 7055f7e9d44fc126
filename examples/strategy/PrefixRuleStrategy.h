#pragma once

#include <upgradecontext/UpgradeStrategy.h>

/// Reports how many classes of the installation have names that begin with the parameter's "prefix".
class CPrefixRuleStrategy : public CUpgradeStrategy {
 public:
  void Invoke(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext) override;
};
