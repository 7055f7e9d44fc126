#include "upgrademeta2024/MetaPropertyTable2024.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/MetaMaker.h"

namespace {

using test::Property;
using testing::ElementsAre;
using testing::IsEmpty;

CMetaPropertyTable2024 Table(const std::vector<std::string>& names) {
  std::vector<test::SProperty> properties;
  for (const std::string& name : names) {
    properties.push_back(Property(name));
  }
  CMetaPropertyTable2024 table = test::MakeTable(properties);
  table.Finish();
  return table;
}

std::vector<std::string> NamesOf(const std::list<std::shared_ptr<CMetaProperty2024>>& properties) {
  std::vector<std::string> names;
  for (const auto& property : properties) {
    names.push_back(property->GetInternalName());
  }
  return names;
}

TEST(MetaPropertyTable2024Test, EmptyTableHasNothing) {
  const CMetaPropertyTable2024 table = Table({});
  EXPECT_EQ(table.GetSize(), 0U);
  EXPECT_THAT(table.GetProperties(), IsEmpty());
  EXPECT_THAT(table.GetPropertyDict(), IsEmpty());
  EXPECT_EQ(table.FindRepeatedName(), std::nullopt);
}

TEST(MetaPropertyTable2024Test, PropertiesStayInTheOrderOfAdding) {
  const CMetaPropertyTable2024 table = Table({"Name", "code", "Id", "Area"});
  EXPECT_EQ(table.GetSize(), 4U);
  EXPECT_THAT(NamesOf(table.GetProperties()), ElementsAre("Name", "code", "Id", "Area"));
  EXPECT_EQ(table.At(1).GetInternalName(), "code");
  EXPECT_EQ(table.At(3).GetField(), "F_Area");
}

TEST(MetaPropertyTable2024Test, DictIsKeyedByTheLowerCasedNameInByteOrder) {
  std::vector<std::string> keys;
  std::vector<std::string> names;
  for (const auto& [key, property] : Table({"Name", "\u00C4rea", "CODE", "code_2"}).GetPropertyDict()) {
    keys.push_back(key);
    names.push_back(property->GetInternalName());
  }
  // Only ASCII letters are lower-cased.
  EXPECT_THAT(keys, ElementsAre("code", "code_2", "name", "\u00C4rea"));
  EXPECT_THAT(names, ElementsAre("CODE", "code_2", "Name", "\u00C4rea"));
}

TEST(MetaPropertyTable2024Test, DictHoldsTheFirstOfPropertiesOfOneName) {
  const auto dict = Table({"Code", "Name", "CODE", "code"}).GetPropertyDict();
  ASSERT_EQ(dict.size(), 2U);
  EXPECT_EQ(dict.at("code")->GetInternalName(), "Code");
}

TEST(MetaPropertyTable2024Test, ListAndDictHoldTheSameProperties) {
  const CMetaPropertyTable2024 table = Table({"Name", "Code"});
  EXPECT_EQ(table.GetProperties().front(), table.GetPropertyDict().at("name"));
  EXPECT_EQ(table.GetProperties().back(), table.GetPropertyDict().at("code"));
}

TEST(MetaPropertyTable2024Test, PropertiesOutliveTheTable) {
  std::shared_ptr<CMetaProperty2024> fromList;
  std::shared_ptr<CMetaProperty2024> fromDict;
  {
    const CMetaPropertyTable2024 table = Table({"Name", "Code"});
    fromList = table.GetProperties().back();
    fromDict = table.GetPropertyDict().at("name");
  }
  EXPECT_EQ(fromList->GetDisplayName(), "Code (display)");
  EXPECT_EQ(fromDict->GetDisplayName(), "Name (display)");
}

TEST(MetaPropertyTable2024Test, MovedTableHoldsTheProperties) {
  CMetaPropertyTable2024 table = Table({"Name"});
  const CMetaPropertyTable2024 moved(std::move(table));
  EXPECT_THAT(NamesOf(moved.GetProperties()), ElementsAre("Name"));
}

TEST(MetaPropertyTable2024Test, ManyPropertiesKeepTheirTexts) {
  std::vector<std::string> names;
  for (int i = 0; i < 5000; ++i) {
    names.push_back("Property" + std::to_string(i * 7919 % 5000));
  }
  const CMetaPropertyTable2024 table = Table(names);
  EXPECT_EQ(NamesOf(table.GetProperties()), names);
  EXPECT_EQ(table.GetPropertyDict().size(), 5000U);
  EXPECT_EQ(table.FindRepeatedName(), std::nullopt);
}

TEST(MetaPropertyTable2024Test, RepeatedNameIsFoundWithoutRegardToAsciiCase) {
  EXPECT_EQ(Table({"Code", "Name", "cODE"}).FindRepeatedName(), std::make_pair(std::size_t{0}, std::size_t{2}));
  EXPECT_EQ(Table({"\u00C4", "\u00E4"}).FindRepeatedName(), std::nullopt);
}

TEST(MetaPropertyTable2024Test, OfSeveralRepeatedNamesTheEarliestRepetitionIsFound) {
  EXPECT_EQ(Table({"a", "b", "z", "Z", "B", "A"}).FindRepeatedName(), std::make_pair(std::size_t{2}, std::size_t{3}));
  EXPECT_EQ(Table({"b", "a", "A", "a", "B"}).FindRepeatedName(), std::make_pair(std::size_t{1}, std::size_t{2}));
}

}  // namespace
