#pragma once

#include <memory>
#include <string>

#include "checkmeta2024/CheckMeta2024Helper.h"
#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/UpgradeContext.h"

class CJsonObject;
class CMetaDictionary2024;

namespace bench {

/// The steps of a check, one by one, on an upgrade configuration directory as the generator writes it.
class CUpgradeRun {
 public:
  explicit CUpgradeRun(const std::string& directory);

  struct SMetamodels {
    std::shared_ptr<CMetaDictionary2024> client;
    std::shared_ptr<CMetaDictionary2024> original;
  };
  SMetamodels Load();

  /// Loads what Compare compares.
  void Prepare();
  std::shared_ptr<CJsonObject> Compare();

  void Save(const CJsonObject& checkResult);
  std::string ToText(const std::shared_ptr<CJsonObject>& checkResult);

 private:
  CHandlerContext handlerContext_;
  CUpgradeContext context_;
  CCheckMeta2024Helper helper_;
};

std::size_t CountProperties(const CMetaDictionary2024& dictionary);

}  // namespace bench
