// What every storage of metamodels does.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <limits>
#include <memory>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "support/Error.h"
#include "support/MetaGenerator.h"
#include "support/MetaMaker.h"
#include "support/MetaText.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {
namespace {

class StorageContractTest : public testing::TestWithParam<EStorage> {
 protected:
  /// A new object for each call: nothing may depend on what an earlier one remembers.
  std::unique_ptr<CMetaStorage> Open() const { return OpenMetaStorage(storage_.Location()); }

  void Save(const CMetaDictionary2024& dictionary) const { Open()->Save(dictionary); }
  std::string LoadedText() const { return TextOf(*Open()->Load()); }

  void ExpectKept(const CMetaDictionary2024& dictionary) const {
    Save(dictionary);
    EXPECT_EQ(LoadedText(), TextOf(dictionary));
  }

  /// Whatever a storage does not accept is refused when it is saved or, at the latest, when it is loaded.
  void ExpectRefused(const CMetaDictionary2024& dictionary, const std::string& message) const {
    try {
      Save(dictionary);
      Open()->Load();
      ADD_FAILURE() << "not refused";
    } catch (const CKVXException& error) {
      EXPECT_THAT(error.what(), testing::HasSubstr(message));
      EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos) << error.what();
    }
  }

  CTestStorage storage_{GetParam()};
};

TEST_P(StorageContractTest, KeepsAnEmptyMetamodel) {
  ExpectKept(CMetaDictionary2024());
}

TEST_P(StorageContractTest, NotesAMetamodelWithoutAnyElement) {
  std::string notes;
  const auto receive = [&notes](const std::string& note) {
    notes += note.find("no classes") == std::string::npos ? "" : note + "\n";
  };
  kvx::CFileNotes::SetReceiver(receive);
  Save(CMetaDictionary2024());
  EXPECT_EQ(notes, "");
  Open()->Load();
  EXPECT_EQ(notes, Open()->Describe() + ": the metamodel has no classes, links or behaviors\n");

  notes.clear();
  CMetaDictionary2024 dictionary;
  dictionary.AddBehavior(MakeBehavior({"Versioned", {}, {}}));
  Save(dictionary);
  Open()->Load();
  EXPECT_EQ(notes, "");
  kvx::CFileNotes::SetReceiver({});
}

TEST_P(StorageContractTest, KeepsTheOrderOfEveryList) {
  CMetaDictionary2024 dictionary;
  for (const std::string name : {"Zebra", "apple", "Mango", "Banana", "cherry", "10", "9"}) {
    dictionary.AddClass(MakeClass({name, {"Z", "a", "M"}, {Property("z"), Property("A"), Property("m")}}));
    dictionary.AddLink(MakeLink({name, {"b", "A"}, {Property("2"), Property("10"), Property("1")}}));
    dictionary.AddBehavior(MakeBehavior({name, {"z", "A", "m"}, {Property("y"), Property("B")}}));
  }
  ExpectKept(dictionary);
}

TEST_P(StorageContractTest, KeepsMoreRowsThanOneStatementCarries) {
  CMetaDictionary2024 dictionary;
  for (int element = 0; element < 60; ++element) {
    std::vector<SProperty> properties;
    for (int i = 0; i < 101; ++i) {
      properties.push_back(Property("P" + std::to_string(i)));
    }
    dictionary.AddClass(MakeClass({"Class" + std::to_string(element), {}, properties}));
  }
  ExpectKept(dictionary);
}

TEST_P(StorageContractTest, KeepsEmptyTexts) {
  CMetaDictionary2024 dictionary;
  SProperty property;
  property.internalName = "P";
  property.type = "";
  property.length = 0;
  SClass element{"C", {""}, {property}};
  element.displayName = element.tableName = "";
  element.classId = 0;
  dictionary.AddClass(MakeClass(element));
  ExpectKept(dictionary);
}

TEST_P(StorageContractTest, KeepsTheLargestNumbers) {
  CMetaDictionary2024 dictionary;
  SProperty property = Property("P");
  property.length = std::numeric_limits<std::uint32_t>::max();
  property.precision = std::numeric_limits<std::uint16_t>::max();
  SClass element{"C", {}, {property}};
  element.classId = std::numeric_limits<std::uint32_t>::max();
  dictionary.AddClass(MakeClass(element));
  dictionary.AddLink(MakeLink(element));
  ExpectKept(dictionary);
}

TEST_P(StorageContractTest, KeepsTextsOfEveryKind) {
  CMetaDictionary2024 dictionary;
  for (const std::string name :
       {"Robert'); DROP TABLE meta_classes;--", "\"quoted\"", "100 %", "%s%n", ":v0 $1 ?", "back\\slash", "line\nend",
        "\x01\x7F", "Stückliste", "部件", "\U0001F600", "null", "NULL", "'", "-1", "1e5", "0x10"}) {
    SProperty property{name, name, name, name, 1, name, 2, name, name, name};
    SClass element{name, {name}, {property}};
    element.displayName = element.tableName = name;
    dictionary.AddClass(MakeClass(element));
    dictionary.AddLink(MakeLink(element));
    dictionary.AddBehavior(MakeBehavior({name, {name}, {property}}));
  }
  ExpectKept(dictionary);
}

