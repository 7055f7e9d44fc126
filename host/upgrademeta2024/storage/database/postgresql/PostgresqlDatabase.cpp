#include "upgrademeta2024/storage/database/postgresql/PostgresqlDatabase.h"

#include <libpq-fe.h>
#include <soci/postgresql/soci-postgresql.h>

#include <sys/socket.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <future>
#include <set>
#include <system_error>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/database/DatabaseRows.h"
#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgrademeta2024/storage/database/Statements.h"
#include "upgrademeta2024/storage/database/postgresql/PostgresqlQueries.h"
#include "upgrademeta2024/storage/database/postgresql/PostgresqlRows.h"

namespace metadb {
namespace {

using namespace std::string_literals;
using Clock = kvx::CLoadDeadline::Clock;

constexpr const char* kScheme = "postgresql://";
constexpr const char* kHidden = "***";
/// In seconds. libpq itself waits for as long as the system does.
constexpr const char* kConnectTimeout = "10";

constexpr const char* kLockTimeout = "SET LOCAL lock_timeout = '5s'";

// Rows that a policy keeps from the user would be missed: the server is to refuse instead.
constexpr const char* kShowAllRows = "SET LOCAL row_security = off";

// An earlier schema of the search path may have a table of the same name as one of the metamodel's.
constexpr const char* kSchema =
    "coalesce((SELECT relnamespace::regnamespace FROM pg_class WHERE oid = to_regclass('metamodel')), "
    "to_regnamespace(quote_ident(current_schema())))";

PGconn* ConnectionOf(soci::session& session) {
  return static_cast<soci::postgresql_session_backend*>(session.get_backend())->conn_;
}

/// Cuts a session off when a deadline is over: for a server that says nothing libpq waits endlessly.
struct SWatchedSession {
  SWatchedSession(std::shared_ptr<soci::session> watched, Clock::time_point deadline) : session(std::move(watched)) {
    const int socket = PQsocket(ConnectionOf(*session));
    try {
      watch = std::async(std::launch::async, [socket, deadline, ended = end.get_future()] {
        if (ended.wait_until(deadline) == std::future_status::timeout) {
          shutdown(socket, SHUT_RDWR);
        }
      });
    } catch (const std::system_error&) {
      // No thread can be had. A server that answers at all still keeps to the time.
    }
  }
  ~SWatchedSession() { end.set_value(); }
  SWatchedSession(const SWatchedSession&) = delete;
  SWatchedSession& operator=(const SWatchedSession&) = delete;

  std::shared_ptr<soci::session> session;
  std::promise<void> end;
  // Ends before the session.
  std::future<void> watch;
};

std::uint64_t SecondsUntil(Clock::time_point time) {
  // A server takes no more than 24 days, 0 for endless.
  constexpr std::int64_t kMost = 1000000;
  const std::int64_t left = std::chrono::ceil<std::chrono::seconds>(time - Clock::now()).count();
  return static_cast<std::uint64_t>(std::clamp<std::int64_t>(left, 1, kMost));
}

bool IsKeywordForm(const std::string& words) {
  const std::size_t begin = words.find_first_not_of(' ');
  std::size_t end = begin;
  while (end < words.size() && (std::islower(static_cast<unsigned char>(words[end])) != 0 || words[end] == '_')) {
    ++end;
  }
  end = words.find_first_not_of(' ', end);
  return begin == std::string::npos || (end != std::string::npos && words[end] == '=');
}

/// libpq ends the password of a URI at the first "@" and takes no "/" in it: the rest would be taken for the host or
/// the database, and shown.
bool MayHoldUnquotedPassword(const std::string& words) {
  const std::size_t at = words.find('@');
  return at != std::string::npos && (at != words.rfind('@') || words.find('/') < at);
}

std::string Quote(const std::string& value) {
  if (!value.empty() && value.find_first_of(" '\\") == std::string::npos) {
    return value;
  }
  std::string quoted = "'";
  for (const char c : value) {
    quoted += c == '\'' || c == '\\' ? std::string("\\") + c : std::string(1, c);
  }
  return quoted + "'";
}

/// As a value of a URI.
std::string Encode(const std::string& value) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : value) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0) {
      encoded += c;
    } else {
      encoded += std::string("%") + kDigits[byte / 16] + kDigits[byte % 16];
    }
  }
  return encoded;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

/// What libpq says: SOCI puts sentences of its own before it.
std::string WithoutSociPreface(std::string text) {
  for (const std::string sentence :
       {"Cannot establish connection to the database.", "Fatal error.", "Connection failed."}) {
    if (const std::size_t at = text.find(sentence); at != std::string::npos) {
      text.erase(0, at + sentence.size());
    }
  }
  return text;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

/// Why no connection came about. libpq tells it of every address that it tried, and asks questions on lines of their
/// own, which begin with a tab; one sentence is left for each reason.
std::string ConnectionProblem(const std::string& text) {
  std::set<std::string> reasons;
  std::string problem;
  for (const std::string& line : Lines(text)) {
    if (line.empty() || line.front() == '\t') {
      continue;
    }
    const std::size_t reason = line.find(" failed: ");
    if (reasons.insert(reason == std::string::npos ? line : line.substr(reason)).second) {
      problem += (problem.empty() ? "" : "; ") + line;
    }
  }
  return problem;
}

}  // namespace

