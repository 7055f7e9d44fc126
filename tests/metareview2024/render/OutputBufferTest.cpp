#include "metareview2024/render/OutputBuffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace metareview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OutputBufferTest : public testing::Test {
 protected:
  std::vector<std::string> parts_;
  const Sink sink_ = [this](std::string_view part) { parts_.emplace_back(part); };
  COutputBuffer buffer_{sink_};
};

TEST_F(OutputBufferTest, PassesSmallPartsOnTogether) {
  buffer_.Write("one ");
  buffer_.Write("two ");
  buffer_.Write("three");
  EXPECT_THAT(parts_, IsEmpty());
  buffer_.Flush();
  EXPECT_THAT(parts_, ElementsAre("one two three"));
}

TEST_F(OutputBufferTest, PassesNothingOnTwice) {
  buffer_.Write("one");
  buffer_.Flush();
  buffer_.Flush();
  EXPECT_THAT(parts_, ElementsAre("one"));
  buffer_.Write("two");
  buffer_.Flush();
  EXPECT_THAT(parts_, ElementsAre("one", "two"));
}

TEST_F(OutputBufferTest, GathersUpTo64KiB) {
  const std::string full(65535, 'a');
  buffer_.Write(full);
  buffer_.Write("b");
  EXPECT_THAT(parts_, IsEmpty());
  buffer_.Write("c");
  EXPECT_THAT(parts_, ElementsAre(full + "b"));
  buffer_.Flush();
  EXPECT_THAT(parts_, ElementsAre(full + "b", "c"));
}

}  // namespace
}  // namespace metareview