TEST_P(StorageContractTest, KeepsBehaviorNamesThatRepeat) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({"C", {"Versioned", "versioned", "Versioned"}, {}}));
  ExpectKept(dictionary);
}

TEST_P(StorageContractTest, TellsNamesApartThatDifferInNonAsciiCase) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({"Étage", {}, {Property("É"), Property("é")}}));
  dictionary.AddClass(MakeClass({"étage", {}, {}}));
  ExpectKept(dictionary);
}

TEST_P(StorageContractTest, KeepsTheSameNameInDifferentLists) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({"X", {"X"}, {Property("X")}}));
  dictionary.AddClass(MakeClass({"Y", {"X"}, {Property("X")}}));
  dictionary.AddLink(MakeLink({"X", {}, {Property("X")}}));
  dictionary.AddBehavior(MakeBehavior({"X", {"X"}, {Property("X")}}));
  ExpectKept(dictionary);
}

TEST_P(StorageContractTest, KeepsGeneratedMetamodels) {
  EXPECT_TRUE(rc::check("what is saved is what is loaded", [this] {
    const std::shared_ptr<CMetaDictionary2024> dictionary = GenerateMetamodel(EControls::kWithoutNul);
    Save(*dictionary);
    RC_ASSERT(LoadedText() == TextOf(*dictionary));
  }));
}

TEST_P(StorageContractTest, SavingReplacesTheWhole) {
  CMetaDictionary2024 large;
  large.AddClass(MakeClass({"C", {"B"}, {Property("P")}}));
  large.AddLink(MakeLink({"L", {"B"}, {Property("P")}}));
  large.AddBehavior(MakeBehavior({"B", {"M"}, {Property("P")}}));
  ExpectKept(large);
  CMetaDictionary2024 small;
  small.AddLink(MakeLink({"Other", {}, {}}));
  ExpectKept(small);
}

TEST_P(StorageContractTest, ExistsOnceSaved) {
  EXPECT_FALSE(Open()->Exists());
  Save(CMetaDictionary2024());
  EXPECT_TRUE(Open()->Exists());
}

TEST_P(StorageContractTest, RefusesToReplaceWithoutSpeakingOfAnyCommand) {
  Save(CMetaDictionary2024());
  const SError refusal = {kvx::kMetamodelExists, storage_.Location() + ": exists already"};
  EXPECT_EQ(ErrorOf([&] { Open()->RequireNothingThere(); }), refusal);
  EXPECT_EQ(ErrorOf([&] { Open()->Save(CMetaDictionary2024(), EExistingMeta::kRefuse); }), refusal);
}

TEST_P(StorageContractTest, LoadingNothingIsAnErrorAndCreatesNothing) {
  EXPECT_THROW(Open()->Load(), CKVXException);
  EXPECT_FALSE(Open()->Exists());
}

TEST_P(StorageContractTest, LoadsTheSameAgain) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({"C", {"B"}, {Property("P")}}));
  Save(dictionary);
  const std::unique_ptr<CMetaStorage> storage = Open();
  EXPECT_EQ(TextOf(*storage->Load()), TextOf(*storage->Load()));
}

TEST_P(StorageContractTest, RefusesPropertyNamesThatDifferOnlyInCase) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({"C", {}, {Property("Code"), Property("CODE")}}));
  ExpectRefused(dictionary, "");
}

TEST_P(StorageContractTest, RefusesMethodNamesThatDifferOnlyInCase) {
  CMetaDictionary2024 dictionary;
  dictionary.AddBehavior(MakeBehavior({"B", {"Revise", "REVISE"}, {}}));
  ExpectRefused(dictionary, "");
}

TEST_P(StorageContractTest, RefusesEmptyNames) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({"", {}, {}}));
  ExpectRefused(dictionary, "");
}

TEST_P(StorageContractTest, RefusesInvalidUtf8) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({"C\xFF", {}, {}}));
  ExpectRefused(dictionary, "UTF-8");
}

TEST_P(StorageContractTest, KeepsOrRefusesNulCharacters) {
  CMetaDictionary2024 dictionary;
  dictionary.AddClass(MakeClass({std::string("C\0D", 3), {}, {}}));
  if (GetParam() == EStorage::kDocument) {
    ExpectKept(dictionary);
  } else {
    ExpectRefused(dictionary, "table meta_classes, row ordinal 0: internal_name: the text holds a NUL character");
  }
}

TEST_P(StorageContractTest, DescribesItsLocation) {
  EXPECT_EQ(Open()->Describe(), storage_.Location());
}

INSTANTIATE_TEST_SUITE_P(Document, StorageContractTest, testing::Values(EStorage::kDocument));
INSTANTIATE_TEST_SUITE_P(Sqlite, StorageContractTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, StorageContractTest, testing::Values(EStorage::kPostgresql));

}  // namespace
}  // namespace test
