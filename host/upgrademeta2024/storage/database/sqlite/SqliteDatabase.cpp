#include "upgrademeta2024/storage/database/sqlite/SqliteDatabase.h"

#include <soci/sqlite3/soci-sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <new>
#include <set>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptfile/DelayedEnd.h"
#include "kvxsptfile/FollowLinks.h"
#include "kvxsptfile/LoadDeadline.h"
#include "kvxsptfile/OpeningProblem.h"
#include "kvxsptfile/TemporaryFile.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgrademeta2024/storage/database/Statements.h"
#include "upgrademeta2024/storage/database/sqlite/SqliteQueries.h"
#include "upgrademeta2024/storage/database/sqlite/SqliteRows.h"

namespace metadb {
namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr int kMillisecondsBetweenTries = 10;
constexpr int kStepsBetweenLooks = 1000;
constexpr const char* kWithoutLocks = "unix-none";

sqlite_api::sqlite3*& ConnectionOf(soci::session& session) {
  return static_cast<soci::sqlite3_session_backend*>(session.get_backend())->conn_;
}

/// SOCI takes a path for a list of words, so that not every path could be given to it, and always creates the file that
/// it does not find: the file is opened here and put in place of an empty database. A session stays on one thread.
std::unique_ptr<soci::session> Open(const std::string& path, int flags, const char* system = nullptr) {
  auto session = std::make_unique<soci::session>(soci::sqlite3, ":memory:");
  sqlite_api::sqlite3*& connection = ConnectionOf(*session);
  sqlite_api::sqlite3_close(std::exchange(connection, nullptr));
  const int result = sqlite_api::sqlite3_open_v2(path.c_str(), &connection, flags | SQLITE_OPEN_NOMUTEX, system);
  if (result != SQLITE_OK) {
    throw soci::sqlite3_soci_error(sqlite_api::sqlite3_errstr(result), result);
  }
  sqlite_api::sqlite3_extended_result_codes(connection, 1);
  sqlite_api::sqlite3_busy_timeout(connection, kBusyMilliseconds);
  return session;
}

/// What the session does is interrupted and undone when the process is asked to end: a journal that it left beside the
/// file would have to be worked off by the next who opens it.
std::unique_ptr<soci::session> OpenToChange(const std::string& path) {
  std::unique_ptr<soci::session> session = Open(path, SQLITE_OPEN_READWRITE);
  sqlite_api::sqlite3* const connection = ConnectionOf(*session);
  const auto isAskedToEnd = [](void*) { return kvx::CDelayedEnd::IsWaitedFor() ? 1 : 0; };
  const auto waitForOthers = [](void*, int tries) {
    std::this_thread::sleep_for(std::chrono::milliseconds(kMillisecondsBetweenTries));
    return !kvx::CDelayedEnd::IsWaitedFor() && tries < kBusyMilliseconds / kMillisecondsBetweenTries ? 1 : 0;
  };
  sqlite_api::sqlite3_progress_handler(connection, kStepsBetweenLooks, isAskedToEnd, nullptr);
  sqlite_api::sqlite3_busy_handler(connection, waitForOthers, nullptr);
  return session;
}

/// What the session does is interrupted when the deadline for loading is over.
std::shared_ptr<soci::session> OpenToRead(const std::string& path) {
  std::shared_ptr<soci::session> session = Open(path, SQLITE_OPEN_READONLY);
  if (const auto deadline = kvx::CLoadDeadline::Get()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - kvx::CLoadDeadline::Clock::now());
    sqlite_api::sqlite3* const connection = ConnectionOf(*session);
    sqlite_api::sqlite3_busy_timeout(connection,
                                     static_cast<int>(std::min<std::int64_t>(left.count(), kBusyMilliseconds)));
    sqlite_api::sqlite3_progress_handler(
        connection, kStepsBetweenLooks, [](void*) { return kvx::CLoadDeadline::IsOver() ? 1 : 0; }, nullptr);
  }
  return session;
}

const SDatabaseDialect kDialect = {
    "",
    "INTEGER",
    "internal_name COLLATE NOCASE",
    " WITHOUT ROWID",
    "SELECT count(*) FROM sqlite_master WHERE type IN ('table', 'view') AND name = :name COLLATE NOCASE",
    "SELECT lower(name) FROM sqlite_master WHERE type = 'view'",
    {"PRAGMA query_only = ON", "PRAGMA trusted_schema = OFF", "BEGIN"},
    // With foreign keys on, dropping a table first deletes its rows, and with them those of others that refer to them.
    {"PRAGMA foreign_keys = OFF", "BEGIN IMMEDIATE"},
};

