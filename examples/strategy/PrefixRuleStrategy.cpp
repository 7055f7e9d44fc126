#include <kvxsptjson/JsonObject.h>
#include <upgradecontext/UpgradeContext.h>
#include <upgradecontext/UpgradeStrategy.h>
#include <upgrademeta2024/MetaDictionary2024.h>
#include <upgrademeta2024/MetaMgr2024.h>

#include <memory>
#include <string>

namespace {

/// Reports how many classes of the installation carry a customer's prefix.
class CPrefixRuleStrategy : public CUpgradeStrategy {
 public:
  void Invoke(CHandlerContext& /*handlerContext*/, CUpgradeContext& upgradeContext) override {
    const std::string prefix = GetParameter()->GetStringValue("prefix");
    int count = 0;
    for (const auto& element : CMetaMgr2024::Instance().LoadClientMeta(upgradeContext)->GetClasses()) {
      count += element->GetInternalName().rfind(prefix, 0) == 0 ? 1 : 0;
    }
    if (count > 0) {
      const auto result = std::make_shared<CJsonObject>();
      result->SetStringValue("error_info", std::to_string(count) + " classes begin with " + prefix + "\n");
      SetResult(result);
    }
  }
};

}  // namespace

extern "C" CUpgradeStrategy* CreateReflectionClassObject(const std::string& className) {
  return className == "CPrefixRuleStrategy" ? std::make_unique<CPrefixRuleStrategy>().release() : nullptr;
}
