#pragma once

#include <libpq-fe.h>
#include <soci/soci.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "upgrademeta2024/storage/DatabaseQueries.h"

namespace metadb {

/// A database of a PostgreSQL server that is asked.
class CPostgresqlQueries : public CDatabaseQueries {
 public:
  using Connect = std::function<std::unique_ptr<soci::session>()>;

  /// A query takes no longer than `limit`, nor than the server allows the user. `connect` gives further connections to
  /// the same server. `snapshot` is the server's name for the moment that is to be seen; empty for the present one.
  /// Throws soci::soci_error, as `connect` does.
  CPostgresqlQueries(std::unique_ptr<soci::session> session, Connect connect, std::chrono::milliseconds limit,
                     const std::string& snapshot = "");
  ~CPostgresqlQueries() override;

  EKind GetKind() const override { return kPostgresql; }
  std::unique_ptr<CDatabaseQueries> OpenSecond() override;
  SDatabaseAnswer Query(const std::string& query) override;

 private:
  using Result = std::unique_ptr<PGresult, void (*)(PGresult*)>;

  void BeginReading(const std::string& snapshot);
  /// Null when the server says nothing for much longer than a query may take.
  Result Execute(const std::string& statement);
  void ExecuteFirst(const std::string& statement);
  SDatabaseAnswer Explain(const PGresult* result);
  SDatabaseAnswer Lose(const std::string& problem);

  Connect connect_;
  std::unique_ptr<soci::session> session_;
  PGconn* connection_;
  std::chrono::milliseconds limit_;
  // Empty while there is a connection.
  std::string lost_;
};

}  // namespace metadb
