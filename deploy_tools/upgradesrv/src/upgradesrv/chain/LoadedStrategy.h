#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "upgradesrv/chain/StrategyModule.h"

class CUpgradeContext;
class CUpgradeStrategy;

namespace upgradesrv {

struct SStrategyConfiguration;

/// One strategy of the chain, made and ready to run. Its module is loaded as long as this exists.
class CLoadedStrategy {
 public:
  /// `configuration` outlives this. Throws CTrouble that names the place in upgrade.json, or the strategy when its
  /// module has failed to make it.
  CLoadedStrategy(const SStrategyConfiguration& configuration, const std::vector<std::string>& moduleDirectories);
  ~CLoadedStrategy();
  CLoadedStrategy(const CLoadedStrategy&) = delete;
  CLoadedStrategy& operator=(const CLoadedStrategy&) = delete;

  const SStrategyConfiguration& GetConfiguration() const { return configuration_; }
  const std::string& GetModulePath() const { return module_->GetPath(); }

  /// The text that it hands back; none when it reports nothing. Whatever it throws becomes CTrouble that names it.
  std::optional<std::string> Run(CUpgradeContext& context);

 private:
  template <typename Action>
  auto Guarded(const CUpgradeContext* context, const Action& action);

  const SStrategyConfiguration& configuration_;
  std::string name_;
  std::optional<CStrategyModule> module_;
  std::unique_ptr<CUpgradeStrategy> strategy_;
};

}  // namespace upgradesrv
