#include "upgradesrv/RunInputs.h"

#include <memory>

#include "kvxsptexception/KVXException.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/StrategyModule.h"
#include "upgradesrv/UpgradeFiles.h"

namespace upgradesrv {
namespace {

std::vector<std::string> MetamodelFiles(const std::string& location) {
  try {
    return OpenMetaStorage(location)->GetFiles();
  } catch (const CKVXException&) {
    // Whoever reads the metamodel says what is wrong with its location.
    return {};
  }
}

}  // namespace

std::vector<std::string> RunInputs(const CUpgradeConfiguration& configuration, const std::string& moduleDirectory) {
  std::vector<std::string> files;
  for (const char* file : {kConfigurationFile, kDisplayTextsFile, kLogConfigurationFile}) {
    files.push_back(configuration.GetDirectory() + file);
  }
  CUpgradeContext context;
  configuration.FillContext(context);
  for (const std::string& location : {context.GetOriginalMetaLocation(), context.GetClientMetaLocation()}) {
    const std::vector<std::string> found = MetamodelFiles(location);
    files.insert(files.end(), found.begin(), found.end());
  }
  for (const SStrategyConfiguration& strategy : configuration.GetStrategies()) {
    files.push_back(ModulePath(moduleDirectory, strategy.module));
  }
  return files;
}

}  // namespace upgradesrv
