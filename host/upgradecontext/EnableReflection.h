#pragma once

#include "upgradecontext/upgradecontext_export.h"

/// Base of everything that a module's factory creates by class name (see UpgradeStrategy.h).
class UPGRADECONTEXT_EXPORT CEnableReflection {
 public:
  CEnableReflection();
  CEnableReflection(const CEnableReflection&);
  CEnableReflection& operator=(const CEnableReflection&);
  virtual ~CEnableReflection();
};
