#include "upgrademeta2024/storage/database/sqlite/SqliteQueries.h"

#include <sqlite3.h>

#include <array>
#include <cctype>
#include <fstream>
#include <new>

#include "kvxsptstring/StringHelper.h"

namespace metadb {
namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr int kStepsBetweenLooks = 1000;

std::string AsUri(const std::string& path) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string uri = "file:";
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0 || c == '/') {
      uri += c;
    } else {
      uri += '%';
      uri += kDigits[byte / 16];
      uri += kDigits[byte % 16];
    }
  }
  return uri + "?immutable=1";
}

/// Whether the database has a log beside it while it is in use, and nobody uses it now. Whoever reads it as usual makes
/// that log, and the means to share it, and may leave both behind.
bool IsLeftAloneWithLog(const std::string& path) {
  constexpr std::size_t kVersionAt = 18;
  std::array<char, 20> header{};
  std::ifstream file(path, std::ios::binary);
  struct stat log {};
  return file.read(header.data(), header.size()) && header.at(kVersionAt) == 2 && header.at(kVersionAt + 1) == 2 &&
         stat((path + "-wal").c_str(), &log) != 0;
}

bool IsSameContent(const struct stat& a, const struct stat& b) {
  return a.st_ino == b.st_ino && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

}  // namespace

CSqliteQueries::CSqliteQueries(const std::string& path, std::chrono::milliseconds limit)
    : path_(path), limit_(limit), connection_(nullptr, &sqlite3_close) {
  if (IsLeftAloneWithLog(path)) {
    before_.emplace();
    if (stat(path.c_str(), &*before_) != 0) {
      throw SOpenFailure{SQLITE_CANTOPEN};
    }
  }
  sqlite3* opened = nullptr;
  const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | (before_ ? SQLITE_OPEN_URI : 0);
  const int result = sqlite3_open_v2((before_ ? AsUri(path) : path).c_str(), &opened, flags, nullptr);
  connection_.reset(opened);
  if (result != SQLITE_OK) {
    throw SOpenFailure{result};
  }
  sqlite3_extended_result_codes(opened, 1);
  // Opening is no query: however short the limit, it waits as long as its message says.
  sqlite3_busy_timeout(opened, kBusyMilliseconds);
  // The last one looks at the file, which begins the transaction.
  for (const char* const statement :
       {"PRAGMA query_only = ON", "PRAGMA trusted_schema = OFF", "BEGIN", "SELECT count(*) FROM sqlite_master"}) {
    SDatabaseAnswer answer;
    if (const int code = Read(statement, answer); code != SQLITE_DONE) {
      throw SOpenFailure{code};
    }
  }
  const auto isOver = [](void* deadline) { return Clock::now() >= *static_cast<Clock::time_point*>(deadline) ? 1 : 0; };
  sqlite3_progress_handler(opened, kStepsBetweenLooks, isOver, &deadline_);
}

CSqliteQueries::~CSqliteQueries() = default;

SDatabaseAnswer CSqliteQueries::Query(const std::string& query) {
  SDatabaseAnswer answer;
  const int code = Read(query, answer);
  if (code == SQLITE_DONE) {
    return answer;
  }
  if (code == SQLITE_NOMEM || code == SQLITE_IOERR_NOMEM) {
    throw std::bad_alloc();
  }
  return {code == SQLITE_INTERRUPT ? SDatabaseAnswer::kOutOfTime : SDatabaseAnswer::kFailed,
          {},
          CStringHelper::ToVisible(sqlite3_errmsg(connection_.get()))};
}

int CSqliteQueries::Read(const std::string& query, SDatabaseAnswer& answer) {
  deadline_ = Clock::now() + limit_;
  sqlite3_stmt* prepared = nullptr;
  const int result = sqlite3_prepare_v2(connection_.get(), query.c_str(), -1, &prepared, nullptr);
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, &sqlite3_finalize);
  if (result != SQLITE_OK) {
    return result;
  }
  const int columns = sqlite3_column_count(prepared);
  int step = sqlite3_step(prepared);
  for (; step == SQLITE_ROW; step = sqlite3_step(prepared)) {
    auto& row = answer.rows.emplace_back();
    for (int i = 0; i < columns; ++i) {
      if (sqlite3_column_type(prepared, i) == SQLITE_NULL) {
        row.emplace_back();
        continue;
      }
      const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, i));
      if (text == nullptr) {
        return SQLITE_NOMEM;
      }
      row.emplace_back(std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(prepared, i))));
    }
  }
  return step;
}

bool CSqliteQueries::IsOfOneMoment() const {
  struct stat now {};
  return !before_ || (stat(path_.c_str(), &now) == 0 && IsSameContent(*before_, now));
}

}  // namespace metadb
