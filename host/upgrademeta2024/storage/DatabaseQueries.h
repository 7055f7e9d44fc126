#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What a database has answered.
struct SDatabaseAnswer {
  enum EOutcome {
    kRows,
    kOutOfTime,
    /// The user may not read what was asked for.
    kDenied,
    /// No further answer is to be expected.
    kLost,
    kFailed
  };

  EOutcome outcome = kRows;
  /// Values as texts; nothing for NULL.
  std::vector<std::vector<std::optional<std::string>>> rows;
  /// Why there are no rows, on one line.
  std::string problem;
};

/// A database that is asked in one transaction, which can change nothing and sees one moment. A query that fails leaves
/// the others as they are.
class CDatabaseQueries {
 public:
  enum EKind { kSqlite, kPostgresql };

  CDatabaseQueries() = default;
  virtual ~CDatabaseQueries() = default;
  CDatabaseQueries(const CDatabaseQueries&) = delete;
  CDatabaseQueries& operator=(const CDatabaseQueries&) = delete;

  virtual EKind GetKind() const = 0;
  /// A second connection that sees the same moment, to be asked on a thread of its own; null where there is none to be
  /// had. To be called before anything is asked. Throws std::bad_alloc only.
  virtual std::unique_ptr<CDatabaseQueries> OpenSecond() = 0;
  /// Throws std::bad_alloc only.
  virtual SDatabaseAnswer Query(const std::string& query) = 0;
  /// False when another program has changed the database so that what was answered, by a second connection
  /// too, may be of several moments.
  virtual bool IsOfOneMoment() const { return true; }
};
