#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kvxsptfile/LoadDeadline.h"
#include "upgrademeta2024/storage/database/Database.h"

namespace metadb {

/// A database of a PostgreSQL server. What the connection words leave open comes from libpq's environment variables,
/// service file and password file.
class CPostgresqlDatabase : public CDatabase {
 public:
  /// `words`: what follows "postgresql://", either "keyword=value …" or the rest of a connection URI; may be empty.
  /// Throws CKVXException (kvx::kMetamodelError), without showing them, for words that libpq does not understand.
  explicit CPostgresqlDatabase(const std::string& words);
  ~CPostgresqlDatabase() override;

  std::string Describe() const override { return description_; }
  bool Exists() const override { return true; }
  std::shared_ptr<soci::session> OpenForReading() override;
  std::unique_ptr<soci::session> OpenForWriting() override;
  std::unique_ptr<CDatabaseQueries> OpenQueries(std::chrono::milliseconds limit) const override;
  SDatabaseDialect Dialect(soci::session& session) const override;
  std::function<void()> ReleaseReferences(soci::session& session) const override;
  void ReadRows(soci::session& session, const STable& table, const std::string& select,
                const RowHandler& row) const override;
  SFailure Explain(const soci::soci_error& error) const override;

 private:
  /// Waits for each address no longer than `deadline` leaves, which libpq rounds up to two seconds.
  std::unique_ptr<soci::session> Connect(std::optional<kvx::CLoadDeadline::Clock::time_point> deadline) const;
  /// The same, and says where that is.
  std::unique_ptr<soci::session> Open(std::optional<kvx::CLoadDeadline::Clock::time_point> deadline) const;
  /// A note where the words alone do not say which database this is.
  void NoteWhere(const std::string& host, const std::string& port, const std::string& database) const;
  std::string OneLine(const std::string& text) const;

  std::string connection_;
  /// In seconds, as libpq takes it.
  std::string connectTimeout_;
  std::string description_;
  // As the words have them; empty for what comes from elsewhere.
  std::string host_;
  std::string database_;
  std::vector<std::string> secrets_;
};

}  // namespace metadb
