#include "upgradesrv/chain/RunNotes.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include "kvxsptexception/KVXException.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace upgradesrv {
namespace {

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return a == b || std::filesystem::equivalent(a, b, error);
}

}  // namespace

std::vector<std::string> RunNotes(const CUpgradeContext& context) {
  std::vector<std::string> notes;
  try {
    const std::string client = OpenMetaStorage(context.GetClientMetaLocation())->Describe();
    const std::string original = OpenMetaStorage(context.GetOriginalMetaLocation())->Describe();
    notes.push_back("client metamodel " + client + ", original metamodel " + original);
    if (IsSameFile(context.GetClientMetaLocation(), context.GetOriginalMetaLocation())) {
      notes.emplace_back("both metamodels are the same, so that no difference can be found");
    }
  } catch (const CKVXException&) {
    // Whoever reads the metamodels says what is wrong with their locations.
  }
  return notes;
}

}  // namespace upgradesrv
