#pragma once

#include <list>
#include <memory>
#include <string>

#include "checkmeta2024/checkmeta2024_export.h"

class CJsonObject;
class CMetaClass2024;

/// Compares a class of the client with the original's of the same name: the names of the behaviors that it uses, ASCII
/// case ignored, then its properties. Nothing else of a class is compared. Both classes must outlive the helper.
class CHECKMETA2024_EXPORT CCheckClass2024Helper {
 public:
  CCheckClass2024Helper(const CMetaClass2024& clientClass, const CMetaClass2024& originalClass);
  ~CCheckClass2024Helper() = default;

  /// True when nothing differs; `entry` (not null, empty) then stays empty. Otherwise it gets the client's element JSON
  /// once, at the first difference, and
  /// - "deleted_behaviors", "inserted_behaviors": arrays of lower-cased names that only the original or only the client
  ///   lists, in that side's order and as often as it lists them; absent when empty;
  /// - the property findings (see CCheckProperty2024Interface), before the element JSON when no behavior differs.
  bool CheckClass(std::shared_ptr<CJsonObject>& entry);

  /// The same answer; logs one line for each check that fails.
  bool CheckClass();

 private:
  bool CheckBehaviorsOfClass(std::list<std::string>& deleted, std::list<std::string>& inserted) const;
  bool CheckPropertiesOfClass(std::shared_ptr<CJsonObject>& entry);
  bool CheckPropertiesOfClass() const;

  const CMetaClass2024& clientClass_;
  const CMetaClass2024& originalClass_;
  bool elementWritten_ = false;
};
