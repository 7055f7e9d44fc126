#include "upgradesrv/VersionText.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <set>
#include <string_view>
#include <system_error>

#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgradesrv/chain/StrategyModule.h"

namespace upgradesrv {
namespace {

/// The names of the modules in the default directory. They are not loaded: that takes time, and a broken one would
/// fail.
std::string Modules() {
  namespace fs = std::filesystem;
  const std::string directory = DefaultModuleDirectory();
  std::set<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(directory, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    const std::string file = entry->path().stem().string();
    constexpr std::string_view kPrefix = "lib";
    const std::string name = file.substr(std::min(kPrefix.size(), file.size()));
    if (entry->path().filename() == ModuleFile(name)) {
      names.insert(name);
    }
  }
  if (error == std::errc::not_enough_memory) {
    throw std::bad_alloc();
  }
  if (error && error != std::errc::no_such_file_or_directory) {
    return directory + " cannot be listed: " + error.message();
  }
  std::string list;
  for (const std::string& name : names) {
    list += (list.empty() ? "" : ", ") + name;
  }
  return (list.empty() ? "none" : list) + " in " + directory;
}

}  // namespace

std::string VersionText() {
  return std::string("upgradesrv ") + UPGRADESRV_VERSION + "\ncommit:     " + UPGRADESRV_COMMIT +
         "\ngeneration: " + std::to_string(CMetaDictionary2024::kGeneration) +
         "\nschema:     " + std::to_string(metadb::kSchemaVersion) + "\nmodules:    " + Modules();
}

}  // namespace upgradesrv
