#pragma once

#include <list>
#include <memory>
#include <string>

#include "checkmeta2024/checkmeta2024_export.h"

class CJsonObject;
class CMetaBehavior2024;
class CMetaMethod2024;

/// Compares a behavior of the client with the original's of the same name: which methods there are, then its
/// properties. Nothing else of a behavior or of its methods is compared. Both behaviors must outlive the helper.
class CHECKMETA2024_EXPORT CCheckBehavior2024Helper {
 public:
  CCheckBehavior2024Helper(const CMetaBehavior2024& clientBehavior, const CMetaBehavior2024& originalBehavior);
  ~CCheckBehavior2024Helper() = default;

  /// True when nothing differs; `entry` (not null, empty) then stays empty. Otherwise it gets the client's element JSON
  /// once, at the first difference, and
  /// - "deleted_methods", "inserted_methods": arrays of the element JSON of methods that only the original or only the
  ///   client has, in that side's order; absent when empty;
  /// - the property findings (see CCheckProperty2024Interface), before the element JSON when no method differs.
  bool CheckBehavior(std::shared_ptr<CJsonObject>& entry);

  /// The same answer; logs one line for each check that fails.
  bool CheckBehavior();

 private:
  using MethodList = std::list<std::shared_ptr<CMetaMethod2024>>;

  bool CheckMethodsOfBehavior(MethodList& deleted, MethodList& inserted) const;
  void GetMethodChekResult(const std::string& key, MethodList& methods, std::shared_ptr<CJsonObject>& entry) const;
  bool CheckPropertiesOfBehavior(std::shared_ptr<CJsonObject>& entry);
  bool CheckPropertiesOfBehavior() const;

  const CMetaBehavior2024& clientBehavior_;
  const CMetaBehavior2024& originalBehavior_;
  bool elementWritten_ = false;
};
