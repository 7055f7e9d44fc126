#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "kvxsptjson/JsonObject.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kMetamodel = R"({
  "generation": 2024,
  "classes": [ { "internal_name": "Part", "class_id": 7, "behaviors": ["B", "b"],
                 "properties": [ { "internal_name": "Code", "length": 32 }, { "internal_name": "Weight" } ] },
               { "internal_name": "Document", "properties": [ { "internal_name": "Title" } ] } ],
  "links": [ { "internal_name": "Uses" } ],
  "behaviors": [ { "internal_name": "B", "methods": [ { "internal_name": "M" }, { "internal_name": "N" } ],
                   "properties": [ { "internal_name": "P" } ] },
                 { "internal_name": "C" },
                 { "internal_name": "D", "methods": [ { "internal_name": "M" } ] } ]
}
)";

const std::string kOther = R"({"generation": 2024, "links": [{"internal_name": "Refers"}]})";

class MetamodelCommandsTest : public testing::Test {
 protected:
  MetamodelCommandsTest() : source_(directory_.Write("source.json", kMetamodel)) {}

  static test::SProcessResult Show(const std::string& location, const std::string& format) {
    return test::RunTool({"metamodel", "show", "--format", format, location});
  }
  static test::SProcessResult Check(const std::string& location) {
    return test::RunTool({"metamodel", "check", location});
  }
  static test::SProcessResult Copy(const std::string& source, const std::string& target) {
    return test::RunTool({"metamodel", "copy", source, target});
  }
  static test::SProcessResult Replace(const std::string& source, const std::string& target) {
    return test::RunTool({"metamodel", "copy", "--replace", source, target});
  }

  /// What a run finds between the two metamodels: its exit status.
  static int Compare(const std::string& original, const std::string& client) {
    return test::CUpgradeDirectory().Run({"--original", original, "--client", client}).status;
  }

  test::CTemporaryDirectory directory_;
  std::string source_;
};

TEST_F(MetamodelCommandsTest, ShowCountsByKind) {
  const std::string expected = "source:     " + source_ +
                               "\ngeneration: 2024\nclasses:    2 with 3 properties\nlinks:      1 with 0 "
                               "properties\nbehaviors:  3 with 1 properties and 3 methods\n";
  const test::SProcessResult result = test::RunTool({"metamodel", "show", source_});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, expected);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(Show(source_, "text").output, expected);
}

TEST_F(MetamodelCommandsTest, ShowInAPipeIsNotForgedByALineEndInThePath) {
  const std::string path = directory_.Write("a\nclasses:    7 with 7 properties\nb.json", kMetamodel);
  const test::SProcessResult result = Show(path, "text");
  EXPECT_THAT(result.output,
              StartsWith("source:     " + directory_.File("a\\nclasses:    7 with 7 properties\\nb.json") +
                         "\ngeneration: 2024\nclasses:    2 with"));
  CJsonObject object;
  object.CreateFromText(Show(path, "json").output, "output");
  EXPECT_EQ(object.GetStringValue("source"), path);
}

TEST_F(MetamodelCommandsTest, ShowAsJsonIsOneObject) {
  const test::SProcessResult result = Show(source_, "json");
  EXPECT_EQ(result.status, 0);
  CJsonObject object;
  object.CreateFromText(result.output, "output");
  EXPECT_EQ(object.GetStringValue("source"), source_);
  EXPECT_EQ(object.GetStringValue("generation"), "2024");
  EXPECT_EQ(object.GetObjectValue("classes")->ToText(), "{\n  \"count\": 2,\n  \"properties\": 3\n}");
  EXPECT_EQ(object.GetObjectValue("links")->ToText(), "{\n  \"count\": 1,\n  \"properties\": 0\n}");
  EXPECT_EQ(object.GetObjectValue("behaviors")->ToText(),
            "{\n  \"count\": 3,\n  \"properties\": 1,\n  \"methods\": 3\n}");
}

