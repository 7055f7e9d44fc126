#pragma once

#include <upgradecontext/UpgradeStrategy.h>

/// Reports properties of type "string" that are longer than the parameter's "max_length", and saves them as
/// longTexts.json in the directory of the version.
class CLongTextStrategy : public CUpgradeStrategy {
 public:
  void Invoke(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext) override;
};
