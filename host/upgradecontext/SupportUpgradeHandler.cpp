#include "upgradecontext/SupportUpgradeHandler.h"

CSupportUpgradeHandler::CSupportUpgradeHandler(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext)
    : handlerContext_(handlerContext), upgradeContext_(upgradeContext) {}

CSupportUpgradeHandler::CSupportUpgradeHandler(const CSupportUpgradeHandler&) = default;

CSupportUpgradeHandler::~CSupportUpgradeHandler() = default;

CHandlerContext& CSupportUpgradeHandler::GetHandlerContext() const {
  return handlerContext_;
}

CUpgradeContext& CSupportUpgradeHandler::GetUpgradeContext() const {
  return upgradeContext_;
}
