#include "PrefixRuleStrategy.h"

#include <kvxsptjson/JsonObject.h>
#include <upgradecontext/UpgradeContext.h>
#include <upgrademeta2024/MetaDictionary2024.h>
#include <upgrademeta2024/MetaMgr2024.h>

#include <memory>
#include <string>

void CPrefixRuleStrategy::Invoke(CHandlerContext& /*handlerContext*/, CUpgradeContext& upgradeContext) {
  const std::string prefix = GetParameter()->GetStringValue("prefix");
  const auto metamodel = CMetaMgr2024::Instance().LoadClientMeta(upgradeContext);
  int count = 0;
  for (const auto& element : metamodel->GetClasses()) {
    count += element->GetInternalName().rfind(prefix, 0) == 0 ? 1 : 0;
  }
  if (count > 0) {
    const auto result = std::make_shared<CJsonObject>();
    result->SetStringValue("error_info", std::to_string(count) + " classes begin with " + prefix + "\n");
    SetResult(result);
  }
}
