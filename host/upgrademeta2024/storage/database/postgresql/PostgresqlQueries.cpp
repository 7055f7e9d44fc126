#include "upgrademeta2024/storage/database/postgresql/PostgresqlQueries.h"

#include <poll.h>
#include <soci/postgresql/soci-postgresql.h>

#include <algorithm>
#include <array>
#include <new>
#include <string_view>
#include <utility>

#include "kvxsptstring/StringHelper.h"

namespace metadb {
namespace {

using Clock = std::chrono::steady_clock;

/// How much longer than the server itself is waited for it.
constexpr std::chrono::seconds kGrace{5};

bool IsAnswered(PGconn* connection, Clock::time_point deadline) {
  while (PQisBusy(connection) != 0) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) {
      return false;
    }
    constexpr std::int64_t kMost = 1000000;
    pollfd socket = {PQsocket(connection), POLLIN, 0};
    // A signal that interrupts it makes it look again.
    static_cast<void>(poll(&socket, 1, static_cast<int>(std::min(left, kMost))));
    if (socket.revents != 0 && PQconsumeInput(connection) == 0) {
      return true;
    }
  }
  return true;
}

std::string FieldOf(const PGresult* result, int field) {
  const char* const text = PQresultErrorField(result, field);
  return text != nullptr ? text : "";
}

/// Whether the server's message on an error speaks of names, rights and means only. What it says of data, and what the
/// functions of views say, may hold stored values.
bool IsMessageWithoutValues(const std::string& state) {
  constexpr std::array<std::string_view, 11> kClasses = {"08", "0A", "25", "28", "40", "42",
                                                         "53", "54", "55", "57", "58"};
  const auto isOfClass = [&state](std::string_view name) { return state.rfind(name, 0) == 0; };
  return std::any_of(kClasses.begin(), kClasses.end(), isOfClass);
}

bool IsFailure(const PGresult* result) {
  const ExecStatusType status = PQresultStatus(result);
  return status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK;
}

}  // namespace

CPostgresqlQueries::CPostgresqlQueries(std::unique_ptr<soci::session> session, Connect connect,
                                       std::chrono::milliseconds limit, const std::string& snapshot)
    : connect_(std::move(connect)),
      session_(std::move(session)),
      connection_(static_cast<soci::postgresql_session_backend*>(session_->get_backend())->conn_),
      limit_(limit) {
  BeginReading(snapshot);
}

void CPostgresqlQueries::BeginReading(const std::string& snapshot) {
  const std::string milliseconds = std::to_string(limit_.count());
  ExecuteFirst("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
  if (!snapshot.empty()) {
    ExecuteFirst("SET TRANSACTION SNAPSHOT '" + snapshot + "'");
  }
  // This sees the moment that all else sees.
  ExecuteFirst("SELECT set_config('statement_timeout', '" + milliseconds +
               "', true) FROM pg_settings WHERE name = 'statement_timeout' AND (setting = '0' OR setting::bigint > " +
               milliseconds + ")");
}

std::unique_ptr<CDatabaseQueries> CPostgresqlQueries::OpenSecond() {
  try {
    const Result exported = Execute("SELECT pg_export_snapshot()");
    if (exported == nullptr || IsFailure(exported.get())) {
      // That has ended the transaction.
      ExecuteFirst("ROLLBACK");
      BeginReading("");
      return nullptr;
    }
    return std::make_unique<CPostgresqlQueries>(connect_(), connect_, limit_, PQgetvalue(exported.get(), 0, 0));
  } catch (const soci::soci_error&) {
    // The user may have no second connection. Where the first is lost too the next query says so.
    return nullptr;
  }
}

CPostgresqlQueries::~CPostgresqlQueries() = default;

CPostgresqlQueries::Result CPostgresqlQueries::Execute(const std::string& statement) {
  Result last(nullptr, &PQclear);
  const auto deadline = Clock::now() + limit_ + kGrace;
  if (PQsendQuery(connection_, statement.c_str()) == 0) {
    return last;
  }
  while (IsAnswered(connection_, deadline)) {
    Result result(PQgetResult(connection_), &PQclear);
    if (result == nullptr) {
      return last;
    }
    if (last == nullptr || !IsFailure(last.get())) {
      last = std::move(result);
    }
  }
  return {nullptr, &PQclear};
}

void CPostgresqlQueries::ExecuteFirst(const std::string& statement) {
  const Result result = Execute(statement);
  if (result == nullptr || IsFailure(result.get())) {
    throw soci::postgresql_soci_error(PQerrorMessage(connection_), FieldOf(result.get(), PG_DIAG_SQLSTATE).c_str());
  }
}

SDatabaseAnswer CPostgresqlQueries::Query(const std::string& query) {
  if (!lost_.empty()) {
    return {SDatabaseAnswer::kLost, {}, lost_};
  }
  const Result savepoint = Execute("SAVEPOINT before_query");
  if (savepoint == nullptr || IsFailure(savepoint.get())) {
    return Explain(savepoint.get());
  }
  const Result result = Execute(query);
  if (result == nullptr || IsFailure(result.get())) {
    SDatabaseAnswer answer = Explain(result.get());
    if (answer.outcome != SDatabaseAnswer::kLost) {
      const Result undone = Execute("ROLLBACK TO before_query");
      if (undone == nullptr || IsFailure(undone.get())) {
        return Explain(undone.get());
      }
    }
    return answer;
  }
  SDatabaseAnswer answer;
  const int rows = PQntuples(result.get());
  const int columns = PQnfields(result.get());
  answer.rows.resize(static_cast<std::size_t>(rows));
  for (int i = 0; i < rows; ++i) {
    for (int j = 0; j < columns; ++j) {
      std::optional<std::string> value;
      if (PQgetisnull(result.get(), i, j) == 0) {
        value = PQgetvalue(result.get(), i, j);
      }
      answer.rows[static_cast<std::size_t>(i)].push_back(std::move(value));
    }
  }
  const Result released = Execute("RELEASE before_query");
  if (released == nullptr || IsFailure(released.get())) {
    return Explain(released.get());
  }
  return answer;
}

SDatabaseAnswer CPostgresqlQueries::Explain(const PGresult* result) {
  if (PQstatus(connection_) != CONNECTION_OK) {
    return Lose(PQerrorMessage(connection_));
  }
  if (result == nullptr) {
    return Lose("the server does not answer");
  }
  const std::string state = FieldOf(result, PG_DIAG_SQLSTATE);
  const std::string problem =
      IsMessageWithoutValues(state)
          ? CStringHelper::ToVisible(FieldOf(result, PG_DIAG_MESSAGE_PRIMARY))
          : "the server's error " + state + ", whose message is left out because it may hold a stored value";
  if (state == "57014") {
    return {SDatabaseAnswer::kOutOfTime, {}, problem};
  }
  return {state == "42501" ? SDatabaseAnswer::kDenied : SDatabaseAnswer::kFailed, {}, problem};
}

SDatabaseAnswer CPostgresqlQueries::Lose(const std::string& problem) {
  const std::size_t end = problem.find('\n');
  lost_ = "the connection was lost: " + CStringHelper::ToVisible(problem.substr(0, end));
  return {SDatabaseAnswer::kLost, {}, lost_};
}

}  // namespace metadb
