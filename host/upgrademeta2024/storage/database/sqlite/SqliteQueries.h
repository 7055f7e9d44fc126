#pragma once

#include <sys/stat.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "upgrademeta2024/storage/DatabaseQueries.h"

// SOCI has it in a namespace of its own.
struct sqlite3;

namespace metadb {

/// An SQLite database that is asked. No file is made or changed beside the database either.
class CSqliteQueries : public CDatabaseQueries {
 public:
  /// Why a database cannot be opened: SQLite's code.
  struct SOpenFailure {
    int code;
  };

  /// A query takes no longer than `limit`. Throws SOpenFailure.
  CSqliteQueries(const std::string& path, std::chrono::milliseconds limit);
  ~CSqliteQueries() override;

  EKind GetKind() const override { return kSqlite; }
  SDatabaseAnswer Query(const std::string& query) override;
  bool IsOfOneMoment() const override;

 private:
  using Clock = std::chrono::steady_clock;

  int Read(const std::string& query, SDatabaseAnswer& answer);

  std::string path_;
  std::chrono::milliseconds limit_;
  Clock::time_point deadline_;
  // Of a file that is read without locks.
  std::optional<struct stat> before_;
  std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection_;
};

}  // namespace metadb
