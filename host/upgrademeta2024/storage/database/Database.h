#pragma once

#include <soci/soci.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "upgrademeta2024/storage/DatabaseQueries.h"
#include "upgrademeta2024/storage/database/DatabaseDialect.h"
#include "upgrademeta2024/storage/database/DatabaseValue.h"

namespace metadb {

struct STable;

/// Why a database could not do what it was asked for, in words for its user.
struct SFailure {
  /// kvx::kFileError or kvx::kMalformedDocument.
  std::uint32_t code;
  std::string problem;
  /// Empty where it depends on what was asked for.
  std::string wayOut = {};
};

/// Throws for a database whose file does not hold what was written into it. `finding` says what shows that.
[[noreturn]] inline void FailDamaged(const std::string& finding) {
  throw SFailure{kvx::kMalformedDocument, "the database is damaged: " + finding, "restore it from a copy"};
}

/// One database, that is what differs between the kinds of databases. Nothing is opened before an operation asks for
/// it.
class CDatabase {
 public:
  CDatabase() = default;
  virtual ~CDatabase() = default;
  CDatabase(const CDatabase&) = delete;
  CDatabase& operator=(const CDatabase&) = delete;

  /// The location for messages, without passwords.
  virtual std::string Describe() const = 0;
  /// The files that hold the database; none where a server does.
  virtual std::vector<std::string> GetFiles() const { return {}; }

  /// Whether there is anything that can be opened for reading.
  virtual bool Exists() const = 0;
  /// Sessions for reading can change nothing; what they do fails when kvx::CLoadDeadline is over. Both throw
  /// soci::soci_error or SFailure; writing throws CKVXException for a file that cannot be saved.
  virtual std::shared_ptr<soci::session> OpenForReading() = 0;
  virtual std::unique_ptr<soci::session> OpenForWriting() = 0;
  /// Opens it to be asked, each query no longer than `limit`. Throws as OpenForReading() does.
  virtual std::unique_ptr<CDatabaseQueries> OpenQueries(std::chrono::milliseconds limit) const = 0;
  /// Looks where the metamodel is, or, if there is none, where it is to be.
  virtual SDatabaseDialect Dialect(soci::session& session) const = 0;
  /// Lets the metamodel's tables be dropped without any change to rows of other tables that refer to theirs. What it
  /// gives is to be called when the tables are filled anew, before the transaction ends: it throws when it finds a row
  /// of another table that refers to one which is no longer there.
  virtual std::function<void()> ReleaseReferences(soci::session& session) const = 0;
  /// Ends writing, after the transaction is committed and the session closed. False, with nothing changed, when another
  /// program has made the database meanwhile. Throws CKVXException for a file that cannot be saved.
  virtual bool Publish() { return true; }

  /// Calls `row` for each row of a table, which `select` asks for, and throws what it throws. Judges no value.
  virtual void ReadRows(soci::session& session, const STable& table, const std::string& select,
                        const RowHandler& row) const = 0;
  /// Throws SFailure when rows may be lost, or others be where they belong, because a file is damaged. Looks at the
  /// whole database; takes about as long as reading it.
  virtual void RequireSound(soci::session& /*session*/) const {}

  /// Throws std::bad_alloc where there was no memory.
  virtual SFailure Explain(const soci::soci_error& error) const = 0;
};

}  // namespace metadb
