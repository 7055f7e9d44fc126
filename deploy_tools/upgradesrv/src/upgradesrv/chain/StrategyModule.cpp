#include "upgradesrv/chain/StrategyModule.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/ReadFile.h"
#include "upgradecontext/UpgradeStrategy.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/ModuleTrust.h"

namespace upgradesrv {
namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

constexpr const char* kFactoryName = "CreateReflectionClassObject";

std::string LoaderError() {
  const char* error = dlerror();
  return error != nullptr ? error : "unknown error of the loader";
}

/// Whether a library ends before what its headers promise. The loader does not look and the process would end with a
/// signal. What is no library of this machine's kind is left to the loader to refuse.
bool IsCutOff(const std::string& path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  const auto size = static_cast<std::uint64_t>(file.tellg());
  const auto holds = [size](std::uint64_t offset, std::uint64_t length) {
    return offset <= size && length <= size - offset;
  };
  Header header{};
  file.seekg(0).read(reinterpret_cast<char*>(&header), sizeof header);
  constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
  const unsigned char* identity = header.e_ident;
  if (!file || std::memcmp(identity, ELFMAG, SELFMAG) != 0 || identity[EI_CLASS] != kOwnClass) {
    return false;
  }
  std::vector<Segment> segments(header.e_phnum);
  const std::size_t tableSize = segments.size() * sizeof(Segment);
  file.seekg(static_cast<std::streamoff>(header.e_phoff));
  file.read(reinterpret_cast<char*>(segments.data()), static_cast<std::streamsize>(tableSize));
  const std::uint64_t sectionTableSize = std::uint64_t{header.e_shnum} * header.e_shentsize;
  return !file || !holds(header.e_shoff, sectionTableSize) ||
         !std::all_of(segments.begin(), segments.end(), [&holds](const Segment& segment) {
           return segment.p_type != PT_LOAD || holds(segment.p_offset, segment.p_filesz);
         });
}

/// The path of a module's file, absolute: with a separator in it the loader takes it as it is and searches nowhere
/// else.
std::string FindModule(const std::vector<std::string>& directories, const std::string& name) {
  const std::string file = ModuleFile(name);
  std::string searched;
  for (const std::string& directory : directories) {
    const std::filesystem::path absolute = std::filesystem::absolute(directory);
    std::error_code error;
    if (std::filesystem::exists(absolute / file, error)) {
      return absolute / file;
    }
    searched += (searched.empty() ? "" : " or ") + absolute.string();
  }
  throw CTrouble("there is no " + file + " in " + searched +
                 "; give the bare name, NAME for libNAME.so, install the module there or name its directory with "
                 "--module-dir");
}

/// Refuses what the loader would wait for, or end the process over.
void RequireWholeFile(const std::string& path) {
  try {
    kvx::RequireRegularFile(path);
  } catch (const CKVXException& failure) {
    throw CTrouble(std::string("the module cannot be loaded: ") + failure.what());
  }
  if (IsCutOff(path)) {
    throw CTrouble("the module cannot be loaded: " + path + ": the file is cut off; install it again");
  }
}

}  // namespace

std::string ModuleFile(const std::string& name) {
  return "lib" + name + ".so";
}

CStrategyModule::CStrategyModule(const std::vector<std::string>& directories, const std::string& name) {
  if (name.empty() || name.find('/') != std::string::npos || name.find('\0') != std::string::npos) {
    throw CTrouble("\"" + name +
                   "\" is not the bare name of a module; its file is looked up in the module directories");
  }
  path_ = FindModule(directories, name);
  RequireWholeFile(path_);
  LookWhoMayWriteModule(path_);
  library_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library_ == nullptr) {
    throw CTrouble("the module cannot be loaded: " + LoaderError());
  }
  // POSIX wants a pointer to a function to be readable from what dlsym returns.
  factory_ = reinterpret_cast<Factory*>(dlsym(library_, kFactoryName));
  if (factory_ == nullptr) {
    dlclose(library_);
    throw CTrouble(path_ + " is not a strategy module: it does not export " + kFactoryName);
  }
}

CStrategyModule::~CStrategyModule() {
  dlclose(library_);
}

std::unique_ptr<CUpgradeStrategy> CStrategyModule::CreateStrategy(const std::string& className) const {
  return std::unique_ptr<CUpgradeStrategy>(factory_(className));
}

std::string DefaultModuleDirectory() {
  const std::filesystem::path directory = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  return (directory / UPGRADESRV_MODULES_FROM_EXECUTABLE).lexically_normal();
}

}  // namespace upgradesrv
