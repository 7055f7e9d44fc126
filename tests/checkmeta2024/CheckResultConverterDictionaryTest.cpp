#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/CheckResultConverterPeer.h"
#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/LogCapture.h"

namespace {

using test::Convert;
using test::ErrorOf;
using test::Json;
using test::SError;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kDeletedPart = R"({"deleted_classes": [{"internal_name": "Part", "display_name": "A part"}]})";

class CheckResultConverterDictionaryTest : public test::ConverterTest {
 protected:
  /// Replaces the display dictionary by the usual one with one entry taken out or, when there is a text, replaced.
  void ChangeEntry(const std::string& key, const std::string& replacement) const {
    const auto all = Json(test::kDictionary);
    std::string text;
    for (const std::string& name : test::Keys(*all)) {
      const std::string entry = name != key ? all->GetObjectValue(name)->ToText() : replacement;
      if (!entry.empty()) {
        text += (text.empty() ? "" : ",") + ("\"" + name + "\": " + entry);
      }
    }
    folder_.SetDictionary("{" + text + "}");
  }

  /// Converts sections that need every word.
  void ConvertEverything() {
    const std::string element = R"({"internal_name": "A", "display_name": "a"})";
    const std::string change = R"({"updated_field": "length", "client_property": {"internal_name": "A",
      "display_name": "a", "length": 1}, "original_property": {"length": 2}})";
    Text("behavior", R"({"inserted_behaviors": [)" + element + R"(], "updated_behaviors": [{"internal_name": "A",
      "display_name": "a", "deleted_methods": [)" +
                         element + "]}]}");
    Text("class", R"({"updated_classes": [{"internal_name": "A", "display_name": "a", "updated_properties": [)" +
                      change + "]}]}");
    Text("link", R"({"deleted_links": [)" + element + "]}");
  }
};

TEST_F(CheckResultConverterDictionaryTest, WordsAreTheLanguagesOfTheRun) {
  folder_.context.SetLang("xx");
  EXPECT_EQ(Text("class", kDeletedPart),
            "\n"
            "<deleted><class>:\n"
            " <internal_name>:Part,<display_name>:A part\n"
            "\n");
}

TEST_F(CheckResultConverterDictionaryTest, ALanguageThatTheDictionaryLacksLeavesOnlyTheSeparators) {
  folder_.context.SetLang("fr");
  EXPECT_EQ(Text("class", kDeletedPart),
            "\n"
            ":\n"
            " :Part,:A part\n"
            "\n");
}

TEST_F(CheckResultConverterDictionaryTest, ANullEntryLeavesItsWordOut) {
  ChangeEntry("deleted", "null");
  EXPECT_EQ(Text("class", kDeletedPart),
            "\n"
            "classes:\n"
            " name:Part,shown as:A part\n"
            "\n");
}

TEST_F(CheckResultConverterDictionaryTest, TheLanguageIsReadAtTheFirstConversionAndKept) {
  folder_.context.SetLang("xx");
  EXPECT_THAT(Text("class", kDeletedPart), HasSubstr("<deleted>"));
  folder_.context.SetLang("en");
  EXPECT_THAT(Text("class", kDeletedPart), HasSubstr("<deleted>"));
}

TEST_F(CheckResultConverterDictionaryTest, TheDictionaryIsReadAtTheFirstConversionAndKept) {
  ChangeEntry("deleted", R"({"en": "Gone: "})");
  EXPECT_THAT(Text("class", kDeletedPart), HasSubstr("Gone: classes"));
  folder_.RemoveDictionary();
  EXPECT_THAT(Text("class", kDeletedPart), HasSubstr("Gone: classes"));
}

