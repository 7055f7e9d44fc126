#include "upgrademeta2024/storage/MetaStorage2024.h"

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/DatabaseMetaStorage2024.h"
#include "upgrademeta2024/storage/DocumentMetaStorage2024.h"
#include "upgrademeta2024/storage/MetaLocation2024.h"
#include "upgrademeta2024/storage/PostgresqlDatabase2024.h"
#include "upgrademeta2024/storage/SqliteDatabase2024.h"

CMetaStorage2024::CMetaStorage2024() = default;

CMetaStorage2024::~CMetaStorage2024() = default;

void CMetaStorage2024::FailExisting() const {
  throw CKVXException(kvx::kFileError,
                      CStringHelper::ToVisible(Describe()) + ": exists already; give --replace to replace it");
}

void CMetaStorage2024::RequireNothingThere() {
  if (Exists()) {
    FailExisting();
  }
}

std::unique_ptr<CMetaStorage2024> CMetaStorage2024::Open(const std::string& location) {
  const SMetaLocation2024 parsed = ParseMetaLocation2024(location);
  switch (parsed.kind) {
    case SMetaLocation2024::kDocument:
      return std::make_unique<CDocumentMetaStorage2024>(parsed.name);
    case SMetaLocation2024::kSqlite:
      return std::make_unique<CDatabaseMetaStorage2024>(
          std::make_unique<metadb::CSqliteDatabase>(location, parsed.name));
    case SMetaLocation2024::kPostgresql:
      return std::make_unique<CDatabaseMetaStorage2024>(std::make_unique<metadb::CPostgresqlDatabase>(parsed.name));
    default:
      break;
  }
  // What follows a scheme may hold a password.
  const std::size_t scheme = location.find("://");
  const std::string shown = scheme == std::string::npos ? location : location.substr(0, scheme) + "://…";
  throw CKVXException(kvx::kMetamodelError,
                      CStringHelper::ToVisible(shown) +
                          ": not a metamodel location; give the path of a .json document, the path of a .db or "
                          ".sqlite database, sqlite3://PATH or postgresql://CONNECTION");
}
