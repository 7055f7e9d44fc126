#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/CheckResultConverterPeer.h"
#include "checkmeta2024/LogLines.h"
#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"

namespace {

using test::Convert;
using test::ErrorLineAt;
using test::ErrorOf;
using test::Json;
using test::Objects;
using test::SError;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kFile = "CheckResultConverter.cpp";
constexpr const char* kFunction = "CCheckResultConverter::ConversionMetaInfoByType";

constexpr const char* kPart = R"([{"internal_name": "Part", "display_name": "A part"}])";

class CheckResultConverterBlockTest : public test::ConverterTest {};

TEST_F(CheckResultConverterBlockTest, ASectionWithoutListsGivesAnEmptyLine) {
  EXPECT_EQ(Text("class", "{}"), "\n");
}

TEST_F(CheckResultConverterBlockTest, EmptyListsWriteNoHeader) {
  EXPECT_EQ(Text("class", R"({"inserted_classes": []})"), "\n");
  EXPECT_EQ(Text("link", R"({"inserted_links": [], "deleted_links": [], "updated_links": []})"), "\n");
}

TEST_F(CheckResultConverterBlockTest, TwoInsertedClassesAreAHeaderTwoLinesAndAnEmptyLine) {
  EXPECT_EQ(Text("class", R"({"inserted_classes": [
              {"internal_name": "Part", "display_name": "A part", "class_id": 1, "table_name": "T_PART"},
              {"internal_name": "Document", "display_name": "", "class_id": 2, "table_name": "T_DOC"}]})"),
            "\n"
            "Inserted classes:\n"
            " name:Part,shown as:A part\n"
            " name:Document,shown as:\n"
            "\n");
}

TEST_F(CheckResultConverterBlockTest, EveryKindHasABlockOfItsInsertedAndOneOfItsDeletedElements) {
  const std::string line = " name:Part,shown as:A part\n";
  const auto section = [](const std::string& plural) {
    return R"({"deleted_)" + plural + "\": " + kPart + R"(, "inserted_)" + plural + "\": " + kPart + "}";
  };
  EXPECT_EQ(Text("class", section("classes")), "\nInserted classes:\n" + line + "\nDeleted classes:\n" + line + "\n");
  EXPECT_EQ(Text("link", section("links")), "\nInserted links:\n" + line + "\nDeleted links:\n" + line + "\n");
  EXPECT_EQ(Text("behavior", section("behaviors")),
            "\nInserted behaviors:\n" + line + "\nDeleted behaviors:\n" + line + "\n");
}

TEST_F(CheckResultConverterBlockTest, InsertedDeletedAndUpdatedFollowInThisOrderWhateverTheOrderOfTheMembers) {
  EXPECT_EQ(Text("class", R"({"updated_classes": [{"internal_name": "U", "display_name": "u"}],
                              "deleted_classes": [{"internal_name": "D", "display_name": "d"}],
                              "inserted_classes": [{"internal_name": "I", "display_name": "i"}]})"),
            "\n"
            "Inserted classes:\n"
            " name:I,shown as:i\n"
            "\n"
            "Deleted classes:\n"
            " name:D,shown as:d\n"
            "\n"
            "Updated classes:\n"
            "\n");
}

TEST_F(CheckResultConverterBlockTest, ListsOfOtherKindsAreNotRead) {
  EXPECT_EQ(Text("class", R"({"inserted_links": )" + std::string(kPart) + "}"), "\n");
}

TEST_F(CheckResultConverterBlockTest, NamesAreWrittenAsTheyStand) {
  EXPECT_EQ(Text("link", R"({"deleted_links": [{"internal_name": " a,b:\n", "display_name": "\"零件\""}]})"),
            "\n"
            "Deleted links:\n"
            " name: a,b:\n,shown as:\"零件\"\n"
            "\n");
}

TEST_F(CheckResultConverterBlockTest, ThreeConversionsIntoOneTextFollowOneAnother) {
  std::string text = "before";
  Convert(converter_, "behavior", Json(R"({"deleted_behaviors": )" + std::string(kPart) + "}"), text);
  Convert(converter_, "class", Json("{}"), text);
  Convert(converter_, "link", Json(R"({"deleted_links": )" + std::string(kPart) + "}"), text);
  EXPECT_EQ(text,
            "before"
            "\n"
            "Deleted behaviors:\n"
            " name:Part,shown as:A part\n"
            "\n"
            "\n"
            "\n"
            "Deleted links:\n"
            " name:Part,shown as:A part\n"
            "\n");
}

TEST_F(CheckResultConverterBlockTest, AMissingOrWronglyTypedListIsSkippedAndSetsTheSectionsLastError) {
  std::string text;
  for (const char* missing : {"{}", R"({"updated_classes": null})"}) {
    const auto section = Json(missing);
    Convert(converter_, "class", section, text);
    EXPECT_EQ(section->GetLastError(), 0xA4C0003E) << missing;
  }
  for (const char* wrongType : {R"({"updated_classes": "x"})", R"({"updated_classes": {}})"}) {
    const auto section = Json(wrongType);
    Convert(converter_, "class", section, text);
    EXPECT_EQ(section->GetLastError(), 0xA4C00004) << wrongType;
  }
  EXPECT_EQ(text, "\n\n\n\n");
}

TEST_F(CheckResultConverterBlockTest, AnItemThatIsNoObjectThrowsAndNothingOfTheCallIsAppended) {
  for (const std::string key : {"inserted_classes", "deleted_classes", "updated_classes"}) {
    std::string text;
    Convert(converter_, "class", Json(R"({"deleted_classes": )" + std::string(kPart) + "}"), text);
    const std::string earlier = text;
    const auto section = Json("{\"" + key + R"(": [{"internal_name": "A", "display_name": "a"}, "B"]})");
    EXPECT_EQ(ErrorOf([&] { Convert(converter_, "class", section, text); }),
              (SError{0xA4C00004, "json member [" + key + "] is not Array Object!"}));
    EXPECT_EQ(text, earlier);
    EXPECT_EQ(earlier, "\nDeleted classes:\n name:Part,shown as:A part\n\n");
  }
}

