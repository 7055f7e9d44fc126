#include "upgrademeta2024/LoadProgress2024.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kvxsptexception/KVXException.h"
#include "support/TemporaryDirectory.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaStorage2024.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CRecordingObserver : public CLoadObserver2024 {
 public:
  void LoadBegins(const CLoadProgress2024& load) override {
    events.push_back("begin " + load.GetSource());
    done = load.GetDone();
  }
  void LoadEnds(const CLoadProgress2024& load) override {
    events.push_back("end " + load.GetSource());
    done = load.GetDone();
    total = load.GetTotal();
    unit = load.GetUnit();
  }

  std::vector<std::string> events;
  std::uint64_t done = 0;
  std::uint64_t total = 0;
  CLoadProgress2024::EUnit unit = CLoadProgress2024::kRows;
};

class LoadProgress2024Test : public testing::Test {
 protected:
  LoadProgress2024Test() { CLoadObserver2024::Install(&observer_); }
  ~LoadProgress2024Test() override { CLoadObserver2024::Install(nullptr); }

  CRecordingObserver observer_;
  test::CTemporaryDirectory directory_;
};

TEST_F(LoadProgress2024Test, BeginsAtNothingOfAnUnknownTotal) {
  const CLoadProgress2024 load("plm.db", CLoadProgress2024::kRows);
  EXPECT_EQ(load.GetSource(), "plm.db");
  EXPECT_EQ(load.GetUnit(), CLoadProgress2024::kRows);
  EXPECT_EQ(load.GetDone(), 0U);
  EXPECT_EQ(load.GetTotal(), 0U);
  EXPECT_TRUE(load.IsObserved());
}

TEST_F(LoadProgress2024Test, ADocumentsBytesCountWhenReadAndWhenTakenApart) {
  const std::string content = R"({"generation": 2024, "classes": [{"internal_name": "Part"}]})";
  const std::string path = directory_.Write("plm.json", content);
  CMetaStorage2024::Open(path)->Load();
  EXPECT_THAT(observer_.events, ElementsAre("begin " + path, "end " + path));
  EXPECT_EQ(observer_.unit, CLoadProgress2024::kBytes);
  EXPECT_EQ(observer_.total, 2 * content.size());
  // Up to the beginning of the last element.
  EXPECT_EQ(observer_.done, content.size() + content.find("{\"internal_name\""));
}

TEST_F(LoadProgress2024Test, ADatabasesRowsCountOverAllTables) {
  // Three elements, a method, two properties and a behavior name.
  const std::string document = directory_.Write("plm.json", R"({"generation": 2024,
      "classes": [{"internal_name": "Part", "behaviors": ["Versioned"], "properties": [{"internal_name": "Code"}]}],
      "links": [{"internal_name": "Uses", "properties": [{"internal_name": "Amount"}]}],
      "behaviors": [{"internal_name": "Versioned", "methods": [{"internal_name": "Revise"}]}]})");
  const std::string path = directory_.File("plm.db");
  CMetaStorage2024::Open(path)->Save(*CMetaStorage2024::Open(document)->Load());
  observer_.events.clear();
  CMetaStorage2024::Open(path)->Load();
  EXPECT_THAT(observer_.events, ElementsAre("begin " + path, "end " + path));
  EXPECT_EQ(observer_.unit, CLoadProgress2024::kRows);
  EXPECT_EQ(observer_.total, 7U);
  EXPECT_EQ(observer_.done, 7U);
}

TEST_F(LoadProgress2024Test, AFailedLoadingEndsToo) {
  const std::string path = directory_.Write("plm.json", "{");
  EXPECT_THROW(CMetaStorage2024::Open(path)->Load(), CKVXException);
  EXPECT_THAT(observer_.events, ElementsAre("begin " + path, "end " + path));
}

TEST_F(LoadProgress2024Test, OnlyTheInstalledObserverIsTold) {
  CRecordingObserver later;
  CLoadObserver2024::Install(&later);
  { const CLoadProgress2024 load("a", CLoadProgress2024::kRows); }
  CLoadObserver2024::Install(nullptr);
  {
    const CLoadProgress2024 load("b", CLoadProgress2024::kRows);
    EXPECT_FALSE(load.IsObserved());
  }
  EXPECT_THAT(observer_.events, IsEmpty());
  EXPECT_THAT(later.events, ElementsAre("begin a", "end a"));
}

}  // namespace
