#include "kvxsptfile/OwnLibrary.h"

#include <dlfcn.h>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

std::string OwnDirectory() {
  Dl_info self{};
  static_cast<void>(dladdr(reinterpret_cast<const void*>(&OwnDirectory), &self));
  const std::string path = self.dli_fname != nullptr ? self.dli_fname : "";
  return path.substr(0, path.rfind('/') + 1);
}

/// Throws what the library throws while it is loaded. dlopen is declared to throw nothing, and compilers that see it
/// called look for nobody who catches.
void* Load(const std::string& path) {
  void* (*const volatile load)(const char*, int) = &dlopen;
  return load(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

}  // namespace

void* FindInOwnLibrary(const std::string& library, const char* function) {
  const std::string path = OwnDirectory() + library;
  void* const loaded = Load(path);
  void* const found = loaded != nullptr ? dlsym(loaded, function) : nullptr;
  if (found == nullptr) {
    const char* const error = dlerror();
    throw CKVXException(kFileError,
                        "a library of the host cannot be loaded: " +
                            CStringHelper::ToVisible(error != nullptr ? error : "unknown error of the loader") +
                            "; install the host's libraries as a whole, or allow more memory");
  }
  return found;
}

}  // namespace kvx
