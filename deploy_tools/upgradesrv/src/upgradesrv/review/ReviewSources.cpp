#include "upgradesrv/review/ReviewSources.h"

#include <array>
#include <ctime>
#include <filesystem>
#include <future>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/ReadFile.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/UpgradeFiles.h"

namespace upgradesrv {
namespace {

using Metamodel = std::shared_ptr<const CMetaDictionary2024>;

std::string Today() {
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
  std::array<char, sizeof("YYYY-MM-DD")> text{};
  if (gmtime_r(&now, &utc) == nullptr || std::strftime(text.data(), text.size(), "%Y-%m-%d", &utc) == 0) {
    throw CTrouble("the clock cannot be read; give the day with --today YYYY-MM-DD");
  }
  return text.data();
}

Metamodel Load(const std::string& side, const std::string& location) {
  try {
    return OpenMetaStorage(location)->Load();
  } catch (const CKVXException& error) {
    throw CKVXException(error.GetCode(), side + " metamodel: " + error.what());
  }
}

/// What is loaded already is taken as it is. Loads on a thread of its own, where there is one and the metamodel is in a
/// file: a server may grant its user no second connection. Otherwise when it is asked for.
std::future<Metamodel> BeginLoad(const std::string& side, const std::string& location,
                                 const LoadedMetamodels2024& loaded) {
  if (const auto found = loaded.find(location); found != loaded.end()) {
    return std::async(std::launch::deferred, [metamodel = Metamodel(found->second)] { return metamodel; });
  }
  const std::vector<std::string> files = OpenMetaStorage(location)->GetFiles();
  std::error_code error;
  if (std::thread::hardware_concurrency() > 1 && !files.empty() &&
      std::filesystem::is_regular_file(files.front(), error)) {
    try {
      return std::async(std::launch::async, Load, side, location);
    } catch (const std::system_error&) {
      // There is no thread.
    }
  }
  return std::async(std::launch::deferred, Load, side, location);
}

}  // namespace

CReviewSources::CReviewSources(const SReviewSources& sources)
    : directory_(sources.directory), today_(sources.today ? *sources.today : Today()) {
  if (!metareview::IsDate(today_)) {
    throw CTrouble("--today: \"" + today_ + "\" is not a day; write YYYY-MM-DD");
  }
  const CUpgradeConfiguration configuration(sources.directory, sources.overrides);
  CUpgradeContext context;
  configuration.FillContext(context);
  file_ = configuration.GetDirectory() + kConfigurationFile;
  lang_ = context.GetLang();
  clientLocation_ = context.GetClientMetaLocation();
  originalLocation_ = context.GetOriginalMetaLocation();
  baseLocation_ = configuration.GetBaseLocation();
  isDecisionsFileNamed_ = sources.decisions.has_value();
  decisionsFile_ = sources.decisions.value_or(configuration.GetDirectory() + kDecisionsFile);
}

std::vector<std::string> CReviewSources::GetFiles() const {
  std::vector<std::string> files = {file_, decisionsFile_};
  std::vector<std::string> locations = {clientLocation_, originalLocation_};
  if (baseLocation_) {
    locations.push_back(*baseLocation_);
  }
  for (const std::string& location : locations) {
    const std::vector<std::string> found = OpenMetaStorage(location)->GetFiles();
    files.insert(files.end(), found.begin(), found.end());
  }
  return files;
}

metareview::SDecisions CReviewSources::ReadDecisions() const {
  return isDecisionsFileNamed_ ? metareview::ParseDecisions(kvx::ReadFile(decisionsFile_), decisionsFile_)
                               : ReadDecisionsSoFar();
}

metareview::SDecisions CReviewSources::ReadDecisionsSoFar() const {
  std::error_code error;
  const bool isThere =
      std::filesystem::symlink_status(decisionsFile_, error).type() != std::filesystem::file_type::not_found;
  return isThere ? metareview::ParseDecisions(kvx::ReadFile(decisionsFile_), decisionsFile_) : metareview::SDecisions();
}

SComparedMetamodels CReviewSources::Compare(const std::vector<metareview::EKind>& kinds,
                                            const LoadedMetamodels2024& loaded) const {
  std::future<Metamodel> original = BeginLoad("original", originalLocation_, loaded);
  std::future<Metamodel> base;
  if (baseLocation_) {
    base = BeginLoad("base", *baseLocation_, loaded);
  }
  metareview::SMetamodels metamodels;
  const auto client = loaded.find(clientLocation_);
  metamodels.client = client != loaded.end() ? client->second : Load("client", clientLocation_);
  metamodels.original = original.get();
  if (baseLocation_) {
    metamodels.base = base.get();
  }

  metareview::SReview review = metareview::CompareMetamodels(metamodels, kinds);
  review.directory = directory_;
  review.client = OpenMetaStorage(clientLocation_)->Describe();
  review.original = OpenMetaStorage(originalLocation_)->Describe();
  if (baseLocation_) {
    review.base = OpenMetaStorage(*baseLocation_)->Describe();
  }
  return {std::move(review), metamodels.client};
}

}  // namespace upgradesrv