CPostgresqlDatabase::CPostgresqlDatabase(const std::string& words) {
  const bool isUri = !IsKeywordForm(words);
  const std::string given = isUri ? kScheme + words : words;
  const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(
      isUri && MayHoldUnquotedPassword(words) ? nullptr : PQconninfoParse(given.c_str(), nullptr), &PQconninfoFree);
  bool understood = options != nullptr;
  const char* const connectTimeout = std::getenv("PGCONNECT_TIMEOUT");
  connectTimeout_ = connectTimeout == nullptr ? kConnectTimeout : connectTimeout;
  connection_ = std::string(kScheme) + "?";
  for (const PQconninfoOption* option = options.get(); understood && option->keyword != nullptr; ++option) {
    if (option->val == nullptr) {
      continue;
    }
    const std::string value = option->val;
    // A URI without "@" has the password where the port belongs.
    understood = option->keyword != std::string("port") || value.find_first_not_of("0123456789,") == std::string::npos;
    // SOCI splits what it is given at spaces, quoted or not; a URI has none.
    if (option->keyword == "connect_timeout"s) {
      connectTimeout_ = value;
    } else {
      connection_ += option->keyword + "="s + Encode(value) + "&";
    }
    if (option->keyword == "host"s) {
      host_ = value;
    } else if (option->keyword == "dbname"s) {
      database_ = value;
    }
    const bool isSecret = option->dispchar[0] == '*';
    if (isSecret && !value.empty()) {
      secrets_.push_back(value);
    }
    description_ += (description_.empty() ? "" : " ") + std::string(option->keyword) + "=" +
                    (isSecret ? kHidden : Quote(CStringHelper::ToVisible(value)));
  }
  if (!understood) {
    // What libpq would say shows the words, and with them perhaps a password.
    throw CKVXException(kvx::kMetamodelError,
                        std::string(kScheme) +
                            "…: the connection words cannot be understood; write \"keyword=value keyword=value\" with "
                            "spaces in single quotes, or \"user:password@host:port/database\" with %XX for special "
                            "characters");
  }
  description_ = kScheme + description_;
}

CPostgresqlDatabase::~CPostgresqlDatabase() = default;

std::unique_ptr<soci::session> CPostgresqlDatabase::Connect(std::optional<Clock::time_point> deadline) const {
  std::string timeout = connectTimeout_;
  if (deadline) {
    const std::uint64_t left = SecondsUntil(*deadline);
    const std::uint64_t own = ParseNumber(timeout, kMaxInteger).value_or(0);
    timeout = std::to_string(own == 0 ? left : std::min(own, left));
  }
  auto session = std::make_unique<soci::session>(soci::postgresql, connection_ + "connect_timeout=" + Encode(timeout));
  PGconn* const connection = ConnectionOf(*session);
  // libpq would write the server's notices to standard error.
  PQsetNoticeProcessor(
      connection, [](void*, const char*) {}, nullptr);
  if (PQsetClientEncoding(connection, "UTF8") != 0) {
    throw soci::soci_error(PQerrorMessage(connection));
  }
  return session;
}

std::unique_ptr<soci::session> CPostgresqlDatabase::Open(std::optional<Clock::time_point> deadline) const {
  std::unique_ptr<soci::session> session = Connect(deadline);
  const PGconn* const connection = ConnectionOf(*session);
  NoteWhere(PQhost(connection), PQport(connection), PQdb(connection));
  return session;
}

void CPostgresqlDatabase::NoteWhere(const std::string& host, const std::string& port,
                                    const std::string& database) const {
  if (host != host_ || database != database_) {
    kvx::CFileNotes::Tell(
        CStringHelper::ToVisible(description_ + " is database " + database + " on host " + host + ", port " + port));
  }
}

std::shared_ptr<soci::session> CPostgresqlDatabase::OpenForReading() {
  const auto deadline = kvx::CLoadDeadline::Get();
  std::shared_ptr<soci::session> session = Open(deadline);
  if (!deadline) {
    return session;
  }
  const auto watched = std::make_shared<SWatchedSession>(session, *deadline);
  // A server whose connection is cut off would work on.
  Execute(*session, "SELECT set_config('statement_timeout', '" + std::to_string(SecondsUntil(*deadline)) +
                        "s', false) WHERE current_setting('statement_timeout') = '0'");
  return {watched, session.get()};
}

std::unique_ptr<soci::session> CPostgresqlDatabase::OpenForWriting() {
  return Open(std::nullopt);
}

std::unique_ptr<CDatabaseQueries> CPostgresqlDatabase::OpenQueries(std::chrono::milliseconds limit) const {
  return std::make_unique<CPostgresqlQueries>(
      Open(std::nullopt), [this] { return Connect(std::nullopt); }, limit);
}

