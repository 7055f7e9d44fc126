#pragma once

#include "upgradecontext/upgradecontext_export.h"

class CHandlerContext;
class CUpgradeContext;

/// Base of a module's classes that work within one run. Both contexts belong to the caller and must outlive the handler
/// and its copies.
class UPGRADECONTEXT_EXPORT CSupportUpgradeHandler {
 public:
  CSupportUpgradeHandler(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext);
  CSupportUpgradeHandler(const CSupportUpgradeHandler&);
  CSupportUpgradeHandler& operator=(const CSupportUpgradeHandler&) = delete;
  virtual ~CSupportUpgradeHandler();

 protected:
  CHandlerContext& GetHandlerContext() const;
  CUpgradeContext& GetUpgradeContext() const;

 private:
  CHandlerContext& handlerContext_;
  CUpgradeContext& upgradeContext_;
};