TEST_F(CheckResultConverterBlockTest, AnElementWithoutANameThrowsWhatTheHostThrows) {
  EXPECT_EQ(ErrorOf([this] { Text("class", R"({"inserted_classes": [{"display_name": "a"}]})"); }),
            (SError{0xA4C0003E, "json member [internal_name] not exist!"}));
  EXPECT_EQ(ErrorOf([this] { Text("class", R"({"inserted_classes": [{"internal_name": "A"}]})"); }),
            (SError{0xA4C0003E, "json member [display_name] not exist!"}));
}

TEST_F(CheckResultConverterBlockTest, ACallAfterAFailedOneBeginsAnew) {
  ErrorOf([this] { Text("class", R"({"inserted_classes": [{"internal_name": "A"}]})"); });
  EXPECT_EQ(Text("class", "{}"), "\n");
}

TEST_F(CheckResultConverterBlockTest, ByTypeKnowsTwoChangesAndFiveTypes) {
  CCheckResultConverterPeer peer(converter_);
  const test::CLogCapture log;
  const std::string line = " name:Part,shown as:A part\n\n";
  EXPECT_EQ(peer.ByType("", "inserted", "class", Objects(kPart)), "Inserted classes:\n" + line);
  EXPECT_EQ(peer.ByType("", "deleted", "link", Objects(kPart)), "Deleted links:\n" + line);
  EXPECT_EQ(peer.ByType("", "inserted", "behavior", Objects(kPart)), "Inserted behaviors:\n" + line);
  EXPECT_EQ(peer.ByType("", "deleted", "method", Objects(kPart)), "Deleted methods:\n" + line);
  EXPECT_EQ(peer.ByType("", "inserted", "property", Objects(kPart)), "Inserted properties:\n" + line);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(CheckResultConverterBlockTest, ByTypeIndentsTheHeaderAndEachLineButNotTheClosingOne) {
  CCheckResultConverterPeer peer(converter_);
  EXPECT_EQ(peer.ByType("   ", "inserted", "property", Objects(R"([{"internal_name": "A", "display_name": "a"},
                                    {"internal_name": "B", "display_name": "b"}])")),
            "   Inserted properties:\n"
            "    name:A,shown as:a\n"
            "    name:B,shown as:b\n"
            "\n");
}

TEST_F(CheckResultConverterBlockTest, ByTypeWritesAndLogsNothingForAnEmptyList) {
  CCheckResultConverterPeer peer(converter_);
  const test::CLogCapture log;
  EXPECT_EQ(peer.ByType("", "inserted", "class", {}), "");
  EXPECT_EQ(peer.ByType("  ", "unknown", "unknown", {}), "");
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(CheckResultConverterBlockTest, AnUnknownChangeIsLoggedAtItsLineAndLeavesOutIndentAndWord) {
  CCheckResultConverterPeer peer(converter_);
  const test::CLogCapture log;
  EXPECT_EQ(peer.ByType("  ", "updated", "class", Objects(kPart)),
            "classes:\n"
            "   name:Part,shown as:A part\n"
            "\n");
  EXPECT_THAT(log.Lines(), ElementsAre(ErrorLineAt(87, kFile, kFunction,
                                                   "meta element check type error.check type:updated"
                                                   "<hr=0xA4520008>")));
}

TEST_F(CheckResultConverterBlockTest, AnUnknownTypeIsLoggedAtItsLineAndLeavesOutWordAndLineEnd) {
  CCheckResultConverterPeer peer(converter_);
  const test::CLogCapture log;
  EXPECT_EQ(peer.ByType("  ", "deleted", "field", Objects(kPart)),
            "  Deleted    name:Part,shown as:A part\n"
            "\n");
  EXPECT_THAT(log.Lines(), ElementsAre(ErrorLineAt(115, kFile, kFunction,
                                                   "meta element check type error.meta type:field"
                                                   "<hr=0xA4520008>")));
}

TEST_F(CheckResultConverterBlockTest, WordsMatchExactlyAndBothUnknownOnesAreLogged) {
  CCheckResultConverterPeer peer(converter_);
  const test::CLogCapture log;
  EXPECT_EQ(peer.ByType("", "Inserted", "", Objects(kPart)), " name:Part,shown as:A part\n\n");
  EXPECT_THAT(
      log.Lines(),
      ElementsAre(ErrorLineAt(87, kFile, kFunction, "meta element check type error.check type:Inserted<hr=0xA4520008>"),
                  ErrorLineAt(115, kFile, kFunction, "meta element check type error.meta type:<hr=0xA4520008>")));
}

TEST_F(CheckResultConverterBlockTest, AnUnknownKindOfSectionIsLoggedForEachBlockAndStillConverted) {
  const test::CLogCapture log;
  std::string text;
  converter_.ConversionMetaInfo("table", "in", "out", "changed",
                                Json(R"({"in": )" + std::string(kPart) + R"(, "out": )" + kPart + "}"), text);
  EXPECT_EQ(text,
            "\n"
            "Inserted  name:Part,shown as:A part\n"
            "\n"
            "Deleted  name:Part,shown as:A part\n"
            "\n");
  const auto line = ErrorLineAt(115, kFile, kFunction, "meta element check type error.meta type:table<hr=0xA4520008>");
  EXPECT_THAT(log.Lines(), ElementsAre(line, line));
}

}  // namespace
