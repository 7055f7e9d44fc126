#include "upgradecontext/UpgradeStrategy.h"

#include "kvxsptjson/JsonObject.h"

CUpgradeStrategy::CUpgradeStrategy() : parameter_(std::make_shared<CJsonObject>()) {}

CUpgradeStrategy::CUpgradeStrategy(const CUpgradeStrategy&) = default;

CUpgradeStrategy& CUpgradeStrategy::operator=(const CUpgradeStrategy&) = default;

CUpgradeStrategy::~CUpgradeStrategy() = default;

std::shared_ptr<CJsonObject> CUpgradeStrategy::GetParameter() const {
  return parameter_;
}

void CUpgradeStrategy::SetParameter(const std::shared_ptr<CJsonObject>& parameter) {
  parameter_ = parameter != nullptr ? parameter : std::make_shared<CJsonObject>();
}

std::shared_ptr<CJsonObject> CUpgradeStrategy::GetResult() const {
  return result_;
}

void CUpgradeStrategy::SetResult(const std::shared_ptr<CJsonObject>& result) {
  result_ = result;
}
