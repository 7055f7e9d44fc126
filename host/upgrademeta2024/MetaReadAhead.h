#pragma once

#include <functional>
#include <future>
#include <memory>
#include <string>

#include "upgrademeta2024/upgrademeta2024_export.h"

class CMetaDictionary2024;

/// While it exists, CMetaMgr2024::LoadClientMeta also reads the original metamodel, on a second thread, and the next
/// LoadOriginalMeta with the same location hands that out. Only files are read so, and only where the machine has more
/// than one processor. The end waits for the thread and drops what nobody has asked for. One at a time, on the thread
/// that uses the manager.
class UPGRADEMETA2024_EXPORT CMetaReadAhead {
 public:
  CMetaReadAhead();
  ~CMetaReadAhead();
  CMetaReadAhead(const CMetaReadAhead&) = delete;
  CMetaReadAhead& operator=(const CMetaReadAhead&) = delete;

 private:
  friend class CMetaMgr2024;
  using Metamodel = std::shared_ptr<CMetaDictionary2024>;

  /// Drops what was begun before. `load` is called on the second thread, or not at all.
  void Begin(const std::string& location, std::function<Metamodel()> load);
  bool Has(const std::string& location) const;
  /// What `load` has returned or thrown; after Has().
  Metamodel Take();
  void Drop();

  std::string location_;
  std::future<Metamodel> metamodel_;
};
