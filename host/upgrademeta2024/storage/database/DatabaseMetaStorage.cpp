#include "upgrademeta2024/storage/database/DatabaseMetaStorage.h"

#include <string>
#include <utility>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/LoadDeadline.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/database/Database.h"
#include "upgrademeta2024/storage/database/DatabaseMetaReader.h"
#include "upgrademeta2024/storage/database/DatabaseMetaWriter.h"
#include "upgrademeta2024/storage/database/DatabaseRows.h"
#include "upgrademeta2024/storage/database/DatabaseSchema.h"

namespace {

constexpr const char* kStoreElsewhere = "remove what is in the way, or store the metamodel in another place";

std::string Message(const metadb::CDatabase& database, const std::string& problem) {
  return CStringHelper::ToVisible(database.Describe() + ": " + problem);
}

/// Runs an operation on a database and turns its failures into one message. `activity` is what could not be done.
template <typename Operation>
auto Run(const metadb::CDatabase& database, const std::string& activity, const std::string& wayOut,
         const Operation& operation) {
  const auto fail = [&](std::uint32_t code, const std::string& message) {
    return CKVXException(code, Message(database, message));
  };
  const auto explain = [&](const metadb::SFailure& failure) {
    return fail(failure.code,
                activity + ": " + failure.problem + "; " + (failure.wayOut.empty() ? wayOut : failure.wayOut));
  };
  try {
    return operation();
  } catch (const metadb::SContentError& error) {
    throw fail(kvx::kMalformedDocument, error.message);
  } catch (const metadb::SFailure& failure) {
    throw explain(failure);
  } catch (const soci::soci_error& error) {
    throw explain(database.Explain(error));
  }
}

/// Opens a database for reading and runs an operation on the session, as long as loading may take.
template <typename Operation>
auto Read(metadb::CDatabase& database, const std::string& activity, const std::string& wayOut,
          const Operation& operation) {
  return Run(database, activity, wayOut, [&] {
    const auto requireTime = [] {
      if (kvx::CLoadDeadline::IsOver()) {
        throw metadb::SFailure{kvx::kFileError, kvx::CLoadDeadline::kOver, "allow more time"};
      }
    };
    requireTime();
    try {
      const std::shared_ptr<soci::session> session = database.OpenForReading();
      return operation(*session);
    } catch (const soci::soci_error&) {
      requireTime();
      throw;
    }
  });
}

}  // namespace

CDatabaseMetaStorage::CDatabaseMetaStorage(std::unique_ptr<metadb::CDatabase> database)
    : database_(std::move(database)) {}

CDatabaseMetaStorage::~CDatabaseMetaStorage() = default;

std::vector<std::string> CDatabaseMetaStorage::GetFiles() const {
  return database_->GetFiles();
}

std::string CDatabaseMetaStorage::Describe() const {
  return database_->Describe();
}

std::shared_ptr<CMetaDictionary2024> CDatabaseMetaStorage::LoadElements(CFaultTaker& faults) {
  CLoadProgress progress(Describe(), CLoadProgress::kRows);
  metadb::SReading reading = {"cannot be opened", metadb::kStoreAnew};
  const auto onFault = [&](const std::string& message) { faults.Take([&] { return Message(*database_, message); }); };
  return Read(*database_, reading.activity, reading.wayOut, [&](soci::session& session) {
    return metadb::ReadMetamodel(session, *database_, reading, progress, onFault);
  });
}

bool CDatabaseMetaStorage::Exists() {
  return database_->Exists() && Read(*database_, "cannot be opened", kStoreElsewhere, [&](soci::session& session) {
           return metadb::HasTables(session, database_->Dialect(session));
         });
}

void CDatabaseMetaStorage::Save(const CMetaDictionary2024& dictionary, EExistingMeta existing) {
  const std::string activity = "cannot be stored, what was there is unchanged";
  const bool isWritten = Run(*database_, activity, kStoreElsewhere, [&] {
    const std::unique_ptr<soci::session> session = database_->OpenForWriting();
    return metadb::WriteMetamodel(*session, *database_, dictionary, existing);
  });
  if (isWritten && Run(*database_, activity, kStoreElsewhere, [&] { return database_->Publish(); })) {
    return;
  }
  if (existing == EExistingMeta::kRefuse && (!isWritten || Exists())) {
    FailExisting();
  }
  Run(*database_, activity, "try again", []() -> void {
    throw metadb::SFailure{kvx::kFileError, "another program has created the file meanwhile"};
  });
}

std::unique_ptr<CDatabaseQueries> CDatabaseMetaStorage::OpenQueries(std::chrono::milliseconds limit) {
  return Run(*database_, "cannot be opened", "give the database of the installation",
             [&] { return database_->OpenQueries(limit); });
}
