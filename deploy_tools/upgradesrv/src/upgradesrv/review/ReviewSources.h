#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "metareview2024/DecisionsFile.h"
#include "metareview2024/Review.h"
#include "metareview2024/ReviewSteps.h"
#include "upgrademeta2024/MetaMgr2024.h"
#include "upgradesrv/chain/UpgradeConfiguration.h"

namespace upgradesrv {

/// What a review is made from, as the command line names it.
struct SReviewSources {
  /// The upgrade configuration directory, as it was given.
  std::string directory;
  /// In place of upgrade.json.
  SConfigurationOverrides overrides;
  /// Where decisions are recorded; without it decisions.json of the directory, if that is there.
  std::optional<std::string> decisions;
  /// YYYY-MM-DD, in UTC; without it the clock's.
  std::optional<std::string> today;
};

/// A review, and the client's metamodel that it is made from.
struct SComparedMetamodels {
  metareview::SReview review;
  std::shared_ptr<const CMetaDictionary2024> client;
};

/// The metamodels of an upgrade and the decisions about it: upgrade.json read, nothing else.
class CReviewSources {
 public:
  /// Throws CKVXException or CTrouble that names the file, the place and the way out.
  explicit CReviewSources(const SReviewSources& sources);

  const std::string& GetLang() const { return lang_; }
  const std::string& GetToday() const { return today_; }
  /// The decisions file, whether it is there or not.
  const std::string& GetDecisionsFile() const { return decisionsFile_; }
  const std::string& GetClientLocation() const { return clientLocation_; }
  /// All files that the review is made from, so that no output takes their place.
  std::vector<std::string> GetFiles() const;

  /// No decisions where the file that nobody named is not there.
  metareview::SDecisions ReadDecisions() const;
  /// No decisions where the file is not there yet.
  metareview::SDecisions ReadDecisionsSoFar() const;

  /// Loads the metamodels that are not loaded yet, all at once where the machine allows, and compares them; no
  /// decisions are applied yet.
  SComparedMetamodels Compare(const std::vector<metareview::EKind>& kinds,
                              const LoadedMetamodels2024& loaded = {}) const;

 private:
  std::string directory_;
  std::string file_;
  std::string lang_;
  std::string today_;
  std::string clientLocation_;
  std::string originalLocation_;
  std::optional<std::string> baseLocation_;
  std::string decisionsFile_;
  bool isDecisionsFileNamed_;
};

}  // namespace upgradesrv