/// Makes SQLite look at the file: opening alone does not.
void ReadHeader(soci::session& session) {
  int count = 0;
  Execute(session, "SELECT count(*) FROM sqlite_master", soci::into(count));
}

/// The rows of other tables that refer to rows of the metamodel which are not there, in words for a user. A table
/// without row numbers gives no means to tell its rows apart.
std::set<std::string> DanglingReferences(soci::session& session, bool withUnnumbered) {
  const std::string ours = " COLLATE NOCASE IN (" + QuotedTableNames() + ")";
  const std::string query =
      "SELECT 'table ' || other.name || ', row ' || coalesce(fault.rowid, 'without number') || ': ' || (SELECT "
      "group_concat(\"from\", ', ') FROM pragma_foreign_key_list(other.name) WHERE id = fault.fkid) || ' refers to a "
      "row that table ' || fault.parent || ' would not have' FROM (SELECT DISTINCT tables.name FROM sqlite_master "
      "tables, pragma_foreign_key_list(tables.name) reference WHERE tables.type = 'table' AND NOT tables.name" +
      ours + " AND reference.\"table\"" + ours +
      ") other, pragma_foreign_key_check(other.name) fault WHERE fault.parent" + ours +
      (withUnnumbered ? "" : " AND fault.rowid IS NOT NULL");
  std::set<std::string> references;
  for (const std::vector<std::string>& row : Query(session, query, 1)) {
    references.insert(row.front());
  }
  return references;
}

/// SOCI puts the name of its function before what SQLite says.
std::string WithoutFunctionName(const std::string& text) {
  const std::size_t name = text.find("::");
  const std::size_t end = text.find(": ", name == std::string::npos ? 0 : name);
  return name == std::string::npos || end == std::string::npos ? text : text.substr(end + 2);
}

}  // namespace

CSqliteDatabase::CSqliteDatabase(std::string location, const std::string& path)
    : location_(std::move(location)), path_(std::filesystem::absolute(path)) {}

CSqliteDatabase::~CSqliteDatabase() = default;

SDatabaseDialect CSqliteDatabase::Dialect(soci::session& /*session*/) const {
  return kDialect;
}

std::function<void()> CSqliteDatabase::ReleaseReferences(soci::session& session) const {
  return [&session, before = DanglingReferences(session, false)] {
    for (const std::string& reference : DanglingReferences(session, true)) {
      if (before.count(reference) == 0) {
        throw SFailure{kvx::kFileError, reference,
                       "correct that row first, or store the metamodel in a database of its own"};
      }
    }
  };
}

std::vector<std::string> CSqliteDatabase::GetFiles() const {
  return {path_, path_ + "-wal", path_ + "-journal"};
}

bool CSqliteDatabase::Exists() const {
  struct stat status {};
  return stat(path_.c_str(), &status) == 0;
}

void CSqliteDatabase::RequireReadableFile() const {
  struct stat status {};
  if (stat(path_.c_str(), &status) != 0 || access(path_.c_str(), R_OK) != 0) {
    throw SFailure{kvx::kFileError, kvx::OpeningProblem(path_, errno),
                   "give the path of an SQLite database that you may read"};
  }
  if (!S_ISREG(status.st_mode)) {
    throw SFailure{kvx::kFileError, "not a regular file", "give the path of an SQLite database"};
  }
}

void CSqliteDatabase::RequireWholePages(soci::session& session) const {
  // SQLite takes what is missing of the last page for zeros.
  std::uintmax_t pageSize = 0;
  Execute(session, "PRAGMA page_size", soci::into(pageSize));
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path_, error);
  if (!error && pageSize != 0 && size % pageSize != 0) {
    throw SFailure{kvx::kMalformedDocument, "the file is truncated", "restore it from a copy"};
  }
}

void CSqliteDatabase::ReadRows(soci::session& session, const STable& table, const std::string& select,
                               const RowHandler& row) const {
  ReadSqliteRows(session, table, select, row);
}

