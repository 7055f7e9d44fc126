// Loading from a database ends when the time for it is over, whatever the database does.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <soci/soci.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <string>
#include <thread>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptfile/LoadDeadline.h"
#include "support/Error.h"
#include "support/MetaText.h"
#include "support/Process.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/LargeMetamodel.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgrademeta2024/storage/database/Proxy.h"

namespace test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using Clock = kvx::CLoadDeadline::Clock;

class DatabaseDeadlineTest : public testing::TestWithParam<EStorage> {
 protected:
  DatabaseDeadlineTest() { Save(); }
  ~DatabaseDeadlineTest() override { kvx::CLoadDeadline::Set(std::nullopt); }

  void Save() const { OpenMetaStorage(storage_.Location())->Save(*sample_); }
  std::string Loaded() const { return TextOf(*OpenMetaStorage(storage_.Location())->Load()); }

  /// Loads with `limit` as time for it, and expects it to be over soon after that.
  static void ExpectLate(std::chrono::milliseconds limit, const std::string& location, const std::string& activity) {
    const Clock::time_point begin = Clock::now();
    kvx::CLoadDeadline::Set(limit);
    const SError error = ErrorOf([&] { OpenMetaStorage(location)->Load(); });
    EXPECT_LT(Clock::now() - begin, limit + 4s) << "other waits take 5 seconds and more";
    EXPECT_EQ(error.code, kvx::kFileError);
    EXPECT_THAT(error.message, HasSubstr(": " + activity + ": the time allowed for loading is over; allow more time"));
  }
  void ExpectLate(std::chrono::milliseconds limit, const std::string& activity) const {
    ExpectLate(limit, storage_.Location(), activity);
  }

  CTestStorage storage_{GetParam()};
  std::shared_ptr<CMetaDictionary2024> sample_ = LargeMetamodel(2);
};

TEST_P(DatabaseDeadlineTest, NoneInSightDisturbsNothing) {
  kvx::CLoadDeadline::Set(24h * 365);
  EXPECT_EQ(Loaded(), TextOf(*sample_));
  EXPECT_TRUE(OpenMetaStorage(storage_.Location())->Exists());
}

TEST_P(DatabaseDeadlineTest, WhatIsOverBeginsNothing) {
  ExpectLate(0ms, "cannot be opened");
  EXPECT_THAT(ErrorOf([this] { OpenMetaStorage(storage_.Location())->Exists(); }).message,
              HasSubstr("the time allowed for loading is over"));
}

TEST_P(DatabaseDeadlineTest, StoringTakesTheTimeThatItTakes) {
  kvx::CLoadDeadline::Set(0ms);
  Save();
  kvx::CLoadDeadline::Set(std::nullopt);
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_P(DatabaseDeadlineTest, ViewThatNeverEnds) {
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO methods",
                    "CREATE VIEW meta_methods AS WITH RECURSIVE endless(i) AS (SELECT 0 UNION ALL SELECT i FROM "
                    "endless) SELECT 0 AS behavior_ordinal, i AS ordinal, 'a' AS internal_name, 'a' AS display_name "
                    "FROM endless WHERE i < 0"});
  ExpectLate(2s, "table meta_methods cannot be read");
}

TEST_P(DatabaseDeadlineTest, TableThatAnotherProgramHasLocked) {
  const std::unique_ptr<soci::session> writer = storage_.OpenSession();
  if (GetParam() == EStorage::kSqlite) {
    *writer << "BEGIN EXCLUSIVE";
  } else {
    *writer << "BEGIN";
    *writer << "LOCK TABLE meta_methods IN ACCESS EXCLUSIVE MODE";
  }
  ExpectLate(300ms, "cannot be opened");
}

class PostgresqlDeadlineTest : public DatabaseDeadlineTest {};

TEST_P(PostgresqlDeadlineTest, ServerThatFallsSilent) {
  OpenMetaStorage(storage_.Location())->Save(*LargeMetamodel(30));
  std::promise<void> end;
  const CProxy proxy(100000, [&end] {
    end.get_future().wait();
    return false;
  });
  ExpectLate(4s, storage_.LocationWith(proxy.Words()), "table meta_class_properties cannot be read");
  EXPECT_TRUE(proxy.HasInterrupted());
  end.set_value();
}

