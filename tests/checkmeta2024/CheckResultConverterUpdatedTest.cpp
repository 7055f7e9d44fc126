#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/CheckResultConverterPeer.h"
#include "support/Error.h"
#include "support/LogCapture.h"

namespace {

using test::Convert;
using test::ErrorOf;
using test::Json;
using test::Objects;
using test::SError;
using testing::IsEmpty;

/// An update of the property "Code", shown as "Number".
std::string Update(const std::string& field, const std::string& originalValue, const std::string& clientValue) {
  return R"({"updated_field": ")" + field +
         R"(", "client_property": {"internal_name": "Code", "display_name": "Number", ")" + field +
         "\": " + clientValue + R"(}, "original_property": {")" + field + "\": " + originalValue + "}}";
}

class CheckResultConverterUpdatedTest : public test::ConverterTest {};

TEST_F(CheckResultConverterUpdatedTest, AClassWithOneInsertedPropertyHasNoBehaviorLines) {
  EXPECT_EQ(Text("class", R"({"updated_classes": [{
              "inserted_properties": [{"internal_name": "Code", "display_name": "Number"}],
              "internal_name": "Part", "display_name": "A part"}]})"),
            "\n"
            "Updated classes:\n"
            "  name:Part,shown as:A part\n"
            "   Inserted properties:\n"
            "    name:Code,shown as:Number\n"
            "\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, AClassWithoutNestedListsIsAHeaderAndAnEmptyLine) {
  EXPECT_EQ(Text("class", R"({"updated_classes": [{"internal_name": "Part", "display_name": "A part"}]})"),
            "\n"
            "Updated classes:\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, AnEmptyListOfElementsWritesNothing) {
  CCheckResultConverterPeer peer(converter_);
  EXPECT_EQ(peer.Updated("", "class", {}), "");
}

