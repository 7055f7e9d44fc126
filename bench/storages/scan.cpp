#include <cstdio>
#include <exception>

#include "storages/SqliteScan.h"

/// The measure of loading from SQLite, as a program.
int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::fprintf(stderr, "usage: %s DATABASE\n", arguments[0]);
    return 2;
  }
  try {
    const bench::SScanned scanned = bench::ScanSqlite(arguments[1]);
    std::printf("%ju rows, %ju bytes of text, sum %ju\n", std::uintmax_t{scanned.rows}, std::uintmax_t{scanned.bytes},
                std::uintmax_t{scanned.sum});
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", arguments[1], error.what());
    return 2;
  }
}
