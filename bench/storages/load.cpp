#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>

#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

/// Loads one metamodel from whatever storage, and does nothing else: what it holds is not freed either.
int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::fprintf(stderr, "usage: %s LOCATION\n", arguments[0]);
    return 2;
  }
  try {
    const std::shared_ptr<CMetaDictionary2024> dictionary = OpenMetaStorage(arguments[1])->Load();
    std::printf("%zu classes\n", dictionary->GetClasses().size());
    std::fflush(stdout);
    std::_Exit(0);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 2;
  }
}
