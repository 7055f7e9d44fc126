#include "kvxsptfile/LoadDeadline.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptfile/ReadFile.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace std::chrono_literals;
using test::ErrorOf;
using test::SError;

class LoadDeadlineTest : public testing::Test {
 protected:
  ~LoadDeadlineTest() override { kvx::CLoadDeadline::Set(std::nullopt); }
};

TEST_F(LoadDeadlineTest, IsNoneUnlessSet) {
  EXPECT_FALSE(kvx::CLoadDeadline::Get());
  EXPECT_FALSE(kvx::CLoadDeadline::IsOver());
  kvx::CLoadDeadline::Set(0s);
  EXPECT_TRUE(kvx::CLoadDeadline::IsOver());
  kvx::CLoadDeadline::Set(std::nullopt);
  EXPECT_FALSE(kvx::CLoadDeadline::Get());
  EXPECT_FALSE(kvx::CLoadDeadline::IsOver());
}

TEST_F(LoadDeadlineTest, IsTheLimitFromNow) {
  const auto before = std::chrono::steady_clock::now();
  kvx::CLoadDeadline::Set(1h);
  EXPECT_GE(kvx::CLoadDeadline::Get().value(), before + 1h);
  EXPECT_LE(kvx::CLoadDeadline::Get().value(), std::chrono::steady_clock::now() + 1h);
  EXPECT_FALSE(kvx::CLoadDeadline::IsOver());
}

TEST_F(LoadDeadlineTest, EndsTheReadingOfAFile) {
  const test::CTemporaryDirectory directory;
  const std::string path = directory.Write("file", "text");
  kvx::CLoadDeadline::Set(0s);
  EXPECT_EQ(
      ErrorOf([&] { kvx::ReadFile(path); }),
      (SError{kvx::kFileError, path + ": cannot be read: the time allowed for loading is over; allow more time"}));
}

}  // namespace
