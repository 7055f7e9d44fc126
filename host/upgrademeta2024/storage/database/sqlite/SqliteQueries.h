#pragma once

#include <sys/stat.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "upgrademeta2024/storage/DatabaseQueries.h"
#include "upgrademeta2024/storage/database/sqlite/SqliteConnection.h"

namespace metadb {

/// An SQLite database that is asked. No file is made or changed beside the database either.
class CSqliteQueries : public CDatabaseQueries {
 public:
  /// A query takes no longer than `limit`. Throws CSqliteConnection::SFailure.
  CSqliteQueries(const std::string& path, std::chrono::milliseconds limit);
  ~CSqliteQueries() override;

  EKind GetKind() const override { return kSqlite; }
  std::unique_ptr<CDatabaseQueries> OpenSecond() override;
  SDatabaseAnswer Query(const std::string& query) override { return connection_->Query(query); }
  bool IsOfOneMoment() const override;

 private:
  using Connection = std::unique_ptr<CSqliteConnection>;
  class CSecond;

  Connection Open(std::chrono::milliseconds wait) const;

  std::string path_;
  std::chrono::milliseconds limit_;
  // Of a file that is read without locks.
  std::optional<struct stat> before_;
  Connection connection_;
  // Null where no second one is certain to see the same moment.
  Connection second_;
};

}  // namespace metadb
