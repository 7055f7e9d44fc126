#pragma once

#include <cstdint>
#include <string>

namespace bench {

/// What a scan has seen, so that nothing of it can be left out.
struct SScanned {
  std::uint64_t rows = 0;
  std::uint64_t bytes = 0;
  std::uint64_t sum = 0;
};

/// The measure of loading from an SQLite database: opens the file with SQLite's own interface, reads every column of
/// every table of the metamodel in the order of its key, numbers as numbers and texts with their lengths, and keeps
/// nothing. Throws std::runtime_error.
SScanned ScanSqlite(const std::string& path);

}  // namespace bench