TEST_F(CheckResultConverterUpdatedTest, ALinkHasAPropertyPassOnly) {
  EXPECT_EQ(Text("link", R"({"updated_links": [{"internal_name": "Uses", "display_name": "A use",
              "inserted_behaviors": ["versioned"],
              "inserted_methods": [{"internal_name": "Revise", "display_name": "r"}],
              "deleted_properties": [{"internal_name": "Unit", "display_name": "u"}]}]})"),
            "\n"
            "Updated links:\n"
            "  name:Uses,shown as:A use\n"
            "   Deleted properties:\n"
            "    name:Unit,shown as:u\n"
            "\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, ABehaviorHasAMethodPassBeforeItsPropertyPass) {
  EXPECT_EQ(Text("behavior", R"({"updated_behaviors": [{"internal_name": "Versioned", "display_name": "V",
              "updated_properties": [)" +
                                 Update("length", "32", "64") + R"(],
              "inserted_behaviors": ["ignored"],
              "deleted_methods": [{"internal_name": "Restore", "display_name": "r"}],
              "inserted_methods": [{"internal_name": "Revise", "display_name": "R"}]}]})"),
            "\n"
            "Updated behaviors:\n"
            "  name:Versioned,shown as:V\n"
            "   Inserted methods:\n"
            "    name:Revise,shown as:R\n"
            "\n"
            "   Deleted methods:\n"
            "    name:Restore,shown as:r\n"
            "\n"
            "\n"
            "  name:Versioned,shown as:V\n"
            "   Updated properties:\n"
            "    name:Code,shown as:Number\n"
            "     length:32 -> :64\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, AClassHasABehaviorPassBeforeItsPropertyPass) {
  EXPECT_EQ(Text("class", R"({"updated_classes": [{"internal_name": "Part", "display_name": "A part",
              "inserted_methods": [{"internal_name": "ignored", "display_name": ""}],
              "inserted_properties": [{"internal_name": "Code", "display_name": "Number"}],
              "deleted_behaviors": ["versioned"]}]})"),
            "\n"
            "Updated classes:\n"
            "  name:Part,shown as:A part\n"
            "   Deleted behaviors:\n"
            "     versioned\n"
            "  name:Part,shown as:A part\n"
            "   Inserted properties:\n"
            "    name:Code,shown as:Number\n"
            "\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, APassWalksAllElementsBeforeTheNextPassBegins) {
  EXPECT_EQ(Text("behavior", R"({"updated_behaviors": [
              {"internal_name": "A", "display_name": "a",
               "inserted_methods": [{"internal_name": "M", "display_name": "m"}],
               "deleted_properties": [{"internal_name": "P", "display_name": "p"}]},
              {"internal_name": "Skipped", "display_name": ""},
              {"internal_name": "B", "display_name": "b",
               "inserted_methods": [{"internal_name": "N", "display_name": "n"}]}]})"),
            "\n"
            "Updated behaviors:\n"
            "  name:A,shown as:a\n"
            "   Inserted methods:\n"
            "    name:M,shown as:m\n"
            "\n"
            "  name:B,shown as:b\n"
            "   Inserted methods:\n"
            "    name:N,shown as:n\n"
            "\n"
            "\n"
            "  name:A,shown as:a\n"
            "   Deleted properties:\n"
            "    name:P,shown as:p\n"
            "\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, PropertiesStandAsInsertedDeletedUpdatedAndUpdatesHaveNoClosingLine) {
  EXPECT_EQ(Text("link", R"({"updated_links": [{"internal_name": "Uses", "display_name": "A use",
              "updated_properties": [)" +
                             Update("type", R"("string")", R"("text")") + "," + Update("max", R"("")", R"("9")") + R"(],
              "deleted_properties": [{"internal_name": "D", "display_name": "d"}],
              "inserted_properties": [{"internal_name": "I", "display_name": "i"}]}]})"),
            "\n"
            "Updated links:\n"
            "  name:Uses,shown as:A use\n"
            "   Inserted properties:\n"
            "    name:I,shown as:i\n"
            "\n"
            "   Deleted properties:\n"
            "    name:D,shown as:d\n"
            "\n"
            "   Updated properties:\n"
            "    name:Code,shown as:Number\n"
            "     type:string -> :text\n"
            "    name:Code,shown as:Number\n"
            "     max: -> :9\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, AnEmptyNestedArrayStillGivesTheElementItsLine) {
  for (const std::string key : {"inserted_properties", "deleted_properties", "updated_properties"}) {
    EXPECT_EQ(Text("link",
                   R"({"updated_links": [{"internal_name": "Uses", "display_name": "A use", ")" + key + R"(": []}]})"),
              "\n"
              "Updated links:\n"
              "  name:Uses,shown as:A use\n"
              "\n")
        << key;
  }
}

TEST_F(CheckResultConverterUpdatedTest, ANestedListOfAnotherTypeIsSkipped) {
  EXPECT_EQ(Text("link", R"({"updated_links": [{"internal_name": "Uses", "display_name": "A use",
              "inserted_properties": "x", "deleted_properties": null, "updated_properties": {}}]})"),
            "\n"
            "Updated links:\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, AnUnknownTypeIsAHeaderWithoutTypeAndNothingElse) {
  const test::CLogCapture log;
  CCheckResultConverterPeer peer(converter_);
  const auto elements = Objects(R"([{"internal_name": "Part", "display_name": "A part",
    "inserted_properties": [{"internal_name": "Code", "display_name": "Number"}]}])");
  EXPECT_EQ(peer.Updated(" ", "method", elements), " Updated ");
  EXPECT_EQ(peer.Updated("", "Class", elements), "Updated ");
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(CheckResultConverterUpdatedTest, TheIndentOfTheWholeReportIsAddedEverywhere) {
  CCheckResultConverterPeer peer(converter_);
  EXPECT_EQ(peer.Updated("  ", "link",
                         Objects(R"([{"internal_name": "Uses", "display_name": "A use",
              "updated_properties": [)" +
                                 Update("min", R"("1")", R"("2")") + "]}]")),
            "  Updated links:\n"
            "    name:Uses,shown as:A use\n"
            "     Updated properties:\n"
            "      name:Code,shown as:Number\n"
            "       min:1 -> :2\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, NestedKindsAreWrittenInTheirOrderAndOthersSkipped) {
  CCheckResultConverterPeer peer(converter_);
  const auto elements = Objects(R"([{"internal_name": "X", "display_name": "x", "deleted_behaviors": ["b"],
    "deleted_methods": [{"internal_name": "M", "display_name": "m"}],
    "deleted_properties": [{"internal_name": "P", "display_name": "p"}]}])");
  EXPECT_EQ(
      peer.Nested("", {"property", "class", "method", "Property", "Method", "Behavior", "behavior", ""}, elements),
      " name:X,shown as:x\n"
      "  Deleted properties:\n"
      "   name:P,shown as:p\n"
      "\n"
      "\n"
      " name:X,shown as:x\n"
      "  Deleted methods:\n"
      "   name:M,shown as:m\n"
      "\n"
      "\n"
      " name:X,shown as:x\n"
      "  Deleted behaviors:\n"
      "    b\n");
  EXPECT_EQ(peer.Nested("", {}, elements), "");
}

