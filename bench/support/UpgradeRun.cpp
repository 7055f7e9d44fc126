#include "support/UpgradeRun.h"

#include <array>

#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/CheckResultConverter.h"
#include "kvxsptjson/JsonObject.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/MetaMgr2024.h"

namespace bench {
namespace {

CUpgradeContext MakeContext(const std::string& directory) {
  CUpgradeContext context;
  context.SetUpgradeCfgPath(directory);
  context.SetVersionUpgradeCfgPath(directory + "/2024");
  context.SetLang("en");
  context.SetOriginalMetaLocation(directory + "/2024/metamodel.json");
  context.SetClientMetaLocation(directory + "/installation.json");
  return context;
}

}  // namespace

CUpgradeRun::CUpgradeRun(const std::string& directory)
    : handlerContext_("CCheckMetaStrategy2024"), context_(MakeContext(directory)), helper_(handlerContext_, context_) {}

CUpgradeRun::SMetamodels CUpgradeRun::Load() {
  SMetamodels metamodels;
  metamodels.client = CMetaMgr2024::Instance().LoadClientMeta(context_);
  metamodels.original = CMetaMgr2024::Instance().LoadOriginalMeta(context_);
  return metamodels;
}

void CUpgradeRun::Prepare() {
  // A check is what makes the helper load; that of the behaviors is the shortest.
  auto unused = std::make_shared<CJsonObject>();
  helper_.CheckMetaBehaviors(unused);
}

std::shared_ptr<CJsonObject> CUpgradeRun::Compare() {
  auto checkResult = std::make_shared<CJsonObject>();
  helper_.CheckMetaClasses(checkResult);
  helper_.CheckMetaLinks(checkResult);
  helper_.CheckMetaBehaviors(checkResult);
  return checkResult;
}

void CUpgradeRun::Save(const CJsonObject& checkResult) {
  checkResult.SaveToFile(context_.GetVersionUpgradeCfgPath() + "/checkMetaError.json");
}

std::string CUpgradeRun::ToText(const std::shared_ptr<CJsonObject>& checkResult) {
  using namespace checkmeta;
  const std::array<std::array<const char*, 4>, 3> kinds = {{
      {kBehavior, kInsertedBehaviors, kDeletedBehaviors, kUpdatedBehaviors},
      {kClass, kInsertedClasses, kDeletedClasses, kUpdatedClasses},
      {kLink, kInsertedLinks, kDeletedLinks, kUpdatedLinks},
  }};
  CCheckResultConverter converter(handlerContext_, context_);
  std::string text;
  for (const auto& [kind, inserted, deleted, updated] : kinds) {
    if (const auto section = checkResult->GetPropertyObjectValue(kind); section != nullptr) {
      converter.ConversionMetaInfo(kind, inserted, deleted, updated, section, text);
    }
  }
  return text;
}

std::size_t CountProperties(const CMetaDictionary2024& dictionary) {
  std::size_t count = 0;
  const auto add = [&count](const auto& elements) {
    for (const auto& element : elements) {
      count += element->GetValues().properties.GetSize();
    }
  };
  add(dictionary.GetClasses());
  add(dictionary.GetLinks());
  add(dictionary.GetBehaviors());
  return count;
}

}  // namespace bench
