#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/CheckResultConverterPeer.h"
#include "support/Error.h"

namespace {

using test::ErrorOf;
using test::Objects;
using test::SError;

class CheckResultConverterBehaviorNamesTest : public test::ConverterTest {
 protected:
  std::string Names(const std::string& indent, const std::string& classes) {
    return CCheckResultConverterPeer(converter_).BehaviorNames(indent, Objects(classes));
  }
};

TEST_F(CheckResultConverterBehaviorNamesTest, EachListOfAClassStandsOneSpaceFurtherRight) {
  EXPECT_EQ(Names(" ", R"([{"internal_name": "Part", "display_name": "A part",
              "updated_behaviors": ["u1"], "deleted_behaviors": ["d1", "d2"], "inserted_behaviors": ["i1"]}])"),
            "  name:Part,shown as:A part\n"
            "   Inserted behaviors:\n"
            "     i1\n"
            "    Deleted behaviors:\n"
            "      d1\n"
            "      d2\n"
            "     Updated behaviors:\n"
            "       u1\n");
}

TEST_F(CheckResultConverterBehaviorNamesTest, TheNextClassGoesOnWhereTheLastOneEndedButForItsOwnLine) {
  EXPECT_EQ(Names(" ", R"([{"internal_name": "A", "display_name": "a",
                            "inserted_behaviors": ["i"], "deleted_behaviors": ["d"], "updated_behaviors": ["u"]},
                           {"internal_name": "B", "display_name": "b", "deleted_behaviors": ["e"]},
                           {"internal_name": "C", "display_name": "c", "inserted_behaviors": ["f"]}])"),
            "  name:A,shown as:a\n"
            "   Inserted behaviors:\n"
            "     i\n"
            "    Deleted behaviors:\n"
            "      d\n"
            "     Updated behaviors:\n"
            "       u\n"
            "  name:B,shown as:b\n"
            "      Deleted behaviors:\n"
            "        e\n"
            "  name:C,shown as:c\n"
            "       Inserted behaviors:\n"
            "         f\n");
}

TEST_F(CheckResultConverterBehaviorNamesTest, AClassWithoutListsIsSkippedAndMovesNothing) {
  EXPECT_EQ(Names("", R"([{"internal_name": "A", "display_name": "a", "deleted_behaviors": ["d"]},
                          {"internal_name": "Skipped", "display_name": "", "inserted_properties": []},
                          {"internal_name": "B", "display_name": "b", "deleted_behaviors": ["e"]}])"),
            " name:A,shown as:a\n"
            "  Deleted behaviors:\n"
            "    d\n"
            " name:B,shown as:b\n"
            "   Deleted behaviors:\n"
            "     e\n");
}

TEST_F(CheckResultConverterBehaviorNamesTest, AnEmptyListHasAHeaderAndMovesTheNextOne) {
  EXPECT_EQ(Names("", R"([{"internal_name": "A", "display_name": "a",
                           "inserted_behaviors": [], "updated_behaviors": ["u"]}])"),
            " name:A,shown as:a\n"
            "  Inserted behaviors:\n"
            "   Updated behaviors:\n"
            "     u\n");
}

TEST_F(CheckResultConverterBehaviorNamesTest, AListOfAnotherTypeIsSkipped) {
  EXPECT_EQ(Names("", R"([{"internal_name": "A", "display_name": "a",
                           "inserted_behaviors": "x", "deleted_behaviors": [{}], "updated_behaviors": null}])"),
            "");
}

TEST_F(CheckResultConverterBehaviorNamesTest, NamesAreWrittenAsTheyStand) {
  EXPECT_EQ(Names("", R"([{"internal_name": "A", "display_name": "a", "deleted_behaviors": [" Ä:\t", ""]}])"),
            " name:A,shown as:a\n"
            "  Deleted behaviors:\n"
            "     Ä:\t\n"
            "    \n");
}

TEST_F(CheckResultConverterBehaviorNamesTest, EveryConversionBeginsWithItsOwnIndent) {
  const std::string section =
      R"({"updated_classes": [{"internal_name": "A", "display_name": "a", "inserted_behaviors": ["i"]}]})";
  const std::string expected =
      "\n"
      "Updated classes:\n"
      "  name:A,shown as:a\n"
      "   Inserted behaviors:\n"
      "     i\n"
      "\n";
  EXPECT_EQ(Text("class", section), expected);
  EXPECT_EQ(Text("class", section), expected);
}

TEST_F(CheckResultConverterBehaviorNamesTest, UpdatedBehaviorsOfAClassAreRead) {
  EXPECT_EQ(Text("class",
                 R"({"updated_classes": [{"internal_name": "A", "display_name": "a", "updated_behaviors": ["u"]}]})"),
            "\n"
            "Updated classes:\n"
            "  name:A,shown as:a\n"
            "   Updated behaviors:\n"
            "     u\n"
            "\n");
}

TEST_F(CheckResultConverterBehaviorNamesTest, TheSecondOfTwoClassesIsIndentedFurtherAndAnEmptyLineEndsTheReport) {
  EXPECT_EQ(Text("class", R"({"updated_classes": [
              {"internal_name": "A", "display_name": "a", "inserted_behaviors": ["i"]},
              {"internal_name": "B", "display_name": "b", "deleted_behaviors": ["d"]}]})"),
            "\n"
            "Updated classes:\n"
            "  name:A,shown as:a\n"
            "   Inserted behaviors:\n"
            "     i\n"
            "  name:B,shown as:b\n"
            "    Deleted behaviors:\n"
            "      d\n"
            "\n");
}

TEST_F(CheckResultConverterBehaviorNamesTest, NoClassesWriteNothing) {
  EXPECT_EQ(Names("", "[]"), "");
}

TEST_F(CheckResultConverterBehaviorNamesTest, TheWordForBehaviorsIsFetchedEvenWhenNoClassNeedsIt) {
  folder_.SetDictionary("{}");
  EXPECT_EQ(ErrorOf([this] { Names("", "[]"); }), (SError{0xA4C0003E, "json member [behavior] not exist!"}));
}

}  // namespace