TEST_F(CheckResultConverterUpdatedTest, TheKindsOfAnElementAreDispatchedAsByTheirList) {
  CCheckResultConverterPeer peer(converter_);
  const auto elements = Objects(R"([{"internal_name": "X", "display_name": "x", "deleted_behaviors": ["b"],
    "deleted_methods": [{"internal_name": "M", "display_name": "m"}],
    "deleted_properties": [{"internal_name": "P", "display_name": "p"}]}])");
  EXPECT_EQ(peer.Updated("", "class", elements),
            "Updated classes:\n" + peer.Nested(" ", {"behavior", "property"}, elements));
  EXPECT_EQ(peer.Updated("", "link", elements), "Updated links:\n" + peer.Nested(" ", {"property"}, elements));
  EXPECT_EQ(peer.Updated("", "behavior", elements),
            "Updated behaviors:\n" + peer.Nested(" ", {"method", "property"}, elements));
}

TEST_F(CheckResultConverterUpdatedTest, APassWithoutElementsIsItsClosingLine) {
  CCheckResultConverterPeer peer(converter_);
  EXPECT_EQ(peer.NestedMethods("  ", {}), "\n");
}

TEST_F(CheckResultConverterUpdatedTest, UpdatedMethodsAreWrittenAsUpdatedProperties) {
  EXPECT_EQ(Text("behavior", R"({"updated_behaviors": [{"internal_name": "Versioned", "display_name": "V",
              "updated_methods": [{"updated_field": "display_name",
                "client_property": {"internal_name": "Revise", "display_name": "New"},
                "original_property": {"display_name": "Old"}}]}]})"),
            "\n"
            "Updated behaviors:\n"
            "  name:Versioned,shown as:V\n"
            "   Updated properties:\n"
            "    name:Revise,shown as:New\n"
            "     display_name:Old -> :New\n"
            "\n"
            "\n");
}

TEST_F(CheckResultConverterUpdatedTest, AChangeOfEveryFieldIsWrittenAsItsKeyWithTheOriginalValueFirst) {
  CCheckResultConverterPeer peer(converter_);
  const auto changes =
      Objects("[" + Update("type", R"("int32")", R"("int64")") + "," + Update("length", "32", "64") + "," +
              Update("precision", "0", "65535") + "," + Update("max", R"("10")", R"("")") + "," +
              Update("min", R"("-1")", R"("0")") + "," + Update("default_value", R"("a b")", R"("类")") + "]");
  const std::string line = "  name:Code,shown as:Number\n";
  EXPECT_EQ(peer.Changes(" ", changes), " Updated properties:\n" +                 //
                                            line + "   type:int32 -> :int64\n" +   //
                                            line + "   length:32 -> :64\n" +       //
                                            line + "   precision:0 -> :65535\n" +  //
                                            line + "   max:10 -> :\n" +            //
                                            line + "   min:-1 -> :0\n" +           //
                                            line + "   default_value:a b -> :类\n");
}

