#include "kvxsptexception/KVXException.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <set>
#include <string>
#include <type_traits>

#include "kvxsptexception/ErrorCodes.h"

namespace {

TEST(KVXExceptionTest, CodeAloneMakesAMessageOfTheCode) {
  const CKVXException error(0xA4520005U);
  EXPECT_EQ(error.GetCode(), 0xA4520005U);
  EXPECT_FALSE(error.HasMessage());
  EXPECT_STREQ(error.what(), "error 0xA4520005");
}

TEST(KVXExceptionTest, CodeIsShownInUpperCaseWithoutLeadingZeros) {
  EXPECT_STREQ(CKVXException(0x0000abcdU).what(), "error 0xABCD");
  EXPECT_STREQ(CKVXException(0U).what(), "error 0x0");
  EXPECT_STREQ(CKVXException(0xFFFFFFFFU).what(), "error 0xFFFFFFFF");
}

TEST(KVXExceptionTest, CodeTextIsTheCodeInUpperCaseWithoutLeadingZeros) {
  EXPECT_EQ(CKVXException(0x0000abcdU, "text").GetCodeText(), "0xABCD");
  EXPECT_EQ(CKVXException(0U).GetCodeText(), "0x0");
  EXPECT_EQ(CKVXException(0xFFFFFFFFU).GetCodeText(), "0xFFFFFFFF");
}

TEST(KVXExceptionTest, MessageIsKeptAsItStands) {
  const CKVXException error(0xA4C0003EU, "json member [x] not exist!");
  EXPECT_EQ(error.GetCode(), 0xA4C0003EU);
  EXPECT_TRUE(error.HasMessage());
  EXPECT_STREQ(error.what(), "json member [x] not exist!");
}

TEST(KVXExceptionTest, EmptyMessageIsAMessage) {
  const CKVXException error(1U, "");
  EXPECT_TRUE(error.HasMessage());
  EXPECT_STREQ(error.what(), "");
}

TEST(KVXExceptionTest, SignedCodeKeepsItsBits) {
  const int code = static_cast<int>(0xA4C00004U);
  ASSERT_LT(code, 0);
  EXPECT_EQ(CKVXException(code).GetCode(), 0xA4C00004U);
  EXPECT_STREQ(CKVXException(code).what(), "error 0xA4C00004");
  const CKVXException withMessage(code, "text");
  EXPECT_EQ(withMessage.GetCode(), 0xA4C00004U);
  EXPECT_STREQ(withMessage.what(), "text");
}

template <typename... Codes>
constexpr bool kAreCodes = (std::is_constructible_v<CKVXException, Codes> && ...) &&
                           (std::is_constructible_v<CKVXException, Codes, const char*> && ...);

TEST(KVXExceptionTest, ACodeMayBeOfAnyIntegerType) {
  static_assert(kAreCodes<signed char, unsigned char, short, unsigned short, int, unsigned, long, unsigned long,
                          long long, unsigned long long>);
  EXPECT_EQ(CKVXException(0xA4520005ULL).GetCode(), 0xA4520005U);
  EXPECT_EQ(CKVXException(-1L, "text").GetCode(), 0xFFFFFFFFU);
  static_assert(!std::is_constructible_v<CKVXException>);
  static_assert(!std::is_constructible_v<CKVXException, const char*>);
  static_assert(!std::is_convertible_v<int, CKVXException>);
}

TEST(KVXExceptionTest, CopyCarriesCodeAndMessage) {
  const CKVXException error(7U, "text");
  CKVXException copy(error);
  EXPECT_EQ(copy.GetCode(), 7U);
  EXPECT_TRUE(copy.HasMessage());
  EXPECT_STREQ(copy.what(), "text");

  copy = CKVXException(8U);
  EXPECT_EQ(copy.GetCode(), 8U);
  EXPECT_FALSE(copy.HasMessage());
  EXPECT_STREQ(copy.what(), "error 0x8");
}

TEST(KVXExceptionTest, IsThrownByValueAndCaughtAsAStandardException) {
  std::string message;
  try {
    throw CKVXException(9U, "text");
  } catch (const std::exception& error) {
    message = error.what();
  }
  EXPECT_EQ(message, "text");
}

TEST(ErrorCodesTest, JsonCodesAreTheInterfacesOwn) {
  EXPECT_EQ(kvx::kJsonMemberMissing, 0xA4C0003EU);
  EXPECT_EQ(kvx::kJsonWrongType, 0xA4C00004U);
}

TEST(ErrorCodesTest, EveryCodeIsDifferent) {
  const std::set<std::uint32_t> codes = {
      kvx::kJsonMemberMissing, kvx::kJsonWrongType,   kvx::kFileError, kvx::kMalformedDocument,
      kvx::kMetamodelError,    kvx::kMetamodelExists, kvx::kRefused};
  EXPECT_EQ(codes.size(), 7U);
}

}  // namespace
