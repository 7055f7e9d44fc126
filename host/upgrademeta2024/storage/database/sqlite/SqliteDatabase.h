#pragma once

#include <memory>
#include <string>
#include <vector>

#include "upgrademeta2024/storage/database/Database.h"

namespace kvx {
class CDelayedEnd;
class CTemporaryFile;
}  // namespace kvx

namespace metadb {

/// An SQLite database: one file. A file that does not exist yet is written as kvx::CTemporaryFile writes files.
class CSqliteDatabase : public CDatabase {
 public:
  /// `location` is the path as its user wrote it, for messages.
  CSqliteDatabase(std::string location, const std::string& path);
  ~CSqliteDatabase() override;

  std::string Describe() const override { return location_; }
  std::vector<std::string> GetFiles() const override;
  bool Exists() const override;
  std::shared_ptr<soci::session> OpenForReading() override;
  std::unique_ptr<soci::session> OpenForWriting() override;
  std::unique_ptr<CDatabaseQueries> OpenQueries(std::chrono::milliseconds limit) const override;
  SDatabaseDialect Dialect(soci::session& session) const override;
  std::function<void()> ReleaseReferences(soci::session& session) const override;
  bool Publish() override;
  void ReadRows(soci::session& session, const STable& table, const std::string& select,
                const RowHandler& row) const override;
  void RequireSound(soci::session& session) const override;
  SFailure Explain(const soci::soci_error& error) const override;

 private:
  void RequireReadableFile() const;
  void RequireWholePages(soci::session& session) const;

  std::string location_;
  std::string path_;
  // While a file is written that does not exist yet.
  std::unique_ptr<kvx::CTemporaryFile> newFile_;
  // While a file is written that exists.
  std::unique_ptr<kvx::CDelayedEnd> delayedEnd_;
};

}  // namespace metadb