TEST_F(CheckResultConverterUpdatedTest, TheLargestLengthIsWrittenAsDecimalText) {
  CCheckResultConverterPeer peer(converter_);
  EXPECT_EQ(peer.Changes("", Objects("[" + Update("length", "4294967295", "0") + "]")),
            "Updated properties:\n"
            " name:Code,shown as:Number\n"
            "  length:4294967295 -> :0\n");
}

TEST_F(CheckResultConverterUpdatedTest, AnEmptyListOfChangesWritesNothing) {
  CCheckResultConverterPeer peer(converter_);
  EXPECT_EQ(peer.Changes("  ", {}), "");
}

TEST_F(CheckResultConverterUpdatedTest, AChangeWithANullPropertyIsSkipped) {
  CCheckResultConverterPeer peer(converter_);
  const std::string side = R"({"internal_name": "Skipped", "display_name": "s", "type": "text"})";
  const auto changes =
      Objects(R"([{"updated_field": "type", "client_property": null, "original_property": )" + side +
              R"(}, {"updated_field": "type", "original_property": null, "client_property": )" + side + R"(},
                                   {"updated_field": "type", "client_property": null, "original_property": null}, )" +
              Update("length", "1", "2") + "]");
  EXPECT_EQ(peer.Changes("", changes),
            "Updated properties:\n"
            " name:Code,shown as:Number\n"
            "  length:1 -> :2\n");
}

struct SBadChange {
  std::string name;
  std::string change;
  std::uint32_t code;
  std::string message;
};

void PrintTo(const SBadChange& row, std::ostream* output) {
  *output << row.name;
}

class CheckResultConverterBadChangeTest : public test::ConverterTest, public testing::WithParamInterface<SBadChange> {};

TEST_P(CheckResultConverterBadChangeTest, TheExceptionLeavesTheConversionAndItsTextIsNotAppended) {
  std::string text = "earlier";
  const auto section = Json(R"({"deleted_links": [{"internal_name": "A", "display_name": "a"}],
    "updated_links": [{"internal_name": "Uses", "display_name": "A use", "updated_properties": [)" +
                            GetParam().change + "]}]}");
  EXPECT_EQ(ErrorOf([&] { Convert(converter_, "link", section, text); }),
            (SError{GetParam().code, GetParam().message}));
  EXPECT_EQ(text, "earlier");
}

INSTANTIATE_TEST_SUITE_P(
    EachFault, CheckResultConverterBadChangeTest,
    testing::Values(
        SBadChange{"NoField", R"({"client_property": {}, "original_property": {}})", 0xA4C0003E,
                   "json member [updated_field] not exist!"},
        SBadChange{"NoClient", R"({"updated_field": "type", "original_property": {}})", 0xA4C0003E,
                   "json member [client_property] not exist!"},
        SBadChange{"ClientIsText", R"({"updated_field": "type", "client_property": "x", "original_property": {}})",
                   0xA4C00004, "json member [client_property] is not Object!"},
        SBadChange{"NoOriginal", R"({"updated_field": "type", "client_property": {}})", 0xA4C0003E,
                   "json member [original_property] not exist!"},
        SBadChange{"OriginalIsArray", R"({"updated_field": "type", "client_property": {}, "original_property": []})",
                   0xA4C00004, "json member [original_property] is not Object!"},
        SBadChange{"NoClientValue",
                   R"({"updated_field": "type", "client_property": {"internal_name": "A", "display_name": "a"},
                       "original_property": {"type": "x"}})",
                   0xA4C0003E, "json member [type] not exist!"},
        SBadChange{"NoOriginalValue",
                   R"({"updated_field": "type", "original_property": {},
                       "client_property": {"internal_name": "A", "display_name": "a", "type": "x"}})",
                   0xA4C0003E, "json member [type] not exist!"},
        SBadChange{"NoClientName",
                   R"({"updated_field": "type", "original_property": {"type": "x"},
                       "client_property": {"display_name": "a", "type": "x"}})",
                   0xA4C0003E, "json member [internal_name] not exist!"},
        SBadChange{"NoObject", R"("x")", 0xA4C00004, "json member [updated_properties] is not Array Object!"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
