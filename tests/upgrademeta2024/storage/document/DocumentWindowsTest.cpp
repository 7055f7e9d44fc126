#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaLink2024.h"
#include "upgrademeta2024/storage/document/MetaDocument.h"

// Documents are read a megabyte at a time.
namespace {

using test::ContentError;
using test::LoadErrorAtPointer;
using test::LoadText;

constexpr int kElements = 300;
/// Of each element; all of them together take several megabytes.
const std::string kLongText(16000, 'x');

std::string Element(const std::string& name, const std::string& text = kLongText) {
  return R"({"internal_name": ")" + name + R"(", "properties": [{"internal_name": "First", "display_name": ")" + text +
         R"("}, {"internal_name": "Last"}]})";
}

/// Elements NAME0, NAME1 and so on.
std::string Elements(const std::string& name, const std::string& separator = ", ",
                     const std::string& text = kLongText) {
  std::string elements;
  for (int i = 0; i < kElements; ++i) {
    elements += (i == 0 ? "" : separator) + Element(name + std::to_string(i), text);
  }
  return elements;
}

std::string Document(const std::string& classes) {
  return R"({"generation": 2024, "classes": [)" + classes + "]}";
}

template <typename List>
void ExpectElements(const List& elements, const std::string& name, const std::string& text = kLongText) {
  EXPECT_EQ(elements.size(), static_cast<std::size_t>(kElements));
  int i = 0;
  for (const auto& element : elements) {
    EXPECT_EQ(element->GetInternalName(), name + std::to_string(i++));
    const auto properties = element->GetProperties();
    ASSERT_EQ(properties.size(), 2U);
    EXPECT_TRUE(properties.front()->GetDisplayName() == text) << element->GetInternalName();
    EXPECT_EQ(properties.back()->GetInternalName(), "Last");
  }
}

TEST(DocumentWindowsTest, ElementsOfManyWindowsComeInTheirOrder) {
  ExpectElements(LoadText(Document(Elements("C")))->GetClasses(), "C");
}

TEST(DocumentWindowsTest, WhiteSpaceBetweenElementsMayBeLongerThanAWindow) {
  const std::string space(2000000, '\n');
  const std::string elements = Element("A") + space + "," + space + Element("B") + space;
  EXPECT_EQ(LoadText(space + Document(elements) + space)->GetClasses().size(), 2U);
}

TEST(DocumentWindowsTest, NoWhiteSpaceIsNeeded) {
  ExpectElements(LoadText(Document(Elements("C", ",")))->GetClasses(), "C");
}

TEST(DocumentWindowsTest, AnElementMayBeLargerThanAWindow) {
  const std::string text(5000000, 'x');
  const auto classes =
      LoadText(Document(Element("Small") + "," + Element("Large", text) + "," + Element("Other")))->GetClasses();
  ASSERT_EQ(classes.size(), 3U);
  EXPECT_TRUE((*std::next(classes.begin()))->GetProperties().front()->GetDisplayName() == text);
  EXPECT_EQ(classes.back()->GetInternalName(), "Other");
}

TEST(DocumentWindowsTest, BracketsInTextsEndNothing) {
  std::string text;
  std::string written;
  while (text.size() < kLongText.size()) {
    text += "}]}, \"\\{[";
    written += R"(}]}, \"\\{[)";
  }
  ExpectElements(LoadText(Document(Elements("C", ",", written)))->GetClasses(), "C", text);
}

TEST(DocumentWindowsTest, ListsMayBeginInAnyWindow) {
  const auto metamodel = LoadText(R"({"behaviors": [], "links": [)" + Elements("L") + R"(], "classes": [)" +
                                  Elements("C") + R"(], "generation": 2024})");
  ExpectElements(metamodel->GetLinks(), "L");
  ExpectElements(metamodel->GetClasses(), "C");
}

TEST(DocumentWindowsTest, ANameOfAnEarlierWindowMustNotBeRepeated) {
  EXPECT_EQ(LoadErrorAtPointer(Document(Elements("C") + ", " + Element("c1"))),
            ContentError("/classes/300/internal_name",
                         "the name \"c1\" repeats \"C1\" of item 1 of the same list; names must differ in more than "
                         "letter case"));
}

TEST(DocumentWindowsTest, AFaultOfALaterWindowIsShownWithItsPlace) {
  EXPECT_EQ(LoadErrorAtPointer(Document(Elements("C") + R"(, {"internal_name": "D", "class_id": "1"})")),
            ContentError("/classes/300/class_id", "expected a number, found a string"));
}

TEST(DocumentWindowsTest, AListThatIsNotClosedIsAFault) {
  const std::string document = Document(Elements("C"));
  const std::string cutOff = document.substr(0, document.size() - 2);
  EXPECT_EQ(test::LoadError(cutOff).message, "meta.json:1:" + std::to_string(cutOff.size() + 1) + ": not valid JSON");
}

TEST(DocumentWindowsTest, AMemberAfterManyWindowsMustNotBeRepeated) {
  const std::string document = Document(Elements("C"));
  EXPECT_EQ(LoadErrorAtPointer(document.substr(0, document.size() - 1) + R"(, "classes": []})"),
            ContentError("/classes", "duplicate member"));
}

}  // namespace
