#include "upgrademeta2024/LoadProgress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kvxsptexception/KVXException.h"
#include "support/TemporaryDirectory.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CRecordingObserver : public CLoadObserver {
 public:
  void LoadBegins(const CLoadProgress& load) override {
    events.push_back("begin " + load.GetSource());
    done = load.GetDone();
  }
  void LoadEnds(const CLoadProgress& load) override {
    events.push_back("end " + load.GetSource());
    done = load.GetDone();
    total = load.GetTotal();
    unit = load.GetUnit();
  }

  std::vector<std::string> events;
  std::uint64_t done = 0;
  std::uint64_t total = 0;
  CLoadProgress::EUnit unit = CLoadProgress::kRows;
};

class LoadProgressTest : public testing::Test {
 protected:
  LoadProgressTest() { CLoadObserver::Install(&observer_); }
  ~LoadProgressTest() override { CLoadObserver::Install(nullptr); }

  CRecordingObserver observer_;
  test::CTemporaryDirectory directory_;
};

TEST_F(LoadProgressTest, BeginsAtNothingOfAnUnknownTotal) {
  const CLoadProgress load("plm.db", CLoadProgress::kRows);
  EXPECT_EQ(load.GetSource(), "plm.db");
  EXPECT_EQ(load.GetUnit(), CLoadProgress::kRows);
  EXPECT_EQ(load.GetDone(), 0U);
  EXPECT_EQ(load.GetTotal(), 0U);
  EXPECT_TRUE(load.IsObserved());
}

TEST_F(LoadProgressTest, ADocumentsBytesCountWhenTakenApart) {
  const std::string content = R"({"generation": 2024, "classes": [{"internal_name": "Part"}]})";
  const std::string path = directory_.Write("plm.json", content);
  OpenMetaStorage(path)->Load();
  EXPECT_THAT(observer_.events, ElementsAre("begin " + path, "end " + path));
  EXPECT_EQ(observer_.unit, CLoadProgress::kBytes);
  EXPECT_EQ(observer_.total, content.size());
  // Up to the end of the last element.
  EXPECT_EQ(observer_.done, content.find("]}"));
}

TEST_F(LoadProgressTest, ADatabasesRowsCountOverAllTables) {
  // Three elements, a method, two properties and a behavior name.
  const std::string document = directory_.Write("plm.json", R"({"generation": 2024,
      "classes": [{"internal_name": "Part", "behaviors": ["Versioned"], "properties": [{"internal_name": "Code"}]}],
      "links": [{"internal_name": "Uses", "properties": [{"internal_name": "Amount"}]}],
      "behaviors": [{"internal_name": "Versioned", "methods": [{"internal_name": "Revise"}]}]})");
  const std::string path = directory_.File("plm.db");
  OpenMetaStorage(path)->Save(*OpenMetaStorage(document)->Load());
  observer_.events.clear();
  OpenMetaStorage(path)->Load();
  EXPECT_THAT(observer_.events, ElementsAre("begin " + path, "end " + path));
  EXPECT_EQ(observer_.unit, CLoadProgress::kRows);
  EXPECT_EQ(observer_.total, 7U);
  EXPECT_EQ(observer_.done, 7U);
}

TEST_F(LoadProgressTest, AFailedLoadingEndsToo) {
  const std::string path = directory_.Write("plm.json", "{");
  EXPECT_THROW(OpenMetaStorage(path)->Load(), CKVXException);
  EXPECT_THAT(observer_.events, ElementsAre("begin " + path, "end " + path));
}

TEST_F(LoadProgressTest, OnlyTheInstalledObserverIsTold) {
  CRecordingObserver later;
  CLoadObserver::Install(&later);
  { const CLoadProgress load("a", CLoadProgress::kRows); }
  CLoadObserver::Install(nullptr);
  {
    const CLoadProgress load("b", CLoadProgress::kRows);
    EXPECT_FALSE(load.IsObserved());
  }
  EXPECT_THAT(observer_.events, IsEmpty());
  EXPECT_THAT(later.events, ElementsAre("begin a", "end a"));
}

}  // namespace