TEST_F(CheckResultConverterDictionaryTest, AMissingFileThrowsAndTheNextCallTriesAgain) {
  folder_.RemoveDictionary();
  std::string text = "earlier";
  const SError error = ErrorOf([&] { Convert(converter_, "class", Json(kDeletedPart), text); });
  EXPECT_EQ(error.code, kvx::kFileError);
  EXPECT_THAT(error.message, StartsWith(folder_.directory.Path() + "/multilanguage/strings/info.json: "));
  EXPECT_EQ(text, "earlier");
  folder_.SetDictionary(test::kDictionary);
  folder_.context.SetLang("xx");
  Convert(converter_, "class", Json("{}"), text);
  EXPECT_EQ(text, "earlier\n");
  EXPECT_THAT(Text("class", kDeletedPart), HasSubstr("<deleted>"));
}

TEST_F(CheckResultConverterDictionaryTest, AMalformedFileThrowsAndTheNextCallTriesAgain) {
  folder_.SetDictionary(R"({"inserted": )");
  std::string text = "earlier";
  const SError error = ErrorOf([&] { Convert(converter_, "class", Json("{}"), text); });
  EXPECT_EQ(error.code, kvx::kMalformedDocument);
  EXPECT_THAT(error.message, StartsWith(folder_.directory.Path() + "/multilanguage/strings/info.json:"));
  EXPECT_EQ(text, "earlier");
  folder_.SetDictionary("{}");
  Convert(converter_, "class", Json("{}"), text);
  EXPECT_EQ(text, "earlier\n");
}

TEST_F(CheckResultConverterDictionaryTest, TheFilesNameIsAppendedToTheDirectoryAsItStands) {
  folder_.context.SetUpgradeCfgPath("/nonexistent/");
  EXPECT_THAT(ErrorOf([this] { Text("class", "{}"); }).message,
              StartsWith("/nonexistent//multilanguage/strings/info.json: "));
}

TEST_F(CheckResultConverterDictionaryTest, WithoutDisplayNameTheFirstLineThrowsAfterItsBeginning) {
  ChangeEntry("display_name", "");
  std::string text = "earlier";
  EXPECT_EQ(ErrorOf([&] { Convert(converter_, "class", Json(kDeletedPart), text); }),
            (SError{0xA4C0003E, "json member [display_name] not exist!"}));
  EXPECT_EQ(text, "earlier");
  EXPECT_EQ(CCheckResultConverterPeer(converter_).Take(),
            "\n"
            "Deleted classes:\n"
            " name:Part,");
}

TEST_F(CheckResultConverterDictionaryTest, AKeyThatNothingNeedsMayBeMissing) {
  ChangeEntry("updated_to", "");
  EXPECT_THAT(Text("class", kDeletedPart), HasSubstr("Deleted classes"));
}

TEST_F(CheckResultConverterDictionaryTest, ElevenKeysSufficeForEveryKindOfFinding) {
  EXPECT_EQ(ErrorOf([this] { ConvertEverything(); }), (SError{0, "nothing was thrown"}));
}

class CheckResultConverterDisplayKeyTest : public CheckResultConverterDictionaryTest,
                                           public testing::WithParamInterface<const char*> {};

TEST_P(CheckResultConverterDisplayKeyTest, AMissingKeyThrows) {
  ChangeEntry(GetParam(), "");
  EXPECT_EQ(ErrorOf([this] { ConvertEverything(); }),
            (SError{0xA4C0003E, "json member [" + std::string(GetParam()) + "] not exist!"}));
}

TEST_P(CheckResultConverterDisplayKeyTest, AnEntryThatIsNoObjectThrows) {
  ChangeEntry(GetParam(), R"("text")");
  EXPECT_EQ(ErrorOf([this] { ConvertEverything(); }),
            (SError{0xA4C00004, "json member [" + std::string(GetParam()) + "] is not Object!"}));
}

INSTANTIATE_TEST_SUITE_P(AllEleven, CheckResultConverterDisplayKeyTest,
                         testing::Values("inserted", "deleted", "updated", "class", "link", "behavior", "method",
                                         "property", "internal_name", "display_name", "updated_to"),
                         [](const auto& key) { return std::string(key.param); });

}  // namespace
