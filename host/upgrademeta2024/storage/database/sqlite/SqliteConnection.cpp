#include "upgrademeta2024/storage/database/sqlite/SqliteConnection.h"

#include <sqlite3.h>

#include <cctype>
#include <new>

#include "kvxsptstring/StringHelper.h"

namespace metadb {
namespace {

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

}  // namespace

CSqliteConnection::CSqliteConnection(const std::string& path, bool isWithoutLocks, std::chrono::milliseconds limit,
                                     std::chrono::milliseconds wait)
    : limit_(limit), connection_(nullptr, &sqlite3_close) {
  sqlite3* opened = nullptr;
  const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | (isWithoutLocks ? SQLITE_OPEN_URI : 0);
  const int result = sqlite3_open_v2((isWithoutLocks ? AsUri(path) : path).c_str(), &opened, flags, nullptr);
  connection_.reset(opened);
  if (result != SQLITE_OK) {
    throw SFailure{result};
  }
  sqlite3_extended_result_codes(opened, 1);
  sqlite3_busy_timeout(opened, static_cast<int>(wait.count()));
  const auto isOver = [](void* deadline) { return Clock::now() >= *static_cast<Clock::time_point*>(deadline) ? 1 : 0; };
  sqlite3_progress_handler(opened, kStepsBetweenLooks, isOver, &deadline_);
  Execute("PRAGMA query_only = ON");
  Execute("PRAGMA trusted_schema = OFF");
}

CSqliteConnection::~CSqliteConnection() = default;

void CSqliteConnection::BeginReading() {
  Execute("BEGIN");
  // This looks at the file, which begins the transaction.
  Execute("SELECT count(*) FROM sqlite_master");
}

std::string CSqliteConnection::DataVersion() {
  return Execute("PRAGMA data_version").rows.at(0).at(0).value_or("");
}

SDatabaseAnswer CSqliteConnection::Query(const std::string& query) {
  SDatabaseAnswer answer;
  deadline_ = Clock::now() + limit_;
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

SDatabaseAnswer CSqliteConnection::Execute(const std::string& statement) {
  SDatabaseAnswer answer;
  deadline_ = Clock::time_point::max();
  if (const int code = Read(statement, answer); code != SQLITE_DONE) {
    throw SFailure{code};
  }
  return answer;
}

int CSqliteConnection::Read(const std::string& query, SDatabaseAnswer& answer) {
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

}  // namespace metadb
