#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/CheckResultConverter.h"
#include "checkmeta2024/MultiLanguageConfig.h"
#include "kvxsptexception/KVXException.h"
#include "otherhost/HostTest.h"

namespace {

using otherhost::Array;
using otherhost::MakeJson;
using otherhost::Object;
using otherhost::SValue;
using otherhost::TextOf;
using testing::ElementsAre;

class DisplayWordTest : public otherhost::CHostTest {
 protected:
  const CMultiLanguageConfig dictionary_{
      MakeJson(Object({{"class", Object({{"en", "Class"}, {"de", "Klasse"}})}, {"nothing", {}}}))};
};

TEST_F(DisplayWordTest, ALanguageThatIsNotFoundGivesNothingWhateverIsBesideTheAnswer) {
  EXPECT_EQ(dictionary_.GetDisplayString("en", "class"), "Class");
  EXPECT_EQ(dictionary_.GetDisplayString("fr", "class"), "");
  EXPECT_THAT(host_.Calls(), ElementsAre("GetObjectValue(class)", "GetPropertyStringValue(en)", "GetObjectValue(class)",
                                         "GetPropertyStringValue(fr)"));
}

TEST_F(DisplayWordTest, ANullEntryIsAskedForNothing) {
  EXPECT_EQ(dictionary_.GetDisplayString("en", "nothing"), "");
  EXPECT_THAT(dictionary_.GetDisplayStrings("nothing"), testing::IsEmpty());
  EXPECT_THAT(host_.Calls(), ElementsAre("GetObjectValue(nothing)", "GetObjectValue(nothing)"));
}

TEST_F(DisplayWordTest, ANullEntryAsAnObjectIsANewEmptyOne) {
  EXPECT_EQ(TextOf(dictionary_.GetDisplayJson("nothing")), "{}");
  EXPECT_THAT(host_.Calls(), ElementsAre("GetObjectValue(nothing)", "CJsonObject()"));
}

TEST_F(DisplayWordTest, AllTextsAreReadInTheOrderOfTheEntry) {
  EXPECT_THAT(dictionary_.GetDisplayStrings("class"), ElementsAre("Class", "Klasse"));
  EXPECT_THAT(host_.Calls(),
              ElementsAre("GetObjectValue(class)", "GetAllKey()", "GetStringValue(en)", "GetStringValue(de)"));
}

class ConversionTest : public otherhost::CHostTest {
 protected:
  ConversionTest() { host_.files[otherhost::kDictionaryPath] = otherhost::DisplayDictionary(); }

  void Convert(const std::string& kind, const SValue& section) {
    const std::string plural = kind == "class" ? "classes" : kind + "s";
    converter_.ConversionMetaInfo(kind, "inserted_" + plural, "deleted_" + plural, "updated_" + plural,
                                  MakeJson(section), text_);
  }

  /// The calls that look a word up or read a text.
  std::vector<std::string> Readings() const { return host_.CallsWith({"GetObjectValue", "GetStringValue"}); }

  static SValue Names(const std::string& name) {
    return Object({{"internal_name", name}, {"display_name", name + "!"}});
  }

