#pragma once

#include <future>
#include <memory>
#include <string>

#include "upgrademeta2024/upgrademeta2024_export.h"

class CMetaDictionary2024;
class CUpgradeContext;

/// Loads the two metamodels of an upgrade from the locations that its context names (see storage/MetaStorage2024.h).
/// Never answers with an empty pointer: a metamodel that cannot be loaded throws CKVXException with the code and
/// message of the storage, the message preceded by "original metamodel: " or "client metamodel: ". To be used by one
/// thread at a time.
class UPGRADEMETA2024_EXPORT CMetaMgr2024 {
 public:
  /// The one manager of the process. It keeps no metamodel that it has handed out: each call of a Load operation reads
  /// anew.
  static CMetaMgr2024& Instance();

  CMetaMgr2024(const CMetaMgr2024&) = delete;
  CMetaMgr2024& operator=(const CMetaMgr2024&) = delete;

  /// The metamodel as the platform ships it for this upgrade. When LoadClientMeta was called before, with the same
  /// location of the original in its context, this is the metamodel as it was read during that call, which is handed
  /// out once; a failure of that reading shows here.
  std::shared_ptr<CMetaDictionary2024> LoadOriginalMeta(CUpgradeContext& upgradeContext);
  /// The metamodel as the installation holds it. The original metamodel is read meanwhile, on a thread of its own, when
  /// it lies in a file and the machine has more than one processor.
  std::shared_ptr<CMetaDictionary2024> LoadClientMeta(CUpgradeContext& upgradeContext);

 private:
  CMetaMgr2024();
  ~CMetaMgr2024();

  /// Ends what an earlier LoadClientMeta began and nobody asked for.
  void DropOriginal();

  std::string originalLocation_;
  std::future<std::shared_ptr<CMetaDictionary2024>> original_;
};
