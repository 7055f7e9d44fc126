#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "upgrademeta2024/storage/document/MetaDocument.h"

// Line and column of what is wrong in a document: those of the member's name, or of the item.
namespace {

using namespace std::string_literals;

struct SFault {
  const char* name;
  std::string text;
  /// "LINE:COLUMN: /POINTER".
  const char* place;
};

void PrintTo(const SFault& fault, std::ostream* output) {
  *output << fault.name;
}

class DocumentMetaPlaceTest : public testing::TestWithParam<SFault> {};

TEST_P(DocumentMetaPlaceTest, IsNamedByLineColumnAndPointer) {
  const test::SError error = test::LoadError(GetParam().text);
  EXPECT_EQ(error.code, kvx::kMalformedDocument);
  const std::string begin = "meta.json:"s + GetParam().place + ": ";
  EXPECT_EQ(error.message.substr(0, begin.size()), begin) << error.message;
}

const SFault kFaults[] = {
    {"Root", "\n[]", "1:1: /"},
    {"MemberMissingInTheRoot", "\n{}", "1:1: /"},
    {"MemberOfTheRoot", "{\n\n  \"generation\": 2023}", "3:3: /generation"},
    {"UnknownMemberOfTheRoot", "{\"generation\": 2024,\n\"x\": 1}", "2:1: /x"},
    {"Item", "{\"generation\": 2024,\n \"classes\": [\n  5 ]}", "3:3: /classes/0"},
    {"MemberMissingInAnItem", "{\"generation\": 2024,\n \"classes\": [ {} ]}", "2:15: /classes/0"},
    {"ItemAfterOthers", "{\"generation\": 2024,\n \"links\": [ {\"internal_name\": \"A\"},\n  null]}", "3:3: /links/1"},
    {"MemberOfAnItem",
     "{\"generation\": 2024,\n \"classes\": [ {\"internal_name\": \"A\"},\n"
     "              {\"internal_name\": \"B\",\n               \"class_id\":\n -1 } ] }",
     "4:16: /classes/1/class_id"},
    {"NameOfABehavior",
     "{\"generation\": 2024,\n \"classes\": [ {\"internal_name\": \"A\", \"behaviors\": [\"B\",\n\n 7]}]}",
     "4:2: /classes/0/behaviors/1"},
    {"ColumnsAreCharacters", "{\"generation\": 2024, \"classes\": [\n{\"internal_name\": \"\u96F6\u00C4\", \"x\": 1}]}",
     "2:25: /classes/0/x"},
    {"MemberWithEscapesInItsName", "{\"generation\": 2024,\n \"cl\\u0061sses\": 1}", "2:2: /classes"},
    {"MemberRepeated", "{\"generation\": 2024,\n \"links\": [],\n   \"links\": []}", "3:4: /links"},
    {"ClassRepeated",
     "{\"generation\": 2024, \"classes\": [{\"internal_name\": \"A\"}, {\"internal_name\": \"B\"},\n"
     "   {\"display_name\": \"\",\n \"internal_name\": \"a\"}]}",
     "2:4: /classes/2/internal_name"},
    {"MethodRepeated",
     "{\"generation\": 2024, \"behaviors\": [{\"internal_name\": \"B\", \"methods\": [\n{\"internal_name\": \"m\"},\n"
     " {\"internal_name\": \"M\"}]}]}",
     "3:2: /behaviors/0/methods/1/internal_name"},
    {"PropertyRepeated",
     "{\"generation\": 2024, \"links\": [{\"internal_name\": \"A\", \"properties\": [{\"internal_name\": \"p\"}]},\n"
     " {\"internal_name\": \"B\", \"properties\": [{\"internal_name\": \"p\"},\n  {\"internal_name\": \"q\"},\n"
     "   {\"internal_name\": \"P\"},\n    {\"internal_name\": \"r\"}]}]}",
     "4:4: /links/1/properties/2/internal_name"},
};

INSTANTIATE_TEST_SUITE_P(Fault, DocumentMetaPlaceTest, testing::ValuesIn(kFaults),
                         [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
