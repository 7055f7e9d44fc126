#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "upgrademeta2024/storage/DatabaseQueries.h"

// SOCI has it in a namespace of its own.
struct sqlite3;

namespace metadb {

/// An SQLite database that is open and can only be read.
class CSqliteConnection {
 public:
  /// Why a database cannot be opened, or nothing be read from it: SQLite's code.
  struct SFailure {
    int code;
  };

  /// Without locks nothing may change the file, and what changes it is not noticed. A query takes no longer than
  /// `limit`, and a lock of another program no longer than `wait`. Throws SFailure.
  CSqliteConnection(const std::string& path, bool isWithoutLocks, std::chrono::milliseconds limit,
                    std::chrono::milliseconds wait);
  ~CSqliteConnection();
  CSqliteConnection(const CSqliteConnection&) = delete;
  CSqliteConnection& operator=(const CSqliteConnection&) = delete;

  /// Begins a transaction. Throws SFailure.
  void BeginReading();
  /// Differs from an earlier one when another connection has changed the database in between. Throws SFailure.
  std::string DataVersion();
  /// Throws std::bad_alloc only.
  SDatabaseAnswer Query(const std::string& query);

 private:
  using Clock = std::chrono::steady_clock;

  SDatabaseAnswer Execute(const std::string& statement);
  int Read(const std::string& query, SDatabaseAnswer& answer);

  std::chrono::milliseconds limit_;
  Clock::time_point deadline_;
  std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection_;
};

}  // namespace metadb
