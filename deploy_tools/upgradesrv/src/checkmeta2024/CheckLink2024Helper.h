#pragma once

#include <memory>

#include "checkmeta2024/checkmeta2024_export.h"

class CJsonObject;
class CMetaLink2024;

/// Compares the properties of a link of the client with those of the original's of the same name. Nothing else of a
/// link is compared. Both links must outlive the helper.
class CHECKMETA2024_EXPORT CCheckLink2024Helper {
 public:
  CCheckLink2024Helper(const CMetaLink2024& clientLink, const CMetaLink2024& originalLink);
  ~CCheckLink2024Helper() = default;

  /// True when nothing differs; `entry` (not null, empty) then stays empty. Otherwise it gets the property findings
  /// (see CCheckProperty2024Interface) and after them the client's element JSON.
  bool CheckLink(std::shared_ptr<CJsonObject>& entry);

  /// The same answer; logs one line for each check that fails.
  bool CheckLink();

 private:
  const CMetaLink2024& clientLink_;
  const CMetaLink2024& originalLink_;
};
