#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <memory>
#include <string>

#include "support/MetaMaker.h"
#include "support/MetaText.h"
#include "upgrademeta2024/storage/document/MetaDocument.h"

namespace {

using namespace std::string_literals;
using test::ErrorOf;
using test::SError;

class DocumentMetaStorageTest : public testing::Test {
 protected:
  std::unique_ptr<CMetaStorage> Open(const std::string& name) const { return OpenMetaStorage(directory_.File(name)); }

  test::CTemporaryDirectory directory_;
};

/// The largest numbers, empty and non-ASCII texts, control characters, and lists whose order is not that of the names.
void Fill(CMetaDictionary2024& dictionary) {
  test::SProperty full;
  full.internalName = "Owner";
  full.displayName = "\u6240\u6709\u8005 \U0001F600";
  full.field = "F \"OWNER\"\\/\n\0\x7F"s;
  full.type = "lookup";
  full.length = 4294967295U;
  full.defaultValue = " ";
  full.precision = 65535;
  full.max = "1e300";
  full.min = "-1";
  full.lookupClass = "Person";
  test::SProperty bare;
  bare.internalName = "\u00C4rea";
  bare.type = "";
  bare.length = 0;

  dictionary.AddClass(test::MakeClass(
      {"Part", {"Versioned", "versioned", "", "\u7248"}, {full, bare}, "\u96F6\u4EF6", 4294967295U, "T_PART"}));
  dictionary.AddClass(test::MakeClass({"Document", {}, {}, "", 0, ""}));
  dictionary.AddLink(test::MakeLink({"Uses", {"Counted"}, {bare, full}, "uses", 1, "T_USES"}));
  dictionary.AddLink(test::MakeLink({"Part", {}, {}, "", 0, ""}));
  dictionary.AddBehavior(test::MakeBehavior({"Versioned", {"Revise", "Approve"}, {full}, "\u7248\u672C"}));
  dictionary.AddBehavior(test::MakeBehavior({"Approvable", {}, {}, ""}));
}

TEST_F(DocumentMetaStorageTest, SavedMetamodelLoadsAsItWas) {
  CMetaDictionary2024 dictionary;
  Fill(dictionary);
  Open("meta.json")->Save(dictionary);
  EXPECT_EQ(test::TextOf(*Open("meta.json")->Load()), test::TextOf(dictionary));
}

TEST_F(DocumentMetaStorageTest, EmptyMetamodelIsSavedWithItsThreeLists) {
  Open("meta.json")->Save(CMetaDictionary2024());
  EXPECT_EQ(test::ReadFile(directory_.File("meta.json")),
            "{\n  \"generation\": 2024,\n  \"classes\": [],\n  \"links\": [],\n  \"behaviors\": []\n}\n");
}

TEST_F(DocumentMetaStorageTest, EveryMemberOfEveryElementIsSaved) {
  CMetaDictionary2024 dictionary;
  test::SProperty property = test::Property("Code");
  property.max = "9";
  dictionary.AddClass(test::MakeClass({"Part", {"Versioned"}, {property}, "A part", 7, "T_PART"}));
  dictionary.AddBehavior(test::MakeBehavior({"Versioned", {"Revise"}, {}, ""}));
  Open("meta.json")->Save(dictionary);
  EXPECT_EQ(test::ReadFile(directory_.File("meta.json")), R"json({
  "generation": 2024,
  "classes": [
    {
      "internal_name": "Part",
      "display_name": "A part",
      "class_id": 7,
      "table_name": "T_PART",
      "behaviors": [
        "Versioned"
      ],
      "properties": [
        {
          "internal_name": "Code",
          "display_name": "Code (display)",
          "field": "F_Code",
          "type": "string",
          "length": 32,
          "default_value": "",
          "precision": 0,
          "max": "9",
          "min": "",
          "lookup_internal_name": ""
        }
      ]
    }
  ],
  "links": [],
  "behaviors": [
    {
      "internal_name": "Versioned",
      "display_name": "",
      "methods": [
        {
          "internal_name": "Revise",
          "display_name": "Revise()"
        }
      ],
      "properties": []
    }
  ]
}
)json");
}

