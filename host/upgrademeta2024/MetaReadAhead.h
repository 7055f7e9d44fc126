#pragma once

#include <functional>
#include <future>
#include <memory>
#include <string>

#include "upgrademeta2024/upgrademeta2024_export.h"

class CMetaDictionary2024;

/// Reads a metamodel on a second thread. Only files are read so, and only where the machine has more than one
/// processor. The end waits for the thread and drops what nobody has asked for. To be used by one thread.
class UPGRADEMETA2024_EXPORT CMetaReadAhead {
 public:
  using Metamodel = std::shared_ptr<CMetaDictionary2024>;

  CMetaReadAhead();
  ~CMetaReadAhead();
  CMetaReadAhead(const CMetaReadAhead&) = delete;
  CMetaReadAhead& operator=(const CMetaReadAhead&) = delete;

  /// Drops what was begun before. `load` is called on the second thread, or not at all.
  void Begin(const std::string& location, std::function<Metamodel()> load);
  bool Has(const std::string& location) const;
  /// What `load` has returned or thrown; after Has(), once.
  Metamodel Take();

 private:
  std::string location_;
  std::future<Metamodel> metamodel_;
};
