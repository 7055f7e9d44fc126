#include "checkmeta2024/MultiLanguageConfig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/Findings.h"
#include "support/Error.h"

namespace {

using test::ErrorOf;
using test::Json;
using test::SError;
using testing::ElementsAre;
using testing::IsEmpty;

class MultiLanguageConfigTest : public testing::Test {
 protected:
  const std::shared_ptr<CJsonObject> document_ = Json(R"({
    "inserted": {"en": "Inserted ", "zh": "新增", "de": ""},
    "numbered": {"en": 5},
    "odd": {"en": ["Odd"]},
    "none": null,
    "empty": {},
    "text": "Inserted",
    "array": []
  })");
  const CMultiLanguageConfig config_{document_};
};

TEST_F(MultiLanguageConfigTest, ATextInTheLanguageAskedForIsReturned) {
  EXPECT_EQ(config_.GetDisplayString("en", "inserted"), "Inserted ");
  EXPECT_EQ(config_.GetDisplayString("zh", "inserted"), "新增");
  EXPECT_EQ(config_.GetDisplayString("de", "inserted"), "");
}

TEST_F(MultiLanguageConfigTest, ALanguageAbsentFromTheEntryGivesAnEmptyText) {
  EXPECT_EQ(config_.GetDisplayString("fr", "inserted"), "");
  EXPECT_EQ(config_.GetDisplayString("EN", "inserted"), "");
  EXPECT_EQ(config_.GetDisplayString("", "inserted"), "");
  EXPECT_EQ(config_.GetDisplayString("en", "empty"), "");
}

TEST_F(MultiLanguageConfigTest, ATextThatIsNeitherStringNorNumberIsEmpty) {
  EXPECT_EQ(config_.GetDisplayString("en", "odd"), "");
  EXPECT_EQ(config_.GetDisplayString("en", "numbered"), "5");
}

TEST_F(MultiLanguageConfigTest, ANullEntryHasNoTexts) {
  EXPECT_EQ(config_.GetDisplayString("en", "none"), "");
  EXPECT_THAT(config_.GetDisplayStrings("none"), IsEmpty());
}

TEST_F(MultiLanguageConfigTest, ANullEntryGivesAnEmptyObjectNotAnEmptyPointer) {
  const auto entry = config_.GetDisplayJson("none");
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->ToText(), "{}");
}

TEST_F(MultiLanguageConfigTest, GetDisplayJsonGivesTheWholeEntry) {
  EXPECT_EQ(config_.GetDisplayJson("inserted")->ToText(), R"({
  "en": "Inserted ",
  "zh": "新增",
  "de": ""
})");
}

TEST_F(MultiLanguageConfigTest, AnAbsentKeyThrowsFromEveryLookup) {
  const SError missing = {0xA4C0003E, "json member [updated_to] not exist!"};
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayString("en", "updated_to"); }), missing);
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayStrings("updated_to"); }), missing);
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayJson("updated_to"); }), missing);
}

TEST_F(MultiLanguageConfigTest, AKeyInOtherLetterCaseIsAbsent) {
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayString("en", "Inserted"); }),
            (SError{0xA4C0003E, "json member [Inserted] not exist!"}));
}

TEST_F(MultiLanguageConfigTest, AnEntryThatIsAStringThrowsFromEveryLookup) {
  const SError wrongType = {0xA4C00004, "json member [text] is not Object!"};
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayString("en", "text"); }), wrongType);
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayStrings("text"); }), wrongType);
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayJson("text"); }), wrongType);
}

TEST_F(MultiLanguageConfigTest, AnEntryThatIsAnArrayThrowsFromEveryLookup) {
  const SError wrongType = {0xA4C00004, "json member [array] is not Object!"};
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayString("en", "array"); }), wrongType);
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayStrings("array"); }), wrongType);
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayJson("array"); }), wrongType);
}

TEST_F(MultiLanguageConfigTest, GetDisplayStringsGivesTheTextsInTheOrderOfTheEntry) {
  EXPECT_THAT(config_.GetDisplayStrings("inserted"), ElementsAre("Inserted ", "新增", ""));
  EXPECT_THAT(config_.GetDisplayStrings("empty"), IsEmpty());
}

TEST_F(MultiLanguageConfigTest, GetDisplayStringsThrowsForATextOfAnotherType) {
  EXPECT_EQ(ErrorOf([&] { config_.GetDisplayStrings("odd"); }),
            (SError{0xA4C00004, "json member [en] is not String!"}));
}

TEST_F(MultiLanguageConfigTest, CopiesAndAssignedDictionariesShareTheDocument) {
  const CMultiLanguageConfig copy(config_);
  CMultiLanguageConfig assigned(Json("{}"));
  assigned = config_;
  document_->SetObjectValue("later", Json(R"({"en": "Later"})"));
  EXPECT_EQ(copy.GetDisplayString("en", "later"), "Later");
  EXPECT_EQ(assigned.GetDisplayString("en", "later"), "Later");
}

TEST_F(MultiLanguageConfigTest, AssigningReleasesThePreviousDocument) {
  auto previous = Json("{}");
  CMultiLanguageConfig assigned(previous);
  const std::weak_ptr<CJsonObject> watched = previous;
  previous.reset();
  ASSERT_FALSE(watched.expired());
  assigned = config_;
  EXPECT_TRUE(watched.expired());
}

TEST_F(MultiLanguageConfigTest, LookupsWriteNothingToTheDocument) {
  const std::string before = document_->ToText();
  config_.GetDisplayString("fr", "inserted");
  config_.GetDisplayString("en", "none");
  config_.GetDisplayJson("none")->SetStringValue("en", "not in the document");
  config_.GetDisplayStrings("inserted");
  EXPECT_EQ(document_->ToText(), before);
}

}  // namespace
