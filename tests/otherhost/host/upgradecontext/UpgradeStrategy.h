#pragma once

#include <memory>

class CHandlerContext;
class CJsonObject;
class CUpgradeContext;

class CEnableReflection {};

class CUpgradeStrategy : public CEnableReflection {
 public:
  CUpgradeStrategy();
  CUpgradeStrategy(const CUpgradeStrategy&);
  CUpgradeStrategy& operator=(const CUpgradeStrategy&);
  virtual ~CUpgradeStrategy();
  virtual void Invoke(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext) = 0;

  std::shared_ptr<CJsonObject> GetParameter();
  void SetResult(const std::shared_ptr<CJsonObject>& result);
};
