#include "upgradesrv/StrategyModule.h"

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

}  // namespace

std::string ModulePath(const std::string& directory, const std::string& name) {
  return std::filesystem::absolute(directory) / ("lib" + name + ".so");
}

CStrategyModule::CStrategyModule(const std::string& directory, const std::string& name) {
  if (name.empty() || name.find('/') != std::string::npos || name.find('\0') != std::string::npos) {
    throw CTrouble("module \"" + name + "\": must be a bare name; its file is looked up in the module directory");
  }
  // With a separator in it the loader takes the path as it is and searches nowhere else.
  path_ = ModulePath(directory, name);
  std::error_code error;
  if (!std::filesystem::exists(path_, error)) {
    throw CTrouble("module " + name + ": there is no " + path_ +
                   "; give the bare name, NAME for libNAME.so, install the module there or name its directory with "
                   "--module-dir");
  }
  try {
    // The loader would wait for a pipe.
    kvx::RequireRegularFile(path_);
  } catch (const CKVXException& failure) {
    throw CTrouble("module " + name + ": cannot be loaded: " + failure.what());
  }
  if (IsCutOff(path_)) {
    throw CTrouble("module " + name + ": cannot be loaded: " + path_ + ": the file is cut off; install it again");
  }
  library_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library_ == nullptr) {
    throw CTrouble("module " + name + ": cannot be loaded: " + LoaderError());
  }
  // POSIX wants a pointer to a function to be readable from what dlsym returns.
  factory_ = reinterpret_cast<Factory*>(dlsym(library_, kFactoryName));
  if (factory_ == nullptr) {
    dlclose(library_);
    throw CTrouble("module " + name + ": " + path_ + " is not a strategy module: it does not export " + kFactoryName);
  }
}

CStrategyModule::~CStrategyModule() {
  dlclose(library_);
}

std::unique_ptr<CUpgradeStrategy> CStrategyModule::CreateStrategy(const std::string& className) const {
  std::unique_ptr<CUpgradeStrategy> strategy(factory_(className));
  if (strategy == nullptr) {
    throw CTrouble(path_ + ": the module has no strategy class \"" + className +
                   R"("; correct "class" in upgrade.json)");
  }
  return strategy;
}

std::string DefaultModuleDirectory() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "modules";
}

}  // namespace upgradesrv