TEST_P(PostgresqlDeadlineTest, ServerWorksOnForNobody) {
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO methods",
                    "CREATE VIEW meta_methods AS SELECT methods.* FROM methods, pg_sleep(3600)"});
  ExpectLate(2s, "table meta_methods cannot be read");
  const std::string working =
      "SELECT count(*) FROM pg_stat_activity WHERE pid <> pg_backend_pid() AND state = 'active' AND query LIKE "
      "'%FETCH%'";
  for (int i = 0; i < 1000 && storage_.Query(working) != "0"; ++i) {
    std::this_thread::sleep_for(10ms);
  }
  EXPECT_EQ(storage_.Query(working), "0");
}

TEST_P(PostgresqlDeadlineTest, StatementTimeoutOfTheUserIsKept) {
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO methods",
                    "CREATE VIEW meta_methods AS SELECT methods.* FROM methods, pg_sleep(3600)"});
  const std::string schema = storage_.Query("SELECT current_schema()::text");
  kvx::CLoadDeadline::Set(1h);
  EXPECT_THAT(ErrorOf([&] {
                OpenMetaStorage("postgresql://options='-csearch_path=" + schema + " -cstatement_timeout=100'")->Load();
              }).message,
              HasSubstr("canceling statement due to statement timeout"));
}

/// A server that takes connections and says nothing.
class PostgresqlSilentServerTest : public testing::Test {
 protected:
  PostgresqlSilentServerTest() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    // The sockets interface takes every kind of address through this cast.
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(listener_, generic, size), 0);
    EXPECT_EQ(listen(listener_, 4), 0);
    EXPECT_EQ(getsockname(listener_, generic, &size), 0);
    location_ += std::to_string(ntohs(address.sin_port));
  }
  ~PostgresqlSilentServerTest() override {
    kvx::CLoadDeadline::Set(std::nullopt);
    close(listener_);
  }

  /// In seconds.
  static double TimeToGiveUp(const std::string& location, const std::string& problem) {
    const Clock::time_point begin = Clock::now();
    const SError error = ErrorOf([&] { OpenMetaStorage(location)->Load(); });
    EXPECT_EQ(error.code, kvx::kFileError);
    EXPECT_THAT(error.message, HasSubstr("cannot be opened: " + problem));
    return std::chrono::duration<double>(Clock::now() - begin).count();
  }

  int listener_ = socket(AF_INET, SOCK_STREAM, 0);
  std::string location_ = "postgresql://host=127.0.0.1 port=";
};

TEST_F(PostgresqlSilentServerTest, IsGivenUpAfterTenSecondsUnlessToldOtherwise) {
  EXPECT_NEAR(TimeToGiveUp(location_, "connection to server at "), 10, 2);
  EXPECT_NEAR(TimeToGiveUp(location_ + " connect_timeout=3", "connection to server at "), 3, 1);
  setenv("PGCONNECT_TIMEOUT", "2", 1);
  EXPECT_NEAR(TimeToGiveUp(location_, "connection to server at "), 2, 1);
  unsetenv("PGCONNECT_TIMEOUT");
}

TEST_F(PostgresqlSilentServerTest, IsGivenUpAtTheDeadline) {
  kvx::CLoadDeadline::Set(2s);
  EXPECT_NEAR(TimeToGiveUp(location_, "the time allowed for loading is over"), 2, 1);
  kvx::CLoadDeadline::Set(2s);
  EXPECT_NEAR(TimeToGiveUp(location_ + " connect_timeout=0", "the time allowed for loading is over"), 2, 1);
}

INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseDeadlineTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, DatabaseDeadlineTest, testing::Values(EStorage::kPostgresql));
INSTANTIATE_TEST_SUITE_P(, PostgresqlDeadlineTest, testing::Values(EStorage::kPostgresql));

}  // namespace
}  // namespace test
