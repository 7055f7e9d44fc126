#include "upgrademeta2024/MetaDictionary2024.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "support/MetaMaker.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The operations of one kind under common names, so that every kind passes the same tests.
struct SClasses {
  using Element = CMetaClass2024;
  static std::shared_ptr<Element> Make(const std::string& name) { return test::MakeClass({name, {}, {}}); }
  static bool Add(CMetaDictionary2024& to, const std::shared_ptr<Element>& element) { return to.AddClass(element); }
  static auto List(const CMetaDictionary2024& of) { return of.GetClasses(); }
  static bool Exist(const CMetaDictionary2024& in, const std::string& name, std::shared_ptr<Element>& out) {
    return in.ExistClass(name, out);
  }
  static auto Get(const CMetaDictionary2024& from, const std::string& name) { return from.GetClass(name); }
};

struct SLinks {
  using Element = CMetaLink2024;
  static std::shared_ptr<Element> Make(const std::string& name) { return test::MakeLink({name, {}, {}}); }
  static bool Add(CMetaDictionary2024& to, const std::shared_ptr<Element>& element) { return to.AddLink(element); }
  static auto List(const CMetaDictionary2024& of) { return of.GetLinks(); }
  static bool Exist(const CMetaDictionary2024& in, const std::string& name, std::shared_ptr<Element>& out) {
    return in.ExistLink(name, out);
  }
  static auto Get(const CMetaDictionary2024& from, const std::string& name) { return from.GetLink(name); }
};

struct SBehaviors {
  using Element = CMetaBehavior2024;
  static std::shared_ptr<Element> Make(const std::string& name) { return test::MakeBehavior({name, {}, {}}); }
  static bool Add(CMetaDictionary2024& to, const std::shared_ptr<Element>& element) { return to.AddBehavior(element); }
  static auto List(const CMetaDictionary2024& of) { return of.GetBehaviors(); }
  static bool Exist(const CMetaDictionary2024& in, const std::string& name, std::shared_ptr<Element>& out) {
    return in.ExistBehavior(name, out);
  }
  static auto Get(const CMetaDictionary2024& from, const std::string& name) { return from.GetBehavior(name); }
};

template <typename Kind>
class MetaDictionary2024Test : public testing::Test {
 protected:
  using Element = typename Kind::Element;

  void Fill(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
      EXPECT_TRUE(Kind::Add(dictionary_, Kind::Make(name))) << name;
    }
  }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& element : Kind::List(dictionary_)) {
      names.push_back(element->GetInternalName());
    }
    return names;
  }

  CMetaDictionary2024 dictionary_;
};

using Kinds = testing::Types<SClasses, SLinks, SBehaviors>;
TYPED_TEST_SUITE(MetaDictionary2024Test, Kinds, );

TYPED_TEST(MetaDictionary2024Test, NewDictionaryIsEmpty) {
  EXPECT_THAT(TypeParam::List(this->dictionary_), IsEmpty());
  EXPECT_EQ(TypeParam::Get(this->dictionary_, ""), nullptr);
}

TYPED_TEST(MetaDictionary2024Test, ElementsStayInTheOrderOfAdding) {
  this->Fill({"Part", "Document", "Assembly", "a"});
  EXPECT_THAT(this->Names(), ElementsAre("Part", "Document", "Assembly", "a"));
}

TYPED_TEST(MetaDictionary2024Test, LookupGivesTheVeryElement) {
  this->Fill({"Part"});
  const auto element = TypeParam::List(this->dictionary_).front();
  std::shared_ptr<typename TypeParam::Element> out;
  EXPECT_TRUE(TypeParam::Exist(this->dictionary_, "Part", out));
  EXPECT_EQ(out, element);
  EXPECT_EQ(TypeParam::Get(this->dictionary_, "Part"), element);
}

TYPED_TEST(MetaDictionary2024Test, LookupIgnoresAsciiCase) {
  this->Fill({"Part", "\u00C4rea"});
  for (const char* name : {"part", "PART", "pArT", "\u00C4REA"}) {
    std::shared_ptr<typename TypeParam::Element> out;
    EXPECT_TRUE(TypeParam::Exist(this->dictionary_, name, out)) << name;
    EXPECT_NE(TypeParam::Get(this->dictionary_, name), nullptr) << name;
  }
}

TYPED_TEST(MetaDictionary2024Test, LookupSeesEveryOtherDifference) {
  this->Fill({"Part", "\u00C4rea"});
  for (const char* name : {"", "Par", "Part ", "Parts", "\u00E4rea"}) {
    std::shared_ptr<typename TypeParam::Element> out = TypeParam::Make("what was here before");
    EXPECT_FALSE(TypeParam::Exist(this->dictionary_, name, out)) << name;
    EXPECT_EQ(out, nullptr) << name;
    EXPECT_EQ(TypeParam::Get(this->dictionary_, name), nullptr) << name;
  }
}

TYPED_TEST(MetaDictionary2024Test, SecondElementOfANameIsNotAdded) {
  this->Fill({"Part", "Document"});
  EXPECT_FALSE(TypeParam::Add(this->dictionary_, TypeParam::Make("Part")));
  EXPECT_FALSE(TypeParam::Add(this->dictionary_, TypeParam::Make("PART")));
  EXPECT_THAT(this->Names(), ElementsAre("Part", "Document"));
  EXPECT_EQ(TypeParam::Get(this->dictionary_, "PART")->GetInternalName(), "Part");
}

TYPED_TEST(MetaDictionary2024Test, NamesThatDifferInNonAsciiCaseAreTwoNames) {
  this->Fill({"\u00C4rea", "\u00E4rea"});
  EXPECT_THAT(this->Names(), ElementsAre("\u00C4rea", "\u00E4rea"));
  EXPECT_EQ(TypeParam::Get(this->dictionary_, "\u00E4rea")->GetInternalName(), "\u00E4rea");
}

TYPED_TEST(MetaDictionary2024Test, EachKindHasNamesOfItsOwn) {
  EXPECT_TRUE(this->dictionary_.AddClass(test::MakeClass({"Part", {}, {}})));
  EXPECT_TRUE(this->dictionary_.AddLink(test::MakeLink({"Part", {}, {}})));
  EXPECT_TRUE(this->dictionary_.AddBehavior(test::MakeBehavior({"Part", {}, {}})));
  EXPECT_THAT(this->Names(), ElementsAre("Part"));
  const auto element = TypeParam::List(this->dictionary_).front();
  EXPECT_EQ(TypeParam::Get(this->dictionary_, "part"), element);
}

TYPED_TEST(MetaDictionary2024Test, KindThatLacksANameDoesNotBorrowItFromAnother) {
  CMetaDictionary2024 others;
  others.AddClass(test::MakeClass({"AClass", {}, {}}));
  others.AddLink(test::MakeLink({"ALink", {}, {}}));
  others.AddBehavior(test::MakeBehavior({"ABehavior", {}, {}}));
  int found = 0;
  for (const char* name : {"AClass", "ALink", "ABehavior"}) {
    found += TypeParam::Get(others, name) != nullptr ? 1 : 0;
  }
  EXPECT_EQ(found, 1);
}

TYPED_TEST(MetaDictionary2024Test, ElementsOutliveTheDictionary) {
  std::shared_ptr<typename TypeParam::Element> element;
  {
    CMetaDictionary2024 dictionary;
    TypeParam::Add(dictionary, TypeParam::Make("Part"));
    element = TypeParam::Get(dictionary, "Part");
  }
  EXPECT_EQ(element->GetInternalName(), "Part");
  EXPECT_EQ(element->GetDisplayName(), "Part (display)");
}

}  // namespace