TEST_F(DocumentMetaStorageTest, SaveReplacesTheDocumentAndLeavesNothingBeside) {
  directory_.Write("meta.json", std::string(10000, 'x'));
  Open("meta.json")->Save(CMetaDictionary2024());
  EXPECT_NO_THROW(Open("meta.json")->Load());
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory_.Path()), {}), 1);
}

TEST_F(DocumentMetaStorageTest, SaveNamesWhatCannotBeWritten) {
  const std::string path = directory_.File("absent/meta.json");
  EXPECT_EQ(ErrorOf([&] { Open("absent/meta.json")->Save(CMetaDictionary2024()); }),
            (SError{kvx::kFileError, path + ": cannot be saved: No such file or directory; nothing was changed"}));
}

TEST_F(DocumentMetaStorageTest, ExistsTellsWhetherThereIsSomethingToReplace) {
  EXPECT_FALSE(Open("meta.json")->Exists());
  EXPECT_FALSE(Open("absent/meta.json")->Exists());
  directory_.Write("meta.json", "");
  EXPECT_TRUE(Open("meta.json")->Exists());
}

TEST_F(DocumentMetaStorageTest, MembersLeftOutAreEmptyOrZero) {
  const auto dictionary = test::LoadText(R"({"generation": 2024,
    "classes": [{"internal_name": "C", "properties": [{"internal_name": "p"}]}],
    "links": [{"internal_name": "L"}],
    "behaviors": [{"internal_name": "B", "methods": [{"internal_name": "m"}]}]})");
  EXPECT_EQ(test::TextOf(*dictionary),
            "class \"C\" \"\" 0 \"\"\n"
            "  property \"p\" \"\" \"\" \"\" 0 \"\" 0 \"\" \"\" \"\"\n"
            "link \"L\" \"\" 0 \"\"\n"
            "behavior \"B\" \"\"\n"
            "  method \"m\" \"\"\n");
}

TEST_F(DocumentMetaStorageTest, EachMemberIsReadIntoItsOwnValue) {
  const auto dictionary = test::LoadText(R"({"generation": 2024, "classes": [{"internal_name": "1",
    "display_name": "2", "class_id": 3, "table_name": "4", "behaviors": ["5", "6"], "properties": [
    {"internal_name": "a", "display_name": "b", "field": "c", "type": "d", "length": 7, "default_value": "e",
     "precision": 8, "max": "f", "min": "g", "lookup_internal_name": "h"}]}]})");
  EXPECT_EQ(test::TextOf(*dictionary),
            "class \"1\" \"2\" 3 \"4\" \"5\" \"6\"\n"
            "  property \"a\" \"b\" \"c\" \"d\" 7 \"e\" 8 \"f\" \"g\" \"h\"\n");
}

TEST_F(DocumentMetaStorageTest, LoadNamesAMissingFile) {
  EXPECT_EQ(ErrorOf([&] { Open("absent.json")->Load(); }),
            (SError{kvx::kFileError, directory_.File("absent.json") + ": cannot be read: No such file or directory"}));
}

TEST_F(DocumentMetaStorageTest, LoadRefusesADirectory) {
  std::filesystem::create_directory(directory_.File("dir.json"));
  EXPECT_EQ(ErrorOf([&] { Open("dir.json")->Load(); }),
            (SError{kvx::kFileError,
                    directory_.File("dir.json") + ": cannot be read: is a directory, not a regular file or a pipe"}));
}

TEST_F(DocumentMetaStorageTest, MessagesShowControlCharactersOfThePath) {
  directory_.Write("a\nb.json", "{}");
  EXPECT_EQ(ErrorOf([&] { Open("a\nb.json")->Load(); }),
            (SError{kvx::kMalformedDocument, directory_.File("a\\nb.json:1:1: /: member \"generation\" is missing")}));
}

TEST_F(DocumentMetaStorageTest, ElementsOutliveTheLoadedDictionary) {
  auto dictionary = test::LoadText(test::WithMember(test::kClassProperty, "field", "\"F\""));
  const auto property = dictionary->GetClass("C")->GetProperties().front();
  dictionary.reset();
  EXPECT_EQ(property->GetField(), "F");
}

}  // namespace
