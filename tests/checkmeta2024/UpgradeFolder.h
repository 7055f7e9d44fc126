#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/MetaMaker.h"
#include "support/TemporaryDirectory.h"
#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/UpgradeContext.h"

namespace test {

/// The words of CUpgradeFolder's display dictionary. Language "en":
///
///     inserted "Inserted "   class "classes"       method "methods"         internal_name "name"
///     deleted  "Deleted "    link "links"          property "properties"    display_name "shown as"
///     updated  "Updated "    behavior "behaviors"                           updated_to " -> "
///
/// Language "xx": each key between "<" and ">".
extern const char* const kDictionary;

/// An upgrade configuration directory with a version directory, a display dictionary and the places of two metamodels,
/// which do not exist at first; and the contexts of a run on it in the language "en".
class CUpgradeFolder {
 public:
  CUpgradeFolder();

  void SetClient(const SModel& model) const;
  void SetOriginal(const SModel& model) const;
  void RemoveClient() const;
  void RemoveOriginal() const;
  /// Replaces the display dictionary.
  void SetDictionary(const std::string& text) const;
  void RemoveDictionary() const;
  /// Where a run saves the check result document.
  std::string ResultPath() const;

  CUpgradeContext context;
  CHandlerContext handlerContext{"CCheckMetaStrategy2024"};
  CTemporaryDirectory directory;
};

}  // namespace test
