#pragma once

#include <memory>
#include <string>

#include "checkmeta2024/checkmeta2024_export.h"
#include "upgradecontext/UpgradeStrategy.h"

class CCheckResultConverter;

/// The metamodel check of generation 2024. Parameter: "execute_elements", an array of strings, the kinds to check in
/// this order; "class", "link" and "behavior" are known, others are logged (code 0xA4520008) and skipped.
///
/// Invoke saves the check result document (see CCheckMeta2024Helper) as checkMetaError.json in the version upgrade
/// configuration directory, also when it is empty. When an element was changed or deleted it sets the result, an object
/// with the one member "error_info", the document as text (see CCheckResultConverter): behaviors, then classes, then
/// links. Otherwise it sets no result. It catches nothing: whatever the host or a check throws leaves Invoke; then no
/// result is set, and the document is saved only when the checks themselves had ended.
class CHECKMETA2024_EXPORT CCheckMetaStrategy2024 : public CUpgradeStrategy {
 public:
  CCheckMetaStrategy2024();
  CCheckMetaStrategy2024(const CCheckMetaStrategy2024&);
  CCheckMetaStrategy2024& operator=(const CCheckMetaStrategy2024&);
  ~CCheckMetaStrategy2024() override;

  void Invoke(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext) override;

 private:
  std::string ConversionCheckResultToString(const std::shared_ptr<CJsonObject>& checkResult,
                                            CCheckResultConverter& converter);
};

/// Creates a strategy of this module by class name, letter case ignored. The caller owns it. Null for an unknown name.
/// Throws std::bad_alloc when there is no memory for it, or was none while the module was loaded.
extern "C" CHECKMETA2024_EXPORT CUpgradeStrategy* CreateReflectionClassObject(const std::string& className);