void CSqliteDatabase::RequireSound(soci::session& session) const {
  // Of single tables it finds no pages that nobody points to any more, and of views nothing.
  const std::string finding = Query(session, "PRAGMA integrity_check", 1).at(0).front();
  if (finding != "ok") {
    FailDamaged("its integrity_check found: " + CStringHelper::ToVisible(finding));
  }
}

std::shared_ptr<soci::session> CSqliteDatabase::OpenForReading() {
  RequireReadableFile();
  auto session = OpenToRead(path_);
  try {
    ReadHeader(*session);
  } catch (const soci::sqlite3_soci_error& error) {
    if (error.result() != SQLITE_READONLY_ROLLBACK) {
      throw;
    }
    // A write was interrupted, and SQLite does not show the file until it is as it was before; that alone is done here.
    session.reset();
    ReadHeader(*Open(path_, SQLITE_OPEN_READWRITE));
    session = OpenToRead(path_);
  }
  RequireWholePages(*session);
  return session;
}

std::unique_ptr<CDatabaseQueries> CSqliteDatabase::OpenQueries(std::chrono::milliseconds limit) const {
  RequireReadableFile();
  try {
    return std::make_unique<CSqliteQueries>(path_, limit);
  } catch (const CSqliteConnection::SFailure& failure) {
    if (failure.code == SQLITE_READONLY_ROLLBACK) {
      throw SFailure{kvx::kFileError, "a change of the database was interrupted and has to be undone first",
                     "open it once with its own program"};
    }
    throw soci::sqlite3_soci_error(sqlite_api::sqlite3_errstr(failure.code), failure.code);
  }
}

std::unique_ptr<soci::session> CSqliteDatabase::OpenForWriting() {
  if (Exists()) {
    RequireReadableFile();
    const kvx::SFollowedPath followed = kvx::FollowLinks(path_);
    if (!followed.problem.empty()) {
      throw SFailure{kvx::kFileError, followed.problem, "give the path of the database itself"};
    }
    delayedEnd_ = std::make_unique<kvx::CDelayedEnd>();
    auto session = OpenToChange(followed.path);
    ReadHeader(*session);
    RequireWholePages(*session);
    return session;
  }
  newFile_ = std::make_unique<kvx::CTemporaryFile>(path_);
  auto session = Open(newFile_->GetPath(), SQLITE_OPEN_READWRITE, kWithoutLocks);
  // Whatever interrupts the writing, the file is dropped.
  Execute(*session, "PRAGMA journal_mode = OFF");
  Execute(*session, "PRAGMA synchronous = OFF");
  // Reading whole tables, as is done here, takes a twentieth less time than with SQLite's usual 4096 bytes.
  Execute(*session, "PRAGMA page_size = 8192");
  return session;
}

bool CSqliteDatabase::Publish() {
  delayedEnd_.reset();
  const std::unique_ptr<kvx::CTemporaryFile> file = std::move(newFile_);
  return file == nullptr || file->CommitNew();
}

SFailure CSqliteDatabase::Explain(const soci::soci_error& error) const {
  const auto* sqliteError = dynamic_cast<const soci::sqlite3_soci_error*>(&error);
  constexpr int kPrimaryCode = 0xFF;
  const int code = sqliteError == nullptr ? SQLITE_ERROR : sqliteError->result();
  if (code == SQLITE_NOMEM || code == SQLITE_IOERR_NOMEM) {
    throw std::bad_alloc();
  }
  switch (code & kPrimaryCode) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return {kvx::kFileError, "another program has locked the database for more than 5 seconds",
              "try again when that program is done"};
    case SQLITE_NOTADB:
      return {kvx::kMalformedDocument, "not an SQLite database", "give the path of an SQLite database"};
    case SQLITE_CORRUPT:
      return {kvx::kMalformedDocument, "the database is damaged or truncated", "restore it from a copy"};
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
    case SQLITE_AUTH:
      return {kvx::kFileError, "permission denied", "run as a user who may use the file and its directory"};
    case SQLITE_FULL:
    case SQLITE_IOERR:
      return {kvx::kFileError, WithoutFunctionName(error.get_error_message()), "check the disk and its free space"};
    default:
      return {kvx::kMalformedDocument, WithoutFunctionName(error.get_error_message())};
  }
}

}  // namespace metadb
