#pragma once

#include <soci/soci.h>

#include <cstddef>
#include <string>
#include <vector>

/// Statements that are whole, and their answers. What SOCI is given with << passes through a stream, which keeps a
/// failed allocation to itself; it would then execute as much of it as there is.
namespace metadb {

/// Makes a statement ready to be executed; `exchange` are soci::into and soci::use.
template <typename... Exchange>
void Prepare(soci::statement& statement, const std::string& text, const Exchange&... exchange) {
  statement.alloc();
  (statement.exchange(exchange), ...);
  statement.prepare(text, soci::details::st_one_time_query);
  statement.define_and_bind();
}

/// Executes a statement and takes the first row of what it answers. Not for texts: SQLite tells only with the row after
/// it that there was no memory for one.
template <typename... Exchange>
void Execute(soci::session& session, const std::string& text, const Exchange&... exchange) {
  soci::statement statement(session);
  Prepare(statement, text, exchange...);
  statement.execute(/*withDataExchange=*/true);
}

void Execute(soci::session& session, const std::vector<std::string>& statements);

/// All rows of a short answer as texts, "NULL" where there is no value.
std::vector<std::vector<std::string>> Query(soci::session& session, const std::string& text, std::size_t columns);

}  // namespace metadb
