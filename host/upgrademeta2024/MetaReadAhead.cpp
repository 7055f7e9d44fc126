#include "upgrademeta2024/MetaReadAhead.h"

#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaLocation.h"

namespace {

/// A server may grant its user no second connection; a pipe would be used up, or keep its reader waiting, though nobody
/// may ask for what comes out of it.
bool CanBeReadAhead(const std::string& location) {
  const SMetaLocation parsed = ParseMetaLocation(location);
  std::error_code error;
  return (parsed.kind == SMetaLocation::kDocument || parsed.kind == SMetaLocation::kSqlite) &&
         std::filesystem::is_regular_file(parsed.name, error) && std::thread::hardware_concurrency() > 1;
}

}  // namespace

CMetaReadAhead::CMetaReadAhead() = default;

CMetaReadAhead::~CMetaReadAhead() = default;

void CMetaReadAhead::Begin(const std::string& location, std::function<Metamodel()> load) {
  // Waits for the thread.
  metamodel_ = {};
  if (!CanBeReadAhead(location)) {
    return;
  }
  try {
    metamodel_ = std::async(std::launch::async, std::move(load));
    location_ = location;
  } catch (const std::system_error&) {
    // Without a thread it is read when it is asked for.
  }
}

bool CMetaReadAhead::Has(const std::string& location) const {
  return metamodel_.valid() && location_ == location;
}

CMetaReadAhead::Metamodel CMetaReadAhead::Take() {
  return metamodel_.get();
}
