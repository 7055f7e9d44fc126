#include "upgrademeta2024/storage/database/Statements.h"

namespace metadb {

void Execute(soci::session& session, const std::vector<std::string>& statements) {
  for (const std::string& statement : statements) {
    Execute(session, statement);
  }
}

std::vector<std::vector<std::string>> Query(soci::session& session, const std::string& text, std::size_t columns) {
  std::vector<std::string> texts(columns);
  std::vector<soci::indicator> indicators(columns, soci::i_ok);
  soci::statement statement(session);
  statement.alloc();
  for (std::size_t i = 0; i < columns; ++i) {
    statement.exchange(soci::into(texts[i], indicators[i]));
  }
  statement.prepare(text, soci::details::st_repeatable_query);
  statement.define_and_bind();
  statement.execute();
  std::vector<std::vector<std::string>> rows;
  while (statement.fetch()) {
    for (std::size_t i = 0; i < columns; ++i) {
      if (indicators[i] == soci::i_null) {
        texts[i] = "NULL";
      }
    }
    rows.push_back(texts);
  }
  return rows;
}

}  // namespace metadb