  CCheckResultConverter converter_{handlerContext_, upgradeContext_};
  std::string text_;
};

TEST_F(ConversionTest, TheDictionaryIsReadBeforeTheLanguageAndNothingElseAtFirst) {
  EXPECT_THAT(host_.Calls(), testing::IsEmpty());
  Convert("class", Object());
  EXPECT_THAT(host_.CallsWith({"Path", "File", "Lang"}),
              ElementsAre("GetUpgradeCfgPath()", "CreateFromFile(/cfg/multilanguage/strings/info.json)", "GetLang()"));
  EXPECT_EQ(text_, "\n");
  Convert("link", Object());
  EXPECT_EQ(host_.CallsWith({"Path", "File", "Lang"}).size(), 3U);
}

TEST_F(ConversionTest, WhatIsNotFoundIsNotWrittenWhateverIsBesideTheAnswer) {
  Convert("class", Object({{"updated_classes", Array({Object({{"internal_name", "A"},
                                                              {"display_name", "A!"},
                                                              {"deleted_behaviors", Array({"b"})},
                                                              {"deleted_properties", Array({Names("P")})}}),
                                                      Names("Skipped")})}}));
  EXPECT_EQ(text_,
            "\n<updated><class>:\n"
            "  <internal_name>:A,<display_name>:A!\n"
            "   <deleted><behavior>:\n"
            "     b\n"
            "  <internal_name>:A,<display_name>:A!\n"
            "   <deleted><property>:\n"
            "    <internal_name>:P,<display_name>:P!\n"
            "\n\n");
}

TEST_F(ConversionTest, EveryWordIsAskedForWhereItIsWritten) {
  Convert("class", Object({{"deleted_classes", Array({Names("A"), Names("B")})}}));
  EXPECT_THAT(Readings(), ElementsAre("GetObjectValue(deleted)", "GetObjectValue(class)",  //
                                      "GetStringValue(internal_name)", "GetStringValue(display_name)",
                                      "GetObjectValue(internal_name)", "GetObjectValue(display_name)",
                                      "GetStringValue(internal_name)", "GetStringValue(display_name)",
                                      "GetObjectValue(internal_name)", "GetObjectValue(display_name)"));
}

TEST_F(ConversionTest, OfAChangeTheNamesAreReadThenTheClientsValueThenTheOriginals) {
  // The sides have the names and the field under keys that tell them apart.
  const SValue change = Object({{"updated_field", "length"},
                                {"client_property", Object({{"internal_name", "P"}, {"length", 64U}})},
                                {"original_property", Object({{"length", 32U}})}});
  const SValue section =
      Object({{"updated_links", Array({Object({{"internal_name", "L"}, {"updated_properties", Array({change})}})})}});
  Convert("link", section);
  EXPECT_EQ(text_,
            "\n<updated><link>:\n"
            "  <internal_name>:L,<display_name>:?\n"
            "   <updated><property>:\n"
            "    <internal_name>:P,<display_name>:?\n"
            "     length:32<updated_to>:64\n"
            "\n");
  const std::vector<std::string> readings = Readings();
  ASSERT_EQ(readings.size(), 18U);
  EXPECT_THAT(
      std::vector<std::string>(readings.begin() + 8, readings.end()),
      ElementsAre("GetStringValue(updated_field)", "GetObjectValue(client_property)",
                  "GetObjectValue(original_property)", "GetStringValue(internal_name)", "GetStringValue(display_name)",
                  "GetStringValue(length)", "GetStringValue(length)", "GetObjectValue(internal_name)",
                  "GetObjectValue(display_name)", "GetObjectValue(updated_to)"));
}

TEST_F(ConversionTest, ABehaviorWordIsFetchedOnceForAllClasses) {
  const SValue element = Object({{"internal_name", "A"}, {"inserted_behaviors", Array({"b"})}});
  Convert("class", Object({{"updated_classes", Array({element, element})}}));
  EXPECT_THAT(host_.CallsWith({"GetObjectValue(behavior)", "GetObjectValue(inserted)"}),
              ElementsAre("GetObjectValue(behavior)", "GetObjectValue(inserted)", "GetObjectValue(inserted)"));
}

TEST_F(ConversionTest, AFailureInTheMiddleLeavesTheTextAndTheNextConversionIsWhole) {
  const SValue section = Object({{"deleted_links", Array({Names("A"), Names("B")})}});
  Convert("link", Object());
  Convert("link", section);
  const std::string whole = text_.substr(1);
  const std::size_t calls = host_.Calls().size();
  text_ = "earlier";
  host_.ForgetCalls();
  Convert("link", section);
  const std::size_t count = host_.Calls().size();
  ASSERT_GT(count, 10U);
  ASSERT_LT(count, calls);
  for (std::size_t number = 1; number <= count; ++number) {
    text_ = "earlier";
    host_.ForgetCalls();
    host_.FailAt(number);
    ExpectFailure([&] { Convert("link", section); });
    EXPECT_EQ(text_, "earlier") << number;
    host_.FailNoMore();
    Convert("link", section);
    EXPECT_EQ(text_, "earlier" + whole) << number;
  }
}

TEST_F(ConversionTest, AFailureToReadTheDictionaryIsTriedAgainByTheNextConversion) {
  for (const std::string call : {"GetUpgradeCfgPath", "CreateFromFile", "GetLang"}) {
    CCheckResultConverter converter(handlerContext_, upgradeContext_);
    host_.FailAt(call);
    const auto convert = [&] {
      converter.ConversionMetaInfo("link", "i", "deleted_links", "u",
                                   MakeJson(Object({{"deleted_links", Array({Names("A")})}})), text_);
    };
    text_.clear();
    ExpectFailure(convert);
    EXPECT_EQ(text_, "") << call;
    host_.FailNoMore();
    convert();
    EXPECT_EQ(text_, "\n<deleted><link>:\n <internal_name>:A,<display_name>:A!\n\n") << call;
  }
}

}  // namespace
