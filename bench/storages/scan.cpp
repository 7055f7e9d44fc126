#include <cstdio>
#include <exception>
#include <iostream>

#include "storages/SqliteScan.h"

/// The measure of loading from SQLite, as a program.
int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::fprintf(stderr, "usage: %s DATABASE\n", arguments[0]);
    return 2;
  }
  try {
    const bench::SScanned scanned = bench::ScanSqlite(arguments[1]);
    std::cout << scanned.rows << " rows, " << scanned.bytes << " bytes of text, sum " << scanned.sum << "\n";
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", arguments[1], error.what());
    return 2;
  }
}
