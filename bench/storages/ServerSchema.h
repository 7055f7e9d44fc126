#pragma once

#include <string>

namespace bench {

/// Whether libpq's environment variables name a PostgreSQL server.
bool HasServer();

/// Connects once. At the end of the process libpq's TLS library is torn down before whatever static object is older
/// than the first connection, which then cannot connect any more.
void RequireServer();

/// A schema of that server for one metamodel, gone with all that it holds at the end of its scope: whatever else the
/// database holds stays.
class CServerSchema {
 public:
  /// `name` tells the schemas of a process apart.
  explicit CServerSchema(const std::string& name);
  ~CServerSchema();
  CServerSchema(const CServerSchema&) = delete;
  CServerSchema& operator=(const CServerSchema&) = delete;

  /// The metamodel's location.
  std::string Location() const;

 private:
  std::string name_;
};

}  // namespace bench
