#include "comparison/DataCache.h"

#include <unistd.h>

#include <string>
#include <utility>

#include "generator/Metamodel.h"
#include "generator/UpgradeDirectory.h"

namespace bench {
namespace {

using Path = std::filesystem::path;

bool IsCurrent(const Path& directory) {
  std::error_code error;
  const auto written = std::filesystem::last_write_time(directory / "upgrade.json", error);
  return !error && written > std::filesystem::last_write_time("/proc/self/exe");
}

}  // namespace

CDataCache::CDataCache(Path directory) : directory_(std::move(directory)) {
  std::filesystem::create_directories(Logs());
}

Path CDataCache::Provide(const SSize& size, const SVariant& variant) const {
  Path target = directory_ / (std::string(size.name) + "-" + std::string(variant.name));
  if (!IsCurrent(target)) {
    // Renamed once it is complete, so that a run that is broken off leaves nothing that looks finished.
    const Path draft = target.string() + ".draft";
    std::filesystem::remove_all(draft);
    WriteUpgradeDirectory(size, variant, kDefaultSeed, draft);
    std::filesystem::remove_all(target);
    std::filesystem::rename(draft, target);
    WriteOut();
  }
  return target;
}

Path CDataCache::ProvideExample() const {
  Path target = directory_ / "example";
  std::filesystem::remove_all(target);
  std::filesystem::copy(UPGRADESRV_EXAMPLE_DIR, target, std::filesystem::copy_options::recursive);
  return target;
}

void CDataCache::WriteOut() {
  sync();
}

Path CDataCache::Logs() const {
  return directory_ / "logs";
}

}  // namespace bench