SDatabaseDialect CPostgresqlDatabase::Dialect(soci::session& session) const {
  const std::string schema = Query(session, "SELECT coalesce("s + kSchema + "::text || '.', '')", 1).at(0).front();
  // The tables are locked before the transaction sees its moment: a metamodel that is replaced meanwhile is seen
  // either before or after, never as tables that are empty at that moment.
  const std::string lockTables = "LOCK TABLE " + Join(TableNames(schema)) + " IN ACCESS SHARE MODE";
  // Tables that do not exist yet cannot be locked: two writers could both find none and both create them.
  const std::string lockSchema =
      "SELECT pg_advisory_xact_lock(hashtext('upgradesrv metamodel'), hashtext("s + kSchema + "::text))";
  return {schema,
          "BIGINT",
          "lower(internal_name COLLATE \"C\")",
          "",
          "SELECT count(to_regclass(:name))",
          "SELECT relname FROM pg_class WHERE relkind IN ('v', 'm') AND relnamespace = "s + kSchema,
          {"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY", kLockTimeout, kShowAllRows, lockTables},
          {"BEGIN", kLockTimeout, lockSchema}};
}

std::function<void()> CPostgresqlDatabase::ReleaseReferences(soci::session& session) const {
  const std::string ours =
      "IN (SELECT oid FROM pg_class WHERE relnamespace = "s + kSchema + " AND relname IN (" + QuotedTableNames() + "))";
  const std::string query =
      "SELECT format('ALTER TABLE %s DROP CONSTRAINT %I', conrelid::regclass, conname), format('ALTER TABLE %s ADD "
      "CONSTRAINT %I %s', conrelid::regclass, conname, pg_get_constraintdef(oid)), format('ALTER TABLE %s VALIDATE "
      "CONSTRAINT %I', conrelid::regclass, conname) FROM pg_constraint WHERE "
      "contype = 'f' AND conparentid = 0 AND confrelid " +
      ours + " AND NOT conrelid " + ours;
  std::vector<std::string> release;
  std::vector<std::string> restore;
  for (const std::vector<std::string>& reference : Query(session, query, 3)) {
    release.push_back(reference[0]);
    restore.push_back(reference[1]);
    // Adding it has checked all rows, unless it has never been valid.
    restore.push_back(reference[2]);
  }
  Execute(session, release);
  return [&session, restore] { Execute(session, restore); };
}

void CPostgresqlDatabase::ReadRows(soci::session& session, const STable& table, const std::string& select,
                                   const RowHandler& row) const {
  ReadPostgresqlRows(session, table, select, row);
}

std::string CPostgresqlDatabase::OneLine(const std::string& text) const {
  std::string result;
  for (const std::string& line : Lines(text)) {
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin == std::string::npos) {
      continue;
    }
    // From here on the statement is shown.
    if (line.compare(begin, 5, "LINE ") == 0) {
      break;
    }
    result += (result.empty() ? "" : " ") + line.substr(begin);
  }
  for (const std::string& secret : secrets_) {
    ReplaceAll(result, secret, kHidden);
  }
  return result;
}

SFailure CPostgresqlDatabase::Explain(const soci::soci_error& error) const {
  const std::string text = WithoutSociPreface(error.get_error_message());
  const std::string problem = OneLine(text);
  const auto* serverError = dynamic_cast<const soci::postgresql_soci_error*>(&error);
  if (serverError == nullptr) {
    return {kvx::kFileError, OneLine(ConnectionProblem(text)),
            "check that the server runs and that host, port, database, user and password are right"};
  }
  const std::string state = serverError->sqlstate();
  const std::string stateClass = state.substr(0, 2);
  if (state == "55P03") {
    return {kvx::kFileError, "another program has locked the tables for more than 5 seconds",
            "try again when that program is done"};
  }
  if (state == "57014") {
    return {kvx::kFileError, "the server has ended the query: " + problem,
            "raise statement_timeout for the user, or try again"};
  }
  if (stateClass == "08" || stateClass == "57" || stateClass.find_first_not_of(" \0"s) == std::string::npos) {
    return {kvx::kFileError, "the connection was lost: " + problem, "check the server, then try again"};
  }
  if (state == "3F000") {
    return {kvx::kFileError, problem, "create the schema that search_path names, or correct search_path"};
  }
  if (state == "42501" && problem.find("must be owner of") != std::string::npos) {
    return {kvx::kFileError, problem, "run as the owner of the tables"};
  }
  if (state == "42501" && problem.find("row-level security") != std::string::npos) {
    return {kvx::kFileError, "the server would keep rows from this user: " + problem,
            "give the user the right BYPASSRLS, or switch the row-level security of the table off"};
  }
  if (state == "42501") {
    return {kvx::kFileError, problem, "grant the user the rights on the schema and its tables"};
  }
  if (state == "23503") {
    return {kvx::kFileError, "another table refers to a row that would not be there: " + problem,
            "correct the row of that table first, or store the metamodel in a schema of its own"};
  }
  if (stateClass == "42") {
    return {kvx::kMalformedDocument, problem};
  }
  return {kvx::kFileError, problem, "see the server's log"};
}

}  // namespace metadb
