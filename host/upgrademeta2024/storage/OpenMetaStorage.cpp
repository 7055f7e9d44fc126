#include "upgrademeta2024/storage/OpenMetaStorage.h"

#include <simdjson.h>

#include <cstdlib>
#include <filesystem>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/OwnLibrary.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/MetaLocation.h"
#include "upgrademeta2024/storage/database/OpenDatabase.h"
#include "upgrademeta2024/storage/document/DocumentMetaStorage.h"

namespace {

/// simdjson refuses every text as faulty when it is made to use an implementation that there is not.
void RequireSimdjson() {
  constexpr const char* kVariable = "SIMDJSON_FORCE_IMPLEMENTATION";
  const char* const forced = std::getenv(kVariable);
  if (forced == nullptr) {
    return;
  }
  const simdjson::implementation* const implementation = simdjson::get_available_implementations()[forced];
  if (implementation == nullptr || !implementation->supported_by_runtime_system()) {
    throw CKVXException(kvx::kMetamodelError,
                        CStringHelper::ToVisible("the environment variable " + std::string(kVariable) + "=" + forced) +
                            " names nothing that this computer can use; unset it");
  }
}

std::unique_ptr<CMetaStorage> LoadAndOpen(const std::string& library, const std::string& location,
                                          const std::string& name) {
  // POSIX wants a pointer to a function to be readable from what dlsym returns.
  auto* const open = reinterpret_cast<decltype(&OpenDatabase)>(kvx::FindInOwnLibrary(library, "OpenDatabase"));
  return std::unique_ptr<CMetaStorage>(open(location, name));
}

}  // namespace

std::unique_ptr<CMetaStorage> OpenMetaStorage(const std::string& location) {
  RequireSimdjson();
  const SMetaLocation parsed = ParseMetaLocation(location);
  switch (parsed.kind) {
    case SMetaLocation::kDocument:
      return std::make_unique<CDocumentMetaStorage>(parsed.name);
    case SMetaLocation::kSqlite:
      return LoadAndOpen("libupgrademeta2024sqlite.so", location, parsed.name);
    case SMetaLocation::kPostgresql:
      return LoadAndOpen("libupgrademeta2024postgresql.so", location, parsed.name);
    default:
      break;
  }
  // A shell's <(command) is a pipe without a name of the user's choice.
  if (std::error_code error; std::filesystem::is_fifo(location, error)) {
    return std::make_unique<CDocumentMetaStorage>(location);
  }
  // What follows a scheme may hold a password.
  const std::size_t scheme = location.find("://");
  const std::string shown = scheme == std::string::npos ? location : location.substr(0, scheme) + "://…";
  throw CKVXException(kvx::kMetamodelError,
                      CStringHelper::ToVisible(shown) +
                          ": not a metamodel location; give the path of a .json document, the path of a .db or "
                          ".sqlite database, sqlite3://PATH or postgresql://CONNECTION");
}
