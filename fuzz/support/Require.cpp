#include "fuzz/support/Require.h"

#include <cstdio>
#include <cstdlib>

#include "kvxsptstring/StringHelper.h"

namespace fuzz {

void Require(bool holds, const char* promise, const std::string& detail) {
  if (!holds) {
    std::fprintf(stderr, "broken promise: %s\n%s\n", promise, CStringHelper::ToVisible(detail).c_str());
    std::abort();
  }
}

}  // namespace fuzz