TEST_F(MetamodelCommandsTest, ShowOfWhatIsNoMetamodelIsTrouble) {
  for (const char* format : {"text", "json"}) {
    EXPECT_EQ(test::TroubleOf(Show(directory_.File("absent.json"), format)),
              directory_.File("absent.json") + ": cannot be read: No such file or directory");
    EXPECT_EQ(test::TroubleOf(Show(directory_.Write("bad.json", "{\"generation\": 2024,}"), format)),
              directory_.File("bad.json") + ":1:21: not valid JSON");
    EXPECT_THAT(test::TroubleOf(Show("metamodel.txt", format)),
                StartsWith("metamodel.txt: not a metamodel location; "));
  }
}

TEST_F(MetamodelCommandsTest, CheckOfASoundMetamodelSaysSo) {
  const test::SProcessResult result = Check(source_);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, source_ + ": no faults\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(MetamodelCommandsTest, CheckListsEveryFault) {
  const std::string path = directory_.Write(
      "bad.json", "{\"generation\": 2024,\n\"classes\": [{\"internal_name\": \"\", \"class_id\": -1}, {\"name\": 1}]}");
  const test::SProcessResult result = Check(path);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            path + ":2:14: /classes/0/internal_name: the name is empty\n" + path +
                ":2:35: /classes/0/class_id: expected a whole number from 0 to 4294967295, found -1\n" + path +
                ":2:53: /classes/1/name: unknown member; known here: internal_name, display_name, class_id, "
                "table_name, behaviors, properties\n" +
                path + ":2:52: /classes/1: member \"internal_name\" is missing\n" + path + ": 4 faults\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(MetamodelCommandsTest, CheckSaysHowManyFaultsItDoesNotList) {
  std::string items = "1";
  for (int i = 1; i < 102; ++i) {
    items += ", 1";
  }
  const std::string path = directory_.Write("bad.json", "{\"generation\": 2024, \"links\": [" + items + "]}");
  const test::SProcessResult result = Check(path);
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output,
              HasSubstr("/links/99: expected an object, found a number\nand 2 more\n" + path + ": 102 faults\n"));
}

TEST_F(MetamodelCommandsTest, CheckOfWhatIsNotJsonSaysThatItEndsThere) {
  const std::string path = directory_.Write("bad.json", "{\"generation\": 2024,}");
  const test::SProcessResult result = Check(path);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            path + ":1:21: not valid JSON\n" + path + ": 1 fault; what comes after it was not checked\n");
}

TEST_F(MetamodelCommandsTest, CheckOfAnEmptyMetamodelNotesIt) {
  const std::string path = directory_.Write("empty.json", "{\"generation\": 2024}");
  const test::SProcessResult result = Check(path);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, path + ": no faults\n");
  EXPECT_EQ(result.errors, "upgradesrv: " + path + ": the metamodel has no classes, links or behaviors\n");
}

TEST_F(MetamodelCommandsTest, CheckOfWhatCannotBeReadIsTrouble) {
  EXPECT_EQ(test::TroubleOf(Check(directory_.File("absent.json"))),
            directory_.File("absent.json") + ": cannot be read: No such file or directory");
  EXPECT_THAT(test::TroubleOf(Check("metamodel.txt")), StartsWith("metamodel.txt: not a metamodel location; "));
}

TEST_F(MetamodelCommandsTest, CopyHoldsTheSameMetamodel) {
  const std::string target = directory_.File("target.json");
  const test::SProcessResult result = Copy(source_, target);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(Compare(source_, target), 0);
  EXPECT_EQ(Compare(target, source_), 0);
  EXPECT_EQ(test::Replaced(Show(target, "json").output, target, source_), Show(source_, "json").output);
}

TEST_F(MetamodelCommandsTest, CopyOfACopyIsTheSameToTheByte) {
  ASSERT_EQ(Copy(source_, directory_.File("first.json")).status, 0);
  ASSERT_EQ(Copy(directory_.File("first.json"), directory_.File("second.json")).status, 0);
  EXPECT_EQ(test::ReadFile(directory_.File("first.json")), test::ReadFile(directory_.File("second.json")));
}

TEST_F(MetamodelCommandsTest, CopyRefusesATargetThatExists) {
  const std::string target = directory_.Write("target.json", kOther);
  EXPECT_EQ(test::TroubleOf(Copy(source_, target)), target + ": exists already; give --replace to replace it");
  EXPECT_EQ(test::ReadFile(target), kOther);
}

