#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "checkmeta2024/CheckMetaStrategy2024.h"
#include "checkmeta2024/CheckResultConverter.h"
#include "otherhost/HostTest.h"
#include "support/FailingNew.h"

namespace {

using otherhost::Array;
using otherhost::MakeJson;
using otherhost::Object;
using otherhost::SValue;

class MemoryTest : public otherhost::CHostTest {
 protected:
  MemoryTest() { host_.files[otherhost::kDictionaryPath] = otherhost::DisplayDictionary(); }

  /// Runs `action` with the first allocation failing, with the second, and so on, until it needs no more; after each,
  /// `check` is told whether the action came to its end.
  template <typename Action, typename Check>
  static void FailEachAllocation(const Action& action, const Check& check) {
    for (std::size_t number = 1;; ++number) {
      bool ended = true;
      bool failed = false;
      try {
        const test::CFailingNew failing(number);
        action();
        failed = failing.HasFailed();
      } catch (const std::bad_alloc&) {
        ended = false;
        failed = true;
      }
      check(ended);
      if (!failed) {
        EXPECT_GT(number, 10U);
        return;
      }
    }
  }
};

TEST_F(MemoryTest, ARunWithoutTheMemoryThatItNeedsSetsNoResultOrAWholeOne) {
  const std::vector<otherhost::SElement> changed = {{"A", {{"Code", 64}}, {}, {}}};
  const std::vector<otherhost::SElement> shipped = {{"A", {{"Code", 32}}, {"b"}, {}}, {"Old", {}, {}, {}}};
  host_.client.classes = changed;
  host_.original.classes = shipped;
  host_.parameter = MakeJson(Object({{"execute_elements", Array({"class", "table"})}}));
  const auto run = [this] {
    host_.result = nullptr;
    host_.ForgetCalls();
    const std::unique_ptr<CUpgradeStrategy> strategy(CreateReflectionClassObject("CCheckMetaStrategy2024"));
    strategy->Invoke(handlerContext_, upgradeContext_);
  };
  run();
  const std::string result = otherhost::TextOf(host_.result);
  const std::string saved = host_.files.at(otherhost::kResultPath).Text();
  const std::string logged = host_.CallsWith({"Print("}).front();
  ASSERT_NE(saved, "{}");
  FailEachAllocation(run, [&](bool ended) {
    if (ended) {
      EXPECT_EQ(otherhost::TextOf(host_.result), result);
      EXPECT_EQ(host_.files.at(otherhost::kResultPath).Text(), saved);
      EXPECT_EQ(host_.CallsWith({"Print("}).front(), logged);
    } else {
      EXPECT_EQ(host_.result, nullptr);
    }
  });
}

TEST_F(MemoryTest, AConversionWithoutTheMemoryThatItNeedsLeavesTheTextAndTheNextIsWhole) {
  const SValue element = Object({{"internal_name", std::string(2000, 'n')}, {"display_name", "d"}});
  const auto section = MakeJson(Object({{"deleted_links", Array({element, element})}}));
  std::unique_ptr<CCheckResultConverter> converter;
  std::string text;
  const auto convert = [&] {
    text = "";
    converter->ConversionMetaInfo("link", "inserted_links", "deleted_links", "updated_links", section, text);
  };
  const auto convertAnew = [&] {
    converter = nullptr;
    text = "";
    converter = std::make_unique<CCheckResultConverter>(handlerContext_, upgradeContext_);
    convert();
  };
  convertAnew();
  const std::string whole = text;
  ASSERT_GT(whole.size(), 4000U);
  FailEachAllocation(convertAnew, [&](bool ended) {
    EXPECT_EQ(text, ended ? whole : "");
    if (converter != nullptr) {
      convert();
      EXPECT_EQ(text, whole);
    }
  });
}

}  // namespace
