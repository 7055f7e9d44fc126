#include "upgrademeta2024/storage/MetaStorage.h"

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaDictionary2024.h"

CMetaStorage::CMetaStorage() = default;

CMetaStorage::~CMetaStorage() = default;

std::shared_ptr<CMetaDictionary2024> CMetaStorage::Load() {
  CFaultTaker faults;
  std::shared_ptr<CMetaDictionary2024> dictionary = LoadElements(faults);
  NoteIfEmpty(*dictionary);
  return dictionary;
}

SMetaFaults CMetaStorage::Check() {
  SMetaFaults found;
  CFaultTaker faults(found);
  try {
    const std::shared_ptr<CMetaDictionary2024> dictionary = LoadElements(faults);
    if (found.count == 0) {
      NoteIfEmpty(*dictionary);
    }
  } catch (const CKVXException& error) {
    if (error.GetCode() != kvx::kMalformedDocument) {
      throw;
    }
    faults.Take([&error] { return std::string(error.what()); });
    found.isWhole = false;
  }
  return found;
}

void CMetaStorage::NoteIfEmpty(const CMetaDictionary2024& dictionary) const {
  if (dictionary.GetClasses().empty() && dictionary.GetLinks().empty() && dictionary.GetBehaviors().empty()) {
    kvx::CFileNotes::Tell(CStringHelper::ToVisible(Describe()) + ": the metamodel has no classes, links or behaviors");
  }
}

void CMetaStorage::FailExisting() const {
  throw CKVXException(kvx::kMetamodelExists, CStringHelper::ToVisible(Describe()) + ": exists already");
}

std::unique_ptr<CDatabaseQueries> CMetaStorage::OpenQueries(std::chrono::milliseconds /*limit*/) {
  throw CKVXException(kvx::kFileError, CStringHelper::ToVisible(Describe()) +
                                           ": not a database; give the path of a .db or .sqlite database, "
                                           "sqlite3://PATH or postgresql://CONNECTION");
}

void CMetaStorage::RequireNothingThere() {
  if (Exists()) {
    FailExisting();
  }
}