TEST_F(MetamodelCommandsTest, CopyOfWhatIsNotThereIsTroubleBeforeATargetThatExists) {
  const std::string target = directory_.Write("target.json", kOther);
  EXPECT_EQ(test::TroubleOf(Copy(directory_.File("absent.json"), target)),
            directory_.File("absent.json") + ": cannot be read: No such file or directory");
  EXPECT_THAT(test::TroubleOf(Copy(directory_.File("absent.db"), target)), StartsWith(directory_.File("absent.db")));
  const std::string bad = directory_.Write("bad.json", "{");
  EXPECT_THAT(test::TroubleOf(Copy(bad, target)), StartsWith(bad + ":1:"));
  EXPECT_EQ(test::ReadFile(target), kOther);
}

TEST_F(MetamodelCommandsTest, CopyWithReplaceReplacesATargetThatExists) {
  const std::string target = directory_.Write("target.json", kOther);
  EXPECT_EQ(Replace(source_, target).status, 0);
  EXPECT_EQ(Compare(source_, target), 0);
}

TEST_F(MetamodelCommandsTest, CopyWithReplaceCreatesATargetThatDoesNotExist) {
  EXPECT_EQ(Replace(source_, directory_.File("target.json")).status, 0);
  EXPECT_EQ(Compare(source_, directory_.File("target.json")), 0);
}

TEST_F(MetamodelCommandsTest, CopyOfWhatCannotBeReadLeavesTheTargetAlone) {
  const std::string target = directory_.Write("target.json", kOther);
  EXPECT_EQ(test::TroubleOf(Replace(directory_.File("absent.json"), target)),
            directory_.File("absent.json") + ": cannot be read: No such file or directory");
  EXPECT_THAT(test::TroubleOf(Replace(directory_.Write("bad.json", kMetamodel.substr(0, 300)), target)),
              StartsWith(directory_.File("bad.json") + ":"));
  EXPECT_EQ(test::ReadFile(target), kOther);
  EXPECT_EQ(test::TroubleOf(Copy(directory_.File("absent.json"), directory_.File("new.json"))),
            directory_.File("absent.json") + ": cannot be read: No such file or directory");
  EXPECT_FALSE(fs::exists(directory_.File("new.json")));
}

TEST_F(MetamodelCommandsTest, CopyOntoItselfNeedsReplaceAndKeepsTheMetamodel) {
  const std::string before = directory_.Write("before.json", kMetamodel);
  EXPECT_EQ(test::TroubleOf(Copy(source_, source_)),
            source_ + ": exists already; it is the source itself, so there is nothing to copy");
  EXPECT_EQ(test::ReadFile(source_), kMetamodel);
  EXPECT_EQ(Replace(source_, source_).status, 0);
  EXPECT_EQ(Compare(before, source_), 0);
}

TEST_F(MetamodelCommandsTest, CopyNeverTurnsItsSourceIntoAFileOfAnotherKindThroughALink) {
  const std::string database = directory_.File("source.db");
  const std::string link = directory_.File("link.json");
  ASSERT_EQ(Copy(source_, database).status, 0);
  fs::create_symlink("source.db", link);
  const std::string before = test::ReadFile(database);
  EXPECT_EQ(test::TroubleOf(Replace(database, link)), link + ": cannot be saved: it is the same file as " + database +
                                                          ", which is read here; nothing was changed");
  EXPECT_TRUE(test::ReadFile(database) == before);
}

TEST_F(MetamodelCommandsTest, CopyToAPlaceThatCannotBeWrittenIsTrouble) {
  const std::string target = directory_.File("absent/target.json");
  EXPECT_THAT(test::TroubleOf(Copy(source_, target)),
              StartsWith(target + ": cannot be saved: No such file or directory"));
}

TEST_F(MetamodelCommandsTest, CopyToALocationOfUnknownFormIsTrouble) {
  EXPECT_THAT(test::TroubleOf(Copy(source_, directory_.File("target.txt"))),
              HasSubstr("/target.txt: not a metamodel location; "));
  EXPECT_FALSE(fs::exists(directory_.File("target.txt")));
}

}  // namespace
