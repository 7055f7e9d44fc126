#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "checkmeta2024/CheckResultConverterPeer.h"
#include "support/Error.h"

// Each member of a change entry in turn missing, null or of a wrong type, in every list that holds such entries.
namespace {

using test::Convert;
using test::ErrorOf;
using test::Json;
using test::SError;

/// Values of every type but the strings and objects that an entry needs. The empty one stands for no member at all.
const std::vector<std::string> kOtherValues = {"", "null", "true", "false", "7", "-1.5", "[]", R"(["x"])"};

struct SMember {
  std::string parent;
  std::string name;
  std::string value;
};

/// A sound change of the length of "Code", shown as "Number", from 32 to 64, with one member replaced.
std::string Entry(const std::string& parent = "", const std::string& name = "", const std::string& value = "") {
  const auto object = [&](const std::string& own, const std::vector<SMember>& members) {
    std::string text;
    for (const SMember& member : members) {
      const std::string& used = own == parent && member.name == name ? value : member.value;
      if (!used.empty()) {
        text += (text.empty() ? "\"" : ", \"") + member.name + "\": " + used;
      }
    }
    return "{" + text + "}";
  };
  const std::string client =
      object("client_property",
             {{"", "internal_name", R"("Code")"}, {"", "display_name", R"("Number")"}, {"", "length", "64"}});
  const std::string original = object("original_property", {{"", "length", "32"}});
  return object(
      "", {{"", "updated_field", R"("length")"}, {"", "client_property", client}, {"", "original_property", original}});
}

const std::string kSoundLines = "    name:Code,shown as:Number\n     length:32 -> :64\n";

/// A list of change entries of an updated element, and how the text about it begins and ends.
struct SChangeList {
  std::string name;
  std::string kind;
  std::string elements;
  std::string key;
  std::string before;
  std::string after;
};

void PrintTo(const SChangeList& list, std::ostream* output) {
  *output << list.name;
}

class CheckResultConverterMalformedEntryTest : public test::ConverterTest,
                                               public testing::WithParamInterface<SChangeList> {
 protected:
  static std::shared_ptr<CJsonObject> Section(const std::string& entries) {
    return Json("{\"" + GetParam().elements + R"(": [{"internal_name": "X", "display_name": "x", ")" + GetParam().key +
                "\": [" + entries + "]}]}");
  }

  /// The text of entries that are all sound, or left out.
  static std::string Expected(const std::string& lines) {
    return GetParam().before + "  name:X,shown as:x\n   Updated properties:\n" + lines + GetParam().after;
  }

  std::string TextOf(const std::string& entries) {
    std::string text;
    Convert(converter_, GetParam().kind, Section(entries), text);
    return text;
  }

  /// Between two sound entries the malformed one throws, and the next conversion shows nothing of it.
  void ExpectThrows(const std::string& entry, const SError& error) {
    std::string text = "earlier";
    EXPECT_EQ(
        ErrorOf([&] { Convert(converter_, GetParam().kind, Section(Entry() + "," + entry + "," + Entry()), text); }),
        error)
        << entry;
    EXPECT_EQ(text, "earlier") << entry;
    EXPECT_EQ(TextOf(Entry()), Expected(kSoundLines)) << entry;
  }

  void ExpectSkipped(const std::string& entry) {
    EXPECT_EQ(TextOf(Entry() + "," + entry + "," + Entry()), Expected(kSoundLines + kSoundLines)) << entry;
  }
};

SError Missing(const std::string& member) {
  return {0xA4C0003E, "json member [" + member + "] not exist!"};
}

SError WrongType(const std::string& member, const std::string& type) {
  return {0xA4C00004, "json member [" + member + "] is not " + type + "!"};
}

bool IsNumber(const std::string& value) {
  return value == "7" || value == "-1.5";
}

TEST_P(CheckResultConverterMalformedEntryTest, ASoundEntryIsWritten) {
  EXPECT_EQ(TextOf(Entry()), Expected(kSoundLines));
}

TEST_P(CheckResultConverterMalformedEntryTest, APropertyThatIsNullSkipsItsEntry) {
  for (const std::string property : {"client_property", "original_property"}) {
    ExpectSkipped(Entry("", property, "null"));
  }
  ExpectSkipped(R"({"updated_field": "length", "client_property": null, "original_property": null})");
  ExpectSkipped(R"({"updated_field": "length", "client_property": null, "original_property": {}})");
  ExpectSkipped(R"({"updated_field": "length", "client_property": {}, "original_property": null})");
}

TEST_P(CheckResultConverterMalformedEntryTest, AnEntryWithANullPropertyThrowsForWhatElseIsWrong) {
  ExpectThrows(R"({"updated_field": "length", "client_property": null})", Missing("original_property"));
  ExpectThrows(R"({"updated_field": "length", "original_property": null})", Missing("client_property"));
  ExpectThrows(R"({"client_property": null, "original_property": null})", Missing("updated_field"));
  ExpectThrows(R"({"updated_field": null, "client_property": null, "original_property": {}})",
               WrongType("updated_field", "String"));
  ExpectThrows(R"({"updated_field": "length", "client_property": null, "original_property": "x"})",
               WrongType("original_property", "Object"));
}

TEST_P(CheckResultConverterMalformedEntryTest, APropertyThatIsNeitherObjectNorNullThrows) {
  std::vector<std::string> values = kOtherValues;
  values.emplace_back(R"("x")");
  for (const std::string property : {"client_property", "original_property"}) {
    for (const std::string& value : values) {
      if (value != "null") {
        ExpectThrows(Entry("", property, value), value.empty() ? Missing(property) : WrongType(property, "Object"));
      }
    }
  }
}

TEST_P(CheckResultConverterMalformedEntryTest, AFieldThatIsNoTextThrowsAndANumberNamesAMember) {
  for (const std::string& value : kOtherValues) {
    ExpectThrows(Entry("", "updated_field", value), value.empty()     ? Missing("updated_field")
                                                    : IsNumber(value) ? Missing(value)
                                                                      : WrongType("updated_field", "String"));
  }
  ExpectThrows(Entry("", "updated_field", "{}"), WrongType("updated_field", "String"));
  ExpectThrows(Entry("", "updated_field", R"("")"), Missing(""));
}

TEST_P(CheckResultConverterMalformedEntryTest, AMemberOfAPropertyThatIsNoTextThrowsAndANumberIsWritten) {
  const std::vector<SMember> members = {
      {"client_property", "internal_name", "name:VALUE,shown as:Number\n     length:32 -> :64"},
      {"client_property", "display_name", "name:Code,shown as:VALUE\n     length:32 -> :64"},
      {"client_property", "length", "name:Code,shown as:Number\n     length:32 -> :VALUE"},
      {"original_property", "length", "name:Code,shown as:Number\n     length:VALUE -> :64"}};
  for (const SMember& member : members) {
    for (const std::string& value : kOtherValues) {
      const std::string entry = Entry(member.parent, member.name, value);
      if (IsNumber(value)) {
        std::string lines = "    " + member.value + "\n";
        lines.replace(lines.find("VALUE"), 5, value);
        EXPECT_EQ(TextOf(entry), Expected(lines)) << entry;
      } else {
        ExpectThrows(entry, value.empty() ? Missing(member.name) : WrongType(member.name, "String"));
      }
    }
    ExpectThrows(Entry(member.parent, member.name, "{}"), WrongType(member.name, "String"));
  }
}

TEST_P(CheckResultConverterMalformedEntryTest, TheFirstFaultInTheOrderOfReadingIsReported) {
  ExpectThrows("{}", Missing("updated_field"));
  ExpectThrows(R"({"updated_field": "length"})", Missing("client_property"));
  ExpectThrows(R"({"updated_field": "length", "client_property": {}})", Missing("original_property"));
  // The names of the client's property, then its value of the field, then the original's.
  ExpectThrows(R"({"updated_field": "length", "client_property": {"length": null}, "original_property": {}})",
               Missing("internal_name"));
  ExpectThrows(R"({"updated_field": "length", "client_property": {"internal_name": "A"}, "original_property": {}})",
               Missing("display_name"));
  const std::string named =
      R"({"updated_field": "length", "client_property": {"internal_name": "A", "display_name": "a")";
  ExpectThrows(named + R"(}, "original_property": {"length": null}})", Missing("length"));
  ExpectThrows(named + R"(, "length": 1}, "original_property": {"length": null}})", WrongType("length", "String"));
}

TEST_P(CheckResultConverterMalformedEntryTest, AnEntryThatIsNoObjectThrows) {
  for (const std::string entry : {"null", "true", "7", R"("x")", "[]"}) {
    ExpectThrows(entry, WrongType(GetParam().key, "Array Object"));
  }
}

INSTANTIATE_TEST_SUITE_P(EachList, CheckResultConverterMalformedEntryTest,
                         testing::Values(SChangeList{"PropertiesOfAClass", "class", "updated_classes",
                                                     "updated_properties", "\nUpdated classes:\n", "\n"},
                                         SChangeList{"PropertiesOfALink", "link", "updated_links", "updated_properties",
                                                     "\nUpdated links:\n", "\n"},
                                         SChangeList{"PropertiesOfABehavior", "behavior", "updated_behaviors",
                                                     "updated_properties", "\nUpdated behaviors:\n\n", "\n"},
                                         SChangeList{"MethodsOfABehavior", "behavior", "updated_behaviors",
                                                     "updated_methods", "\nUpdated behaviors:\n", "\n\n"}),
                         [](const auto& row) { return row.param.name; });

/// A list of elements, methods or properties.
struct SElementList {
  std::string name;
  std::string kind;
  /// The section before and after the list's items.
  std::string before;
  std::string after;
};

void PrintTo(const SElementList& list, std::ostream* output) {
  *output << list.name;
}

class CheckResultConverterMalformedElementTest : public test::ConverterTest,
                                                 public testing::WithParamInterface<SElementList> {};

TEST_P(CheckResultConverterMalformedElementTest, ANameThatIsNoTextThrowsAndNothingOfTheCallIsAppended) {
  std::vector<std::string> values = kOtherValues;
  values.emplace_back("{}");
  for (const std::string name : {"internal_name", "display_name"}) {
    for (const std::string& value : values) {
      if (IsNumber(value)) {
        continue;
      }
      const std::string other = name == "internal_name" ? R"("display_name": "a")" : R"("internal_name": "A")";
      const std::string item = "{" + other + (value.empty() ? "" : ", \"" + name + "\": " + value);
      const auto section = Json(GetParam().before + item + GetParam().after);
      std::string text = "earlier";
      EXPECT_EQ(ErrorOf([&] { Convert(converter_, GetParam().kind, section, text); }),
                value.empty() ? Missing(name) : WrongType(name, "String"))
          << item;
      EXPECT_EQ(text, "earlier") << item;
      EXPECT_EQ(Text(GetParam().kind, "{}"), "\n") << item;
    }
  }
}

const std::string kUpdatedBehavior = R"({"updated_behaviors": [{"internal_name": "X", "display_name": "x", )";

INSTANTIATE_TEST_SUITE_P(
    EachList, CheckResultConverterMalformedElementTest,
    testing::Values(
        SElementList{"InsertedClass", "class", R"({"inserted_classes": [)", "}]}"},
        SElementList{"DeletedClass", "class", R"({"deleted_classes": [)", "}]}"},
        SElementList{"UpdatedClass", "class", R"({"updated_classes": [)", R"(, "deleted_behaviors": ["b"]}]})"},
        SElementList{"InsertedLink", "link", R"({"inserted_links": [)", "}]}"},
        SElementList{"DeletedLink", "link", R"({"deleted_links": [)", "}]}"},
        SElementList{"UpdatedLink", "link", R"({"updated_links": [)", R"(, "updated_properties": []}]})"},
        SElementList{"InsertedBehavior", "behavior", R"({"inserted_behaviors": [)", "}]}"},
        SElementList{"DeletedBehavior", "behavior", R"({"deleted_behaviors": [)", "}]}"},
        SElementList{"UpdatedBehavior", "behavior", R"({"updated_behaviors": [)", R"(, "deleted_methods": []}]})"},
        SElementList{"InsertedMethod", "behavior", kUpdatedBehavior + R"("inserted_methods": [)", "}]}]}"},
        SElementList{"DeletedMethod", "behavior", kUpdatedBehavior + R"("deleted_methods": [)", "}]}]}"},
        SElementList{"InsertedProperty", "behavior", kUpdatedBehavior + R"("inserted_properties": [)", "}]}]}"},
        SElementList{"DeletedProperty", "behavior", kUpdatedBehavior + R"("deleted_properties": [)", "}]}]}"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
