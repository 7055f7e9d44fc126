#pragma once

#include <string>

#include "upgradecontext/upgradecontext_export.h"

/// What the host knows of the strategy for which handlers work. Opaque to modules: they only pass it on.
class UPGRADECONTEXT_EXPORT CHandlerContext {
 public:
  /// Of no strategy: the name is empty.
  CHandlerContext();
  /// `strategyName`: the class name under which the strategy was created.
  explicit CHandlerContext(std::string strategyName);
  ~CHandlerContext();
  CHandlerContext(const CHandlerContext&) = delete;
  CHandlerContext& operator=(const CHandlerContext&) = delete;

  const std::string& GetStrategyName() const noexcept;

 private:
  std::string strategyName_;
};
