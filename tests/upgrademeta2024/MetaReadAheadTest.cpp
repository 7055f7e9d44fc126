#include "upgrademeta2024/MetaReadAhead.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <future>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/MetaMgr2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

using test::ErrorOf;
using test::SError;

class MetaReadAheadTest : public testing::Test {
 protected:
  MetaReadAheadTest() {
    context_.SetOriginalMetaLocation(directory_.Write("original.json", Document("Original")));
    context_.SetClientMetaLocation(directory_.Write("client.json", Document("Client")));
  }

  void SetUp() override {
    if (std::thread::hardware_concurrency() < 2) {
      GTEST_SKIP() << "NOT TESTED: nothing is read ahead on one processor";
    }
  }

  static std::string Document(const std::string& name) {
    return R"({"generation": 2024, "classes": [{"internal_name": ")" + name + "\"}]}";
  }

  std::shared_ptr<CMetaReadAhead> ReadAhead() {
    auto readAhead = std::make_shared<CMetaReadAhead>();
    manager_.SetReadAhead(readAhead);
    return readAhead;
  }

  bool OriginalHas(const std::string& name) { return manager_.LoadOriginalMeta(context_)->GetClass(name) != nullptr; }

  test::CTemporaryDirectory directory_;
  CUpgradeContext context_;
  CMetaMgr2024& manager_ = CMetaMgr2024::Instance();
};

/// Lets the second thread get ahead: notes when a loading of a location has ended.
class CEndObserver : public CLoadObserver {
 public:
  explicit CEndObserver(std::string source) : source_(std::move(source)) { Install(this); }
  ~CEndObserver() override { Install(nullptr); }

  void LoadBegins(const CLoadProgress&) override {}
  void LoadEnds(const CLoadProgress& load) override {
    if (load.GetSource() == source_) {
      ended_.set_value();
    }
  }
  void Wait() { ended_.get_future().wait(); }

 private:
  std::string source_;
  std::promise<void> ended_;
};

TEST_F(MetaReadAheadTest, OriginalIsReadBesideTheClient) {
  const auto readAhead = ReadAhead();
  CEndObserver observer(context_.GetOriginalMetaLocation());
  EXPECT_NE(manager_.LoadClientMeta(context_)->GetClass("Client"), nullptr);
  observer.Wait();
  directory_.Write("original.json", Document("Changed"));
  EXPECT_TRUE(OriginalHas("Original"));
}

TEST_F(MetaReadAheadTest, OriginalInADatabaseToo) {
  const std::string database = directory_.File("original.db");
  OpenMetaStorage(database)->Save(*manager_.LoadOriginalMeta(context_));
  context_.SetOriginalMetaLocation(database);
  const auto readAhead = ReadAhead();
  CEndObserver observer(database);
  manager_.LoadClientMeta(context_);
  observer.Wait();
  EXPECT_TRUE(OriginalHas("Original"));
}

TEST_F(MetaReadAheadTest, WithoutItNothingIsReadBeforeItIsAskedFor) {
  manager_.LoadClientMeta(context_);
  directory_.Write("original.json", Document("Changed"));
  EXPECT_TRUE(OriginalHas("Changed"));
}

TEST_F(MetaReadAheadTest, WhatWasReadIsHandedOutOnce) {
  const auto readAhead = ReadAhead();
  manager_.LoadClientMeta(context_);
  manager_.LoadOriginalMeta(context_);
  directory_.Write("original.json", Document("Changed"));
  EXPECT_TRUE(OriginalHas("Changed"));
}

TEST_F(MetaReadAheadTest, OriginalOfAnotherLocationIsReadWhenItIsAskedFor) {
  const auto readAhead = ReadAhead();
  manager_.LoadClientMeta(context_);
  context_.SetOriginalMetaLocation(directory_.Write("other.json", Document("Other")));
  EXPECT_TRUE(OriginalHas("Other"));
}

TEST_F(MetaReadAheadTest, OriginalThatNobodyAskedForIsReadAnewBesideTheNextClient) {
  const auto readAhead = ReadAhead();
  manager_.LoadClientMeta(context_);
  directory_.Write("original.json", Document("Changed"));
  manager_.LoadClientMeta(context_);
  EXPECT_TRUE(OriginalHas("Changed"));
}

TEST_F(MetaReadAheadTest, EndDropsWhatNobodyAskedFor) {
  {
    const auto readAhead = ReadAhead();
    manager_.LoadClientMeta(context_);
  }
  directory_.Write("original.json", Document("Changed"));
  EXPECT_TRUE(OriginalHas("Changed"));
}

TEST_F(MetaReadAheadTest, FailureOfTheOriginalShowsWhenItIsAskedForAndOnlyThen) {
  const std::string path = directory_.Write("original.json", R"({"generation": 2023})");
  const auto readAhead = ReadAhead();
  EXPECT_NE(manager_.LoadClientMeta(context_)->GetClass("Client"), nullptr);
  EXPECT_EQ(ErrorOf([&] { manager_.LoadOriginalMeta(context_); }),
            (SError{kvx::kMalformedDocument,
                    "original metamodel: " + path +
                        ":1:2: /generation: the metamodel is of generation 2023; only 2024 can be read"}));
}

TEST_F(MetaReadAheadTest, FailureOfTheClientComesFirst) {
  directory_.Write("original.json", "{");
  directory_.Write("client.json", "{");
  const auto readAhead = ReadAhead();
  const SError error = ErrorOf([&] { manager_.LoadClientMeta(context_); });
  EXPECT_EQ(error.message.find("client metamodel: "), 0U) << error.message;
}

TEST_F(MetaReadAheadTest, PipeIsNotReadAhead) {
  // Whoever opened it would wait for a writer.
  const std::string pipe = directory_.File("pipe.json");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  context_.SetOriginalMetaLocation(pipe);
  const auto readAhead = ReadAhead();
  EXPECT_NE(manager_.LoadClientMeta(context_)->GetClass("Client"), nullptr);
}

TEST_F(MetaReadAheadTest, BothSidesMayBeTheSameFile) {
  context_.SetOriginalMetaLocation(context_.GetClientMetaLocation());
  const auto readAhead = ReadAhead();
  EXPECT_NE(manager_.LoadClientMeta(context_)->GetClass("Client"), nullptr);
  EXPECT_TRUE(OriginalHas("Client"));
}

}  // namespace
