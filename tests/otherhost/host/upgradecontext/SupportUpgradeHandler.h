#pragma once

class CHandlerContext;
class CUpgradeContext;

class CSupportUpgradeHandler {
 public:
  CSupportUpgradeHandler(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext);
  CSupportUpgradeHandler(const CSupportUpgradeHandler&);
  CSupportUpgradeHandler& operator=(const CSupportUpgradeHandler&) = delete;
  virtual ~CSupportUpgradeHandler();

 protected:
  CUpgradeContext& GetUpgradeContext() const;

 private:
  CUpgradeContext& upgradeContext_;
};
