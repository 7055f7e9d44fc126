#pragma once

#include <memory>

#include "upgradecontext/EnableReflection.h"
#include "upgradecontext/upgradecontext_export.h"

class CHandlerContext;
class CJsonObject;
class CUpgradeContext;

/// One step of an upgrade, supplied by a module.
///
/// A module is a shared library that exports, without name decoration,
///
///     extern "C" CUpgradeStrategy* CreateReflectionClassObject(const std::string& className);
///
/// which returns a new strategy, or null for a class name that it does not know. The host sets the parameter, calls
/// Invoke once, reads the result and deletes the strategy through its destructor before it unloads the module.
/// Everything runs on one thread. Whatever Invoke throws ends the chain of strategies; a CKVXException's message is
/// shown.
class UPGRADECONTEXT_EXPORT CUpgradeStrategy : public CEnableReflection {
 public:
  CUpgradeStrategy();
  CUpgradeStrategy(const CUpgradeStrategy&);
  CUpgradeStrategy& operator=(const CUpgradeStrategy&);
  ~CUpgradeStrategy() override;

  virtual void Invoke(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext) = 0;

  /// The object that the host set before Invoke; an empty one when it set none. Never null. Copies of a strategy share
  /// it, and the result.
  std::shared_ptr<CJsonObject> GetParameter() const;
  void SetParameter(const std::shared_ptr<CJsonObject>& parameter);

  /// The object that Invoke hands back; null when there is nothing to report. Key: "error_info", a string, the text for
  /// the user.
  std::shared_ptr<CJsonObject> GetResult() const;
  void SetResult(const std::shared_ptr<CJsonObject>& result);

 private:
  std::shared_ptr<CJsonObject> parameter_;
  std::shared_ptr<CJsonObject> result_;
};
