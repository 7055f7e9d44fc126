#pragma once

#include <libpq-fe.h>
#include <soci/soci.h>

#include <chrono>
#include <memory>
#include <string>

#include "upgrademeta2024/storage/DatabaseQueries.h"

namespace metadb {

/// A database of a PostgreSQL server that is asked.
class CPostgresqlQueries : public CDatabaseQueries {
 public:
  /// A query takes no longer than `limit`, nor than the server allows the user. Throws soci::soci_error.
  CPostgresqlQueries(std::unique_ptr<soci::session> session, std::chrono::milliseconds limit);
  ~CPostgresqlQueries() override;

  EKind GetKind() const override { return kPostgresql; }
  SDatabaseAnswer Query(const std::string& query) override;

 private:
  using Result = std::unique_ptr<PGresult, void (*)(PGresult*)>;

  /// Null when the server says nothing for much longer than a query may take.
  Result Execute(const std::string& statement);
  void ExecuteFirst(const std::string& statement);
  SDatabaseAnswer Explain(const PGresult* result);
  SDatabaseAnswer Lose(const std::string& problem);

  std::unique_ptr<soci::session> session_;
  PGconn* connection_;
  std::chrono::milliseconds limit_;
  // Empty while there is a connection.
  std::string lost_;
};

}  // namespace metadb
