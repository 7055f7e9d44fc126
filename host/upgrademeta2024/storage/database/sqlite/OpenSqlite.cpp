#include <memory>

#include "upgrademeta2024/storage/database/DatabaseMetaStorage.h"
#include "upgrademeta2024/storage/database/OpenDatabase.h"
#include "upgrademeta2024/storage/database/sqlite/SqliteDatabase.h"

CMetaStorage* OpenDatabase(const std::string& location, const std::string& name) {
  return std::make_unique<CDatabaseMetaStorage>(std::make_unique<metadb::CSqliteDatabase>(location, name)).release();
}
