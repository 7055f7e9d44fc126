#include "upgradesrv/chain/LoadedStrategy.h"

#include <algorithm>
#include <array>
#include <exception>
#include <new>
#include <string_view>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptjson/JsonObject.h"
#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradecontext/UpgradeStrategy.h"
#include "upgrademeta2024/MetaMgr2024.h"
#include "upgrademeta2024/MetaReadAhead.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/CheckStrategy.h"
#include "upgradesrv/chain/RunningStrategy.h"
#include "upgradesrv/chain/UpgradeConfiguration.h"

namespace upgradesrv {
namespace {

constexpr const char* kResultText = "error_info";
constexpr std::string_view kJsonMember = "json member [";

/// Whether a code says no more than the message that comes with it.
bool IsTold(const CKVXException& failure) {
  constexpr std::array<std::uint32_t, 4> kTold = {kvx::kFileError, kvx::kMalformedDocument, kvx::kMetamodelError,
                                                  kvx::kMetamodelExists};
  return !failure.HasMessage() || std::find(kTold.begin(), kTold.end(), failure.GetCode()) != kTold.end();
}

/// Whether a failure names a member of some JSON document, as the host's do, and not the document.
bool IsWithoutDocument(const CKVXException& failure) {
  const bool isAboutMember = failure.GetCode() == kvx::kJsonMemberMissing || failure.GetCode() == kvx::kJsonWrongType;
  return isAboutMember && std::string_view(failure.what()).substr(0, kJsonMember.size()) == kJsonMember;
}

/// Where to look after such a failure; empty for any other.
std::string PlacesToLookAt(const CKVXException& failure, const SStrategyConfiguration& strategy,
                           const CUpgradeContext* context) {
  if (context == nullptr || !IsWithoutDocument(failure)) {
    return "";
  }
  const std::string place = IsCheck(strategy) ? PlaceOfDisplayText(failure, *context) : "";
  return "; look at " + (place.empty()
                             ? strategy.place + "/parameter and at the documents that the strategy reads in " +
                                   context->GetUpgradeCfgPath()
                             : place);
}

}  // namespace

/// Every failure becomes CTrouble while the module, whose code an exception may need, is still loaded.
template <typename Action>
auto CLoadedStrategy::Guarded(const CUpgradeContext* context, const Action& action) {
  std::string problem;
  try {
    return action();
  } catch (const CKVXException& failure) {
    problem = failure.what() + (IsTold(failure) ? "" : ", code " + failure.GetCodeText()) +
              PlacesToLookAt(failure, configuration_, context);
  } catch (const std::bad_alloc&) {
    problem = "out of memory";
  } catch (const std::exception& failure) {
    problem = failure.what();
  } catch (...) {
    problem = "it threw something that is not an exception of the standard library";
  }
  throw CTrouble(problem + " (" + name_ + ")");
}

CLoadedStrategy::CLoadedStrategy(const SStrategyConfiguration& configuration,
                                 const std::vector<std::string>& moduleDirectories)
    : configuration_(configuration),
      name_("strategy " + configuration.className + " of module " + configuration.module + ", " +
            configuration.pointer) {
  const CRunningStrategy running(name_);
  try {
    module_.emplace(moduleDirectories, configuration.module);
  } catch (const CTrouble& trouble) {
    throw CTrouble(configuration.place + "/module: " + trouble.what());
  }
  strategy_ = Guarded(nullptr, [this] { return module_->CreateStrategy(configuration_.className); });
  if (strategy_ == nullptr) {
    throw CTrouble(configuration.place + "/class: " + module_->GetPath() + " has no strategy class \"" +
                   configuration.className + "\"");
  }
  strategy_->SetParameter(configuration.parameter);
}

CLoadedStrategy::~CLoadedStrategy() {
  const CRunningStrategy running(name_);
  strategy_.reset();
  module_.reset();
}

std::optional<std::string> CLoadedStrategy::Run(CUpgradeContext& context) {
  const CRunningStrategy running(name_);
  const auto readAhead = std::make_shared<CMetaReadAhead>();
  CMetaMgr2024::Instance().SetReadAhead(readAhead);
  return Guarded(&context, [&]() -> std::optional<std::string> {
    CHandlerContext handlerContext(configuration_.className);
    strategy_->Invoke(handlerContext, context);
    const std::shared_ptr<CJsonObject> result = strategy_->GetResult();
    if (result == nullptr) {
      return std::nullopt;
    }
    if (!result->IsString(kResultText)) {
      throw CTrouble(std::string("its result has no string \"") + kResultText + "\"");
    }
    return result->GetStringValue(kResultText);
  });
}

}  // namespace upgradesrv
