#include "upgradesrv/chain/RunInputs.h"

#include <memory>
#include <utility>

#include "kvxsptexception/KVXException.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/chain/UpgradeFiles.h"

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

std::vector<std::string> RunInputs(const CUpgradeContext& context, std::vector<std::string> modules) {
  std::vector<std::string> files = std::move(modules);
  for (const char* file : {kConfigurationFile, kDisplayTextsFile, kLogConfigurationFile}) {
    files.push_back(context.GetUpgradeCfgPath() + file);
  }
  for (const std::string& location : {context.GetOriginalMetaLocation(), context.GetClientMetaLocation()}) {
    const std::vector<std::string> found = MetamodelFiles(location);
    files.insert(files.end(), found.begin(), found.end());
  }
  return files;
}

}  // namespace upgradesrv
