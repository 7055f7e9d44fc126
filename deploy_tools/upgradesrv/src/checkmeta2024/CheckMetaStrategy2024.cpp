#include "checkmeta2024/CheckMetaStrategy2024.h"

#include <algorithm>
#include <array>
#include <exception>
#include <list>

#include "checkmeta2024/CheckMeta2024Helper.h"
#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/CheckResultConverter.h"
#include "checkmeta2024/ErrorLog.h"
#include "checkmeta2024/StrategyRegistry.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "upgradecontext/UpgradeContext.h"

namespace {

// Fixed, so that whoever watches the log finds the line again.
constexpr int kUnknownKindLine = 59;

checkmeta::CStrategyRegistry& Registry() {
  static checkmeta::CStrategyRegistry registry;
  return registry;
}

/// Registers the strategy while the module is loaded, when nobody can catch an exception: it is kept for whoever then
/// asks for a strategy.
const struct SRegistrar {
  SRegistrar() noexcept {
    try {
      Registry().Register("CCheckMetaStrategy2024", [] { return new CCheckMetaStrategy2024; });
    } catch (...) {
      failure = std::current_exception();
    }
  }

  std::exception_ptr failure;
} kRegistrar;

}  // namespace

CUpgradeStrategy* CreateReflectionClassObject(const std::string& className) {
  if (kRegistrar.failure != nullptr) {
    std::rethrow_exception(kRegistrar.failure);
  }
  return Registry().Create(className);
}

CCheckMetaStrategy2024::CCheckMetaStrategy2024() = default;

CCheckMetaStrategy2024::CCheckMetaStrategy2024(const CCheckMetaStrategy2024&) = default;

CCheckMetaStrategy2024& CCheckMetaStrategy2024::operator=(const CCheckMetaStrategy2024&) = default;

CCheckMetaStrategy2024::~CCheckMetaStrategy2024() = default;

void CCheckMetaStrategy2024::Invoke(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext) {
  using Check = bool (CCheckMeta2024Helper::*)(std::shared_ptr<CJsonObject>&);
  struct SKind {
    const char* name;
    Check check;
  };
  static constexpr std::array<SKind, 3> kKinds = {{
      {checkmeta::kClass, &CCheckMeta2024Helper::CheckMetaClasses},
      {checkmeta::kLink, &CCheckMeta2024Helper::CheckMetaLinks},
      {checkmeta::kBehavior, &CCheckMeta2024Helper::CheckMetaBehaviors},
  }};

  const std::list<std::string> elements = GetParameter()->GetStringArrayValue(checkmeta::kExecuteElements);
  auto checkResult = std::make_shared<CJsonObject>();
  CCheckMeta2024Helper helper(handlerContext, upgradeContext);
  bool allPassed = true;
  for (const std::string& element : elements) {
    const auto* const kind = std::find_if(kKinds.begin(), kKinds.end(), [&element](const SKind& known) {
      return CStringHelper::StringCompare(known.name, element, false) == 0;
    });
    if (kind == kKinds.end()) {
      checkmeta::LogError({__FILE__, kUnknownKindLine, "CCheckMetaStrategy2024::Invoke"},
                          "meta element check type error.type:" + element, checkmeta::kUnknownKindError);
    } else if (!(helper.*kind->check)(checkResult)) {
      allPassed = false;
    }
  }
  checkResult->SaveToFile(upgradeContext.GetVersionUpgradeCfgPath() + "/checkMetaError.json");
  if (allPassed) {
    return;
  }
  CCheckResultConverter converter(handlerContext, upgradeContext);
  const std::string text = ConversionCheckResultToString(checkResult, converter);
  const auto result = std::make_shared<CJsonObject>();
  result->SetStringValue(checkmeta::kErrorInfo, text);
  SetResult(result);
}

std::string CCheckMetaStrategy2024::ConversionCheckResultToString(const std::shared_ptr<CJsonObject>& checkResult,
                                                                  CCheckResultConverter& converter) {
  struct SRow {
    const char* kind;
    const char* insertedKey;
    const char* deletedKey;
    const char* updatedKey;
  };
  static constexpr std::array<SRow, 3> kRows = {{
      {checkmeta::kBehavior, checkmeta::kInsertedBehaviors, checkmeta::kDeletedBehaviors, checkmeta::kUpdatedBehaviors},
      {checkmeta::kClass, checkmeta::kInsertedClasses, checkmeta::kDeletedClasses, checkmeta::kUpdatedClasses},
      {checkmeta::kLink, checkmeta::kInsertedLinks, checkmeta::kDeletedLinks, checkmeta::kUpdatedLinks},
  }};
  std::string text;
  for (const SRow& row : kRows) {
    if (const std::shared_ptr<CJsonObject> section = checkResult->GetPropertyObjectValue(row.kind);
        section != nullptr) {
      converter.ConversionMetaInfo(row.kind, row.insertedKey, row.deletedKey, row.updatedKey, section, text);
    }
  }
  return text;
}
