#include "storages/ServerSchema.h"

#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace bench {
namespace {

void Execute(const std::string& statement) {
  soci::session session(soci::postgresql, "");
  session << "SET client_min_messages TO error";
  session << statement;
}

}  // namespace

bool HasServer() {
  return std::getenv("PGHOST") != nullptr;
}

void RequireServer() {
  Execute("SELECT 1");
}

CServerSchema::CServerSchema(const std::string& name)
    : name_("upgradesrv_suites_" + std::to_string(getpid()) + "_" + name) {
  Execute("CREATE SCHEMA " + name_);
}

CServerSchema::~CServerSchema() {
  try {
    Execute("DROP SCHEMA " + name_ + " CASCADE");
  } catch (const soci::soci_error& error) {
    std::cerr << "schema " << name_ << " is left: " << error.what() << '\n';
  }
}

std::string CServerSchema::Location() const {
  return "postgresql://options=-csearch_path=" + name_;
}

}  // namespace bench
