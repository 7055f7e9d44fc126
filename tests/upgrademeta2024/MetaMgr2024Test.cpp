#include "upgrademeta2024/MetaMgr2024.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/MetaDictionary2024.h"

namespace {

using test::ErrorOf;
using test::SError;

class MetaMgr2024Test : public testing::Test {
 protected:
  MetaMgr2024Test() {
    context_.SetOriginalMetaLocation(directory_.Write("original.json", Document("Original")));
    context_.SetClientMetaLocation(directory_.Write("client.json", Document("Client")));
  }

  static std::string Document(const std::string& name) {
    return R"({"generation": 2024, "classes": [{"internal_name": ")" + name + "\"}]}";
  }

  test::CTemporaryDirectory directory_;
  CUpgradeContext context_;
  CMetaMgr2024& manager_ = CMetaMgr2024::Instance();
};

TEST_F(MetaMgr2024Test, InstanceIsAlwaysTheSame) {
  EXPECT_EQ(&CMetaMgr2024::Instance(), &manager_);
}

TEST_F(MetaMgr2024Test, EachSideIsLoadedFromItsLocation) {
  EXPECT_NE(manager_.LoadOriginalMeta(context_)->GetClass("Original"), nullptr);
  EXPECT_NE(manager_.LoadClientMeta(context_)->GetClass("Client"), nullptr);
}

TEST_F(MetaMgr2024Test, EachCallReadsAnew) {
  const auto before = manager_.LoadClientMeta(context_);
  directory_.Write("client.json", Document("Changed"));
  const auto after = manager_.LoadClientMeta(context_);
  EXPECT_NE(before->GetClass("Client"), nullptr);
  EXPECT_NE(after->GetClass("Changed"), nullptr);
  EXPECT_EQ(after->GetClass("Client"), nullptr);
}

TEST_F(MetaMgr2024Test, WhatIsLoadedIsKeptByLocationForAsLongAsSomebodyWantsIt) {
  auto kept = std::make_shared<LoadedMetamodels2024>();
  manager_.SetKept(kept);
  const auto original = manager_.LoadOriginalMeta(context_);
  manager_.LoadClientMeta(context_);
  const auto client = manager_.LoadClientMeta(context_);
  EXPECT_EQ(*kept, (LoadedMetamodels2024{{directory_.File("original.json"), original},
                                         {directory_.File("client.json"), client}}));
  kept.reset();
  EXPECT_EQ(manager_.LoadClientMeta(context_).use_count(), 1);
}

TEST_F(MetaMgr2024Test, NothingIsKeptAnyMoreAfterNull) {
  const auto kept = std::make_shared<LoadedMetamodels2024>();
  manager_.SetKept(kept);
  manager_.SetKept(nullptr);
  manager_.LoadClientMeta(context_);
  EXPECT_TRUE(kept->empty());
}

TEST_F(MetaMgr2024Test, ElementsOutliveTheLoadedDictionary) {
  const auto element = manager_.LoadOriginalMeta(context_)->GetClass("Original");
  EXPECT_EQ(element->GetInternalName(), "Original");
}

TEST_F(MetaMgr2024Test, MessageSaysThatTheOriginalMetamodelCannotBeLoaded) {
  const std::string path = directory_.File("absent.json");
  context_.SetOriginalMetaLocation(path);
  EXPECT_EQ(ErrorOf([&] { manager_.LoadOriginalMeta(context_); }),
            (SError{kvx::kFileError, "original metamodel: " + path + ": cannot be read: No such file or directory"}));
}

TEST_F(MetaMgr2024Test, MessageSaysThatTheClientMetamodelCannotBeLoaded) {
  const std::string path = directory_.Write("client.json", R"({"generation": 2023})");
  EXPECT_EQ(ErrorOf([&] { manager_.LoadClientMeta(context_); }),
            (SError{kvx::kMalformedDocument,
                    "client metamodel: " + path +
                        ":1:2: /generation: the metamodel is of generation 2023; only 2024 can be read"}));
}

TEST_F(MetaMgr2024Test, LocationOfNoKnownFormCarriesTheSideToo) {
  CUpgradeContext context;
  const SError original = ErrorOf([&] { manager_.LoadOriginalMeta(context); });
  EXPECT_EQ(original.code, kvx::kMetamodelError);
  EXPECT_EQ(original.message.find("original metamodel: : not a metamodel location"), 0U) << original.message;
  const SError client = ErrorOf([&] { manager_.LoadClientMeta(context); });
  EXPECT_EQ(client.message.find("client metamodel: : not a metamodel location"), 0U) << client.message;
}

}  // namespace
