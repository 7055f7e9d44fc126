#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "upgrademeta2024/storage/document/MetaDocument.h"

// Documents that are JSON and yet no metamodel document.
namespace {

using test::ContentError;
using test::LoadErrorAtPointer;
using test::LoadText;
using test::SObjectPlace;
using test::With;
using test::WithMember;
using testing::IsEmpty;

constexpr const char* kRootMembers = "generation, classes, links, behaviors";

/// One value of each type, and what the type is called.
constexpr std::array<std::pair<const char*, const char*>, 6> kValues = {{{"a string", "\"text\""},
                                                                         {"a number", "1"},
                                                                         {"a boolean", "true"},
                                                                         {"null", "null"},
                                                                         {"an array", "[]"},
                                                                         {"an object", "{}"}}};

template <typename MakeDocument>
void ExpectOnly(const std::string& type, const std::string& pointer, const MakeDocument& makeDocument) {
  for (const auto& [found, value] : kValues) {
    if (type != found) {
      EXPECT_EQ(LoadErrorAtPointer(makeDocument(value)),
                ContentError(pointer, "expected " + type + ", found " + found));
    }
  }
}

TEST(DocumentMetaContentTest, RootMustBeAnObject) {
  ExpectOnly("an object", "/", [](const std::string& value) { return value; });
}

TEST(DocumentMetaContentTest, MembersOfTheRootMustBeOfTheirType) {
  ExpectOnly("a number", "/generation", [](const std::string& value) { return "{\"generation\": " + value + "}"; });
  for (const std::string list : {"classes", "links", "behaviors"}) {
    ExpectOnly("an array", "/" + list,
               [&list](const std::string& value) { return R"({"generation": 2024, ")" + list + "\": " + value + "}"; });
  }
}

TEST(DocumentMetaContentTest, GenerationIsRequired) {
  EXPECT_EQ(LoadErrorAtPointer("{}"), ContentError("/", "member \"generation\" is missing"));
  EXPECT_EQ(LoadErrorAtPointer(R"({"classes": [], "links": [], "behaviors": []})"),
            ContentError("/", "member \"generation\" is missing"));
}

TEST(DocumentMetaContentTest, GenerationMayStandLast) {
  EXPECT_EQ(LoadText(R"({"classes": [{"internal_name": "A"}], "generation": 2024})")->GetClasses().size(), 1U);
}

TEST(DocumentMetaContentTest, OtherGenerationsAreRefused) {
  for (const std::string generation : {"2023", "2025", "0", "20240"}) {
    EXPECT_EQ(LoadErrorAtPointer("{\"generation\": " + generation + "}"),
              ContentError("/generation", "the metamodel is of generation " + generation + "; only 2024 can be read"));
  }
}

TEST(DocumentMetaContentTest, GenerationMustBeAWholeNumber) {
  for (const std::string generation : {"-2024", "2024.0", "2024e0", "99999999999999999999"}) {
    EXPECT_EQ(LoadErrorAtPointer("{\"generation\": " + generation + "}"),
              ContentError("/generation", "expected a whole number from 0 to 4294967295, found " + generation));
  }
}

TEST(DocumentMetaContentTest, UnknownMemberOfTheRootIsRefused) {
  EXPECT_EQ(LoadErrorAtPointer(R"({"generation": 2024, "class": []})"),
            ContentError("/class", std::string("unknown member; known here: ") + kRootMembers));
}

TEST(DocumentMetaContentTest, RepeatedMemberOfTheRootIsRefused) {
  EXPECT_EQ(LoadErrorAtPointer(R"({"generation": 2024, "generation": 2024})"),
            ContentError("/generation", "duplicate member"));
  for (const std::string list : {"classes", "links", "behaviors"}) {
    EXPECT_EQ(LoadErrorAtPointer(R"({"generation": 2024, ")" + list + R"(": [], ")" + list + R"(": []})"),
              ContentError("/" + list, "duplicate member"));
  }
}

TEST(DocumentMetaContentTest, ListsMayBeLeftOut) {
  const auto dictionary = LoadText(R"({"generation": 2024})");
  EXPECT_THAT(dictionary->GetClasses(), IsEmpty());
  EXPECT_THAT(dictionary->GetLinks(), IsEmpty());
  EXPECT_THAT(dictionary->GetBehaviors(), IsEmpty());
}

