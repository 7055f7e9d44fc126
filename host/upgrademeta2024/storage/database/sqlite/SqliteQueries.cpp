#include "upgrademeta2024/storage/database/sqlite/SqliteQueries.h"

#include <sqlite3.h>

#include <array>
#include <fstream>
#include <thread>
#include <utility>

namespace metadb {
namespace {

// Opening is no query: however short the limit, it waits as long as its message says.
constexpr std::chrono::milliseconds kMostWait(5000);

/// Whether the database has a log beside it while it is in use, and nobody uses it now. Whoever reads it as usual makes
/// that log, and the means to share it, and may leave both behind. Not to be asked while the process has the file open:
/// the system would take the locks away.
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

/// What `step` gives; nothing where SQLite refuses.
template <typename Step>
auto TryTo(const Step& step) -> std::optional<decltype(step())> {
  try {
    return step();
  } catch (const CSqliteConnection::SFailure&) {
    return std::nullopt;
  }
}

}  // namespace

/// Whether it sees one moment is asked of the first.
class CSqliteQueries::CSecond : public CDatabaseQueries {
 public:
  explicit CSecond(Connection connection) : connection_(std::move(connection)) {}

  EKind GetKind() const override { return kSqlite; }
  std::unique_ptr<CDatabaseQueries> OpenSecond() override { return nullptr; }
  SDatabaseAnswer Query(const std::string& query) override { return connection_->Query(query); }

 private:
  Connection connection_;
};

CSqliteQueries::CSqliteQueries(const std::string& path, std::chrono::milliseconds limit) : path_(path), limit_(limit) {
  if (IsLeftAloneWithLog(path)) {
    before_.emplace();
    if (stat(path.c_str(), &*before_) != 0) {
      throw CSqliteConnection::SFailure{SQLITE_CANTOPEN};
    }
  }
  // Where nobody has changed anything since before the first began until after the second has begun, both see the same.
  // The second never waits: that might be for somebody who waits for the first.
  std::optional<std::string> version;
  if (std::thread::hardware_concurrency() > 1) {
    version = TryTo([this] {
      second_ = Open(std::chrono::milliseconds(0));
      return second_->DataVersion();
    });
  }
  connection_ = Open(kMostWait);
  connection_->BeginReading();
  const auto versionNow = [this] {
    second_->BeginReading();
    return second_->DataVersion();
  };
  if (!version || TryTo(versionNow) != version) {
    second_.reset();
  }
}

CSqliteQueries::~CSqliteQueries() = default;

CSqliteQueries::Connection CSqliteQueries::Open(std::chrono::milliseconds wait) const {
  return std::make_unique<CSqliteConnection>(path_, before_.has_value(), limit_, wait);
}

std::unique_ptr<CDatabaseQueries> CSqliteQueries::OpenSecond() {
  return second_ == nullptr ? nullptr : std::make_unique<CSecond>(std::move(second_));
}

bool CSqliteQueries::IsOfOneMoment() const {
  struct stat now {};
  return !before_ || (stat(path_.c_str(), &now) == 0 && IsSameContent(*before_, now));
}

}  // namespace metadb
