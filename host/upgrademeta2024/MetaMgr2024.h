#pragma once

#include <map>
#include <memory>
#include <string>

#include "upgrademeta2024/upgrademeta2024_export.h"

class CMetaDictionary2024;
class CMetaReadAhead;
class CUpgradeContext;

/// Metamodels that were loaded, by location.
using LoadedMetamodels2024 = std::map<std::string, std::shared_ptr<CMetaDictionary2024>>;

/// Loads the two metamodels of an upgrade from the locations that its context names (see storage/MetaStorage.h).
/// Never answers with an empty pointer: a metamodel that cannot be loaded throws CKVXException with the code and
/// message of the storage, the message preceded by "original metamodel: " or "client metamodel: ". To be used by one
/// thread at a time.
class UPGRADEMETA2024_EXPORT CMetaMgr2024 {
 public:
  /// The one manager of the process. It keeps no metamodel: each call of a Load operation reads anew, but for
  /// what a CMetaReadAhead has read.
  static CMetaMgr2024& Instance();

  CMetaMgr2024(const CMetaMgr2024&) = delete;
  CMetaMgr2024& operator=(const CMetaMgr2024&) = delete;

  /// From now on LoadClientMeta also begins to read the original metamodel, as long as `readAhead` is somebody's. Null
  /// ends that.
  void SetReadAhead(const std::shared_ptr<CMetaReadAhead>& readAhead) { readAhead_ = readAhead; }

  /// From now on what is loaded is also kept in `kept`, the last one of each location, as long as that is somebody's.
  /// Null ends that.
  void SetKept(const std::shared_ptr<LoadedMetamodels2024>& kept) { kept_ = kept; }

  /// The metamodel as the platform ships it for this upgrade.
  std::shared_ptr<CMetaDictionary2024> LoadOriginalMeta(CUpgradeContext& upgradeContext);
  /// The metamodel as the installation holds it.
  std::shared_ptr<CMetaDictionary2024> LoadClientMeta(CUpgradeContext& upgradeContext);

 private:
  CMetaMgr2024() = default;
  ~CMetaMgr2024() = default;

  std::shared_ptr<CMetaDictionary2024> Keep(const std::string& location,
                                            std::shared_ptr<CMetaDictionary2024> metamodel) const;

  std::weak_ptr<CMetaReadAhead> readAhead_;
  std::weak_ptr<LoadedMetamodels2024> kept_;
};