class DocumentMetaObjectTest : public testing::TestWithParam<SObjectPlace> {
 protected:
  const SObjectPlace& Place() const { return GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Kind, DocumentMetaObjectTest, testing::ValuesIn(test::kPlaces),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(DocumentMetaObjectTest, MustBeAnObject) {
  ExpectOnly("an object", Place().pointer, [this](const std::string& value) { return With(Place(), value); });
}

TEST_P(DocumentMetaObjectTest, NeedsNothingButItsName) {
  EXPECT_NO_THROW(LoadText(With(Place(), R"({"internal_name": "A"})")));
}

TEST_P(DocumentMetaObjectTest, NeedsItsName) {
  for (const char* object : {"{}", R"({"display_name": "A"})"}) {
    EXPECT_EQ(LoadErrorAtPointer(With(Place(), object)),
              ContentError(Place().pointer, "member \"internal_name\" is missing"));
  }
}

TEST_P(DocumentMetaObjectTest, NameMustNotBeEmpty) {
  EXPECT_EQ(LoadErrorAtPointer(WithMember(Place(), "internal_name", R"("")")),
            ContentError(Place().pointer + "/internal_name", "the name is empty"));
}

TEST_P(DocumentMetaObjectTest, UnknownMemberIsRefused) {
  for (const std::string member : {"x", "Internal_name", "internal_nam", "internal_name2", ""}) {
    EXPECT_EQ(LoadErrorAtPointer(WithMember(Place(), member, "1")),
              ContentError(Place().pointer + "/" + member, "unknown member; known here: " + Place().knownMembers));
  }
}

TEST_P(DocumentMetaObjectTest, MemberNameMayBeWrittenWithEscapes) {
  EXPECT_NO_THROW(LoadText(With(Place(), R"({"inter\u006eal_name": "A", "\u0064isplay_name": "B"})")));
  EXPECT_EQ(LoadErrorAtPointer(With(Place(), R"({"internal_name": "A", "internal\u005fname": "A"})")),
            ContentError(Place().pointer + "/internal_name", "duplicate member"));
}

TEST_P(DocumentMetaObjectTest, PointerToAnUnknownMemberIsEscapedAndVisible) {
  EXPECT_EQ(LoadErrorAtPointer(WithMember(Place(), "a/b~c", "1")),
            ContentError(Place().pointer + "/a~1b~0c", "unknown member; known here: " + Place().knownMembers));
  EXPECT_EQ(LoadErrorAtPointer(WithMember(Place(), R"(\u96F6\n\u001B)", "1")),
            ContentError(Place().pointer + "/\u96F6\\n\\x1B", "unknown member; known here: " + Place().knownMembers));
}

/// One member that an object at a place may have.
struct SMember {
  std::vector<SObjectPlace> places;
  const char* name;
  const char* type;
  /// A value of that type.
  const char* value;
};

const std::vector<SObjectPlace> kEverywhere(std::begin(test::kPlaces), std::end(test::kPlaces));
const std::vector<SObjectPlace> kClasses = {test::kClass, test::kLink};
const std::vector<SObjectPlace> kElements = {test::kClass, test::kLink, test::kBehavior};
const std::vector<SObjectPlace> kProperties = {test::kClassProperty, test::kLinkProperty, test::kBehaviorProperty};

class DocumentMetaMemberTest : public testing::TestWithParam<SMember> {};

INSTANTIATE_TEST_SUITE_P(
    Member, DocumentMetaMemberTest,
    testing::Values(
        SMember{kEverywhere, "internal_name", "a string", "\"A\""},
        SMember{kEverywhere, "display_name", "a string", "\"A\""}, SMember{kClasses, "class_id", "a number", "1"},
        SMember{kClasses, "table_name", "a string", "\"A\""}, SMember{kClasses, "behaviors", "an array", "[]"},
        SMember{kElements, "properties", "an array", "[]"}, SMember{{test::kBehavior}, "methods", "an array", "[]"},
        SMember{kProperties, "field", "a string", "\"A\""}, SMember{kProperties, "type", "a string", "\"A\""},
        SMember{kProperties, "length", "a number", "1"}, SMember{kProperties, "default_value", "a string", "\"A\""},
        SMember{kProperties, "precision", "a number", "1"}, SMember{kProperties, "max", "a string", "\"1\""},
        SMember{kProperties, "min", "a string", "\"1\""},
        SMember{kProperties, "lookup_internal_name", "a string", "\"A\""}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(DocumentMetaMemberTest, ValueOfItsTypeIsAccepted) {
  for (const SObjectPlace& place : GetParam().places) {
    EXPECT_NO_THROW(LoadText(WithMember(place, GetParam().name, GetParam().value)));
  }
}

TEST_P(DocumentMetaMemberTest, ValueOfEveryOtherTypeIsRefused) {
  for (const SObjectPlace& place : GetParam().places) {
    ExpectOnly(GetParam().type, place.pointer + "/" + GetParam().name,
               [&](const std::string& value) { return WithMember(place, GetParam().name, value); });
  }
}

TEST_P(DocumentMetaMemberTest, MemberThatStandsTwiceIsRefused) {
  const std::string member = std::string("\"") + GetParam().name + "\": " + GetParam().value;
  for (const SObjectPlace& place : GetParam().places) {
    EXPECT_EQ(LoadErrorAtPointer(With(place, "{" + member + ", " + member + "}")),
              ContentError(place.pointer + "/" + GetParam().name, "duplicate member"));
  }
}

TEST(DocumentMetaContentTest, MembersOfOtherKindsAreUnknown) {
  const std::pair<SObjectPlace, const char*> strangers[] = {
      {test::kClass, "methods"},          {test::kLink, "methods"},         {test::kBehavior, "class_id"},
      {test::kBehavior, "table_name"},    {test::kBehavior, "behaviors"},   {test::kMethod, "properties"},
      {test::kClassProperty, "class_id"}, {test::kLinkProperty, "methods"}, {test::kClass, "generation"}};
  for (const auto& [place, member] : strangers) {
    EXPECT_EQ(LoadErrorAtPointer(WithMember(place, member, "1")),
              ContentError(place.pointer + "/" + member, "unknown member; known here: " + place.knownMembers));
  }
}

TEST(DocumentMetaContentTest, BehaviorNamesOfAClassMustBeStrings) {
  for (const SObjectPlace& place : kClasses) {
    ExpectOnly("a string", place.pointer + "/behaviors/1",
               [&place](const std::string& value) { return WithMember(place, "behaviors", "[\"A\", " + value + "]"); });
  }
}

TEST(DocumentMetaContentTest, UnsignedNumbersOf32BitsAreAcceptedUpToTheLargest) {
  for (const SObjectPlace& place : kProperties) {
    EXPECT_NO_THROW(LoadText(WithMember(place, "length", "4294967295")));
    EXPECT_NO_THROW(LoadText(WithMember(place, "length", "0")));
  }
  EXPECT_EQ(LoadText(WithMember(test::kClass, "class_id", "4294967295"))->GetClass("A")->GetClassId(), 4294967295U);
}

TEST(DocumentMetaContentTest, NumbersOutOfRangeAreRefused) {
  struct SNumber {
    std::vector<SObjectPlace> places;
    const char* member;
    std::string max;
    const char* justTooLarge;
  };
  const SNumber numbers[] = {{kClasses, "class_id", "4294967295", "4294967296"},
                             {kProperties, "length", "4294967295", "4294967296"},
                             {kProperties, "precision", "65535", "65536"}};
  for (const SNumber& number : numbers) {
    for (const SObjectPlace& place : number.places) {
      for (const std::string value :
           {number.justTooLarge, "-1", "1.5", "1.0", "1e2", "-0", "01", "18446744073709551616", "1x"}) {
        EXPECT_EQ(LoadErrorAtPointer(WithMember(place, number.member, value)),
                  ContentError(place.pointer + "/" + number.member,
                               "expected a whole number from 0 to " + number.max + ", found " + value));
      }
    }
  }
}

TEST(DocumentMetaContentTest, PointerNamesTheVeryItem) {
  EXPECT_EQ(LoadErrorAtPointer(R"({"generation": 2024, "classes": [
              {"internal_name": "A"}, {"internal_name": "B"}, {"internal_name": "C"},
              {"internal_name": "D", "properties": [{"internal_name": "p"}, {"internal_name": "q", "length": -1}]}]})"),
            ContentError("/classes/3/properties/1/length", "expected a whole number from 0 to 4294967295, found -1"));
  EXPECT_EQ(LoadErrorAtPointer(R"({"generation": 2024, "behaviors": [
              {"internal_name": "A"}, {"internal_name": "B", "methods": [{"internal_name": "m"}, {}]}]})"),
            ContentError("/behaviors/1/methods/1", "member \"internal_name\" is missing"));
}

}  // namespace
