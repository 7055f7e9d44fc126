#include "upgradecontext/HandlerContext.h"

#include <utility>

CHandlerContext::CHandlerContext() = default;

CHandlerContext::CHandlerContext(std::string strategyName) : strategyName_(std::move(strategyName)) {}

CHandlerContext::~CHandlerContext() = default;

const std::string& CHandlerContext::GetStrategyName() const noexcept {
  return strategyName_;
}
