#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

#include "checkmeta2024/CheckBehavior2024Helper.h"
#include "checkmeta2024/CheckClass2024Helper.h"
#include "checkmeta2024/CheckLink2024Helper.h"
#include "checkmeta2024/CheckMeta2024Helper.h"
#include "checkmeta2024/CheckMetaStrategy2024.h"
#include "checkmeta2024/CheckProperty2024Helper.h"
#include "checkmeta2024/CheckProperty2024Interface.h"
#include "checkmeta2024/CheckResultConverter.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "checkmeta2024/MultiLanguageConfig.h"
#include "support/MetaMaker.h"
#include "support/PrivateMember.h"
#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/SupportUpgradeHandler.h"
#include "upgradecontext/UpgradeContext.h"

// Bases, virtual operations, sizes and the order of members: whoever has compiled against the classes relies on these.
namespace test {

using JsonPointer = std::shared_ptr<CJsonObject>;

struct SShapeOriginalDictionary {
  using Type = std::shared_ptr<CMetaDictionary2024> CCheckMeta2024Helper::*;
  friend Type MemberOf(SShapeOriginalDictionary);
};

struct SShapeClientDictionary {
  using Type = std::shared_ptr<CMetaDictionary2024> CCheckMeta2024Helper::*;
  friend Type MemberOf(SShapeClientDictionary);
};

struct SShapeClassWritten {
  using Type = bool CCheckClass2024Helper::*;
  friend Type MemberOf(SShapeClassWritten);
};

struct SShapeBehaviorWritten {
  using Type = bool CCheckBehavior2024Helper::*;
  friend Type MemberOf(SShapeBehaviorWritten);
};

struct SShapeClientProperty {
  using Type = JsonPointer CCheckProperty2024Helper::*;
  friend Type MemberOf(SShapeClientProperty);
};

struct SShapeOriginalProperty {
  using Type = JsonPointer CCheckProperty2024Helper::*;
  friend Type MemberOf(SShapeOriginalProperty);
};

struct SShapeBuffer {
  using Type = std::stringstream CCheckResultConverter::*;
  friend Type MemberOf(SShapeBuffer);
};

struct SShapeWords {
  using Type = std::shared_ptr<CMultiLanguageConfig> CCheckResultConverter::*;
  friend Type MemberOf(SShapeWords);
};

struct SShapeLanguage {
  using Type = std::string CCheckResultConverter::*;
  friend Type MemberOf(SShapeLanguage);
};

struct SShapeInitialized {
  using Type = bool CCheckResultConverter::*;
  friend Type MemberOf(SShapeInitialized);
};

template struct SPrivateMember<SShapeOriginalDictionary, &CCheckMeta2024Helper::originalDictionary_>;
template struct SPrivateMember<SShapeClientDictionary, &CCheckMeta2024Helper::clientDictionary_>;
template struct SPrivateMember<SShapeClassWritten, &CCheckClass2024Helper::elementWritten_>;
template struct SPrivateMember<SShapeBehaviorWritten, &CCheckBehavior2024Helper::elementWritten_>;
template struct SPrivateMember<SShapeClientProperty, &CCheckProperty2024Helper::clientPropertyJson_>;
template struct SPrivateMember<SShapeOriginalProperty, &CCheckProperty2024Helper::originalPropertyJson_>;
template struct SPrivateMember<SShapeBuffer, &CCheckResultConverter::buffer_>;
template struct SPrivateMember<SShapeWords, &CCheckResultConverter::dictionary_>;
template struct SPrivateMember<SShapeLanguage, &CCheckResultConverter::language_>;
template struct SPrivateMember<SShapeInitialized, &CCheckResultConverter::initialized_>;

}  // namespace test

namespace {

using test::JsonPointer;

/// Whether Base is a public base.
template <typename Base, typename Derived>
constexpr bool kIsA = std::is_base_of_v<Base, Derived>&& std::is_convertible_v<Derived*, Base*>;

template <typename Class>
constexpr bool kHasNoVirtual = !std::is_polymorphic_v<Class> && !std::has_virtual_destructor_v<Class>;

/// The place of a virtual operation in the table of its class. Pointers to such operations begin with it, in bytes;
/// some platforms mark them by adding one.
template <typename Operation>
std::size_t PlaceOf(Operation operation) {
  std::size_t bytes = 0;
  std::memcpy(&bytes, &operation, sizeof bytes);
  return bytes / sizeof(void*);
}

/// As many virtual operations as there are before that of a derived class.
template <typename Class>
std::size_t VirtualCount() {
  struct SNext : Class {
    using Class::Class;
    virtual void Next() {}
  };
  // The destructor has two places.
  return PlaceOf(&SNext::Next) - 1;
}

/// What is at the given place of an object, counted in pointers.
template <typename Class>
const void* PointerAt(const Class& object, std::size_t index) {
  const void* pointer = nullptr;
  std::memcpy(&pointer, reinterpret_cast<const char*>(&object) + index * sizeof pointer, sizeof pointer);
  return pointer;
}

template <typename Class, typename Member>
std::size_t Offset(const Class& object, Member Class::*member) {
  return static_cast<std::size_t>(reinterpret_cast<const char*>(&(object.*member)) -
                                  reinterpret_cast<const char*>(&object));
}

TEST(ClassShapeTest, HandlersAreSupportHandlersAndHaveOneVirtualOperationTheDestructor) {
  static_assert(kIsA<CSupportUpgradeHandler, CCheckMeta2024Helper>);
  static_assert(kIsA<CSupportUpgradeHandler, CCheckResultConverter>);
  static_assert(std::has_virtual_destructor_v<CSupportUpgradeHandler>);
  EXPECT_EQ(VirtualCount<CSupportUpgradeHandler>(), 1U);
  EXPECT_EQ(VirtualCount<CCheckMeta2024Helper>(), 1U);
  EXPECT_EQ(VirtualCount<CCheckResultConverter>(), 1U);
}

TEST(ClassShapeTest, TheStrategyIsAnUpgradeStrategyWithDestructorAndInvokeInThisOrder) {
  static_assert(kIsA<CEnableReflection, CUpgradeStrategy>);
  static_assert(kIsA<CUpgradeStrategy, CCheckMetaStrategy2024>);
  static_assert(std::has_virtual_destructor_v<CUpgradeStrategy>);
  EXPECT_EQ(VirtualCount<CCheckMetaStrategy2024>(), 2U);
  EXPECT_EQ(PlaceOf(&CCheckMetaStrategy2024::Invoke), 2U);
}

TEST(ClassShapeTest, EverythingElseHasNoVirtualOperation) {
  static_assert(kHasNoVirtual<CCheckClass2024Helper>);
  static_assert(kHasNoVirtual<CCheckLink2024Helper>);
  static_assert(kHasNoVirtual<CCheckBehavior2024Helper>);
  static_assert(kHasNoVirtual<CCheckProperty2024Helper>);
  static_assert(kHasNoVirtual<CCheckProperty2024Interface>);
  static_assert(kHasNoVirtual<CMeta2024ToJsonConverter>);
  static_assert(kHasNoVirtual<CMultiLanguageConfig>);
}

TEST(ClassShapeTest, TheStrategyAddsNoMemberToItsBase) {
  static_assert(sizeof(CCheckMetaStrategy2024) == sizeof(CUpgradeStrategy));
}

TEST(ClassShapeTest, ClassesOfStaticOperationsHoldNothing) {
  static_assert(std::is_empty_v<CCheckProperty2024Interface>);
  static_assert(std::is_empty_v<CMeta2024ToJsonConverter>);
}

TEST(ClassShapeTest, TheDictionaryOfWordsHoldsItsDocument) {
  static_assert(sizeof(CMultiLanguageConfig) == sizeof(JsonPointer));
}

TEST(ClassShapeTest, TheCheckOfTwoMetamodelsHoldsTheOriginalThenTheClients) {
  struct SShape : CSupportUpgradeHandler {
    std::shared_ptr<CMetaDictionary2024> original;
    std::shared_ptr<CMetaDictionary2024> client;
  };
  static_assert(sizeof(CCheckMeta2024Helper) == sizeof(SShape));
  CHandlerContext handlerContext;
  CUpgradeContext upgradeContext;
  const CCheckMeta2024Helper helper(handlerContext, upgradeContext);
  EXPECT_LT(Offset(helper, MemberOf(test::SShapeOriginalDictionary())),
            Offset(helper, MemberOf(test::SShapeClientDictionary())));
}

/// The client's element, then the original's, then what `Rest` has.
template <typename Comparer, typename Rest, typename Element>
void ExpectSides(const std::shared_ptr<Element>& client, const std::shared_ptr<Element>& original) {
  struct SShape {
    const void* client;
    const void* original;
    Rest rest;
  };
  struct SBareShape {
    const void* client;
    const void* original;
  };
  static_assert(sizeof(Comparer) == (std::is_empty_v<Rest> ? sizeof(SBareShape) : sizeof(SShape)));
  const Comparer comparer(*client, *original);
  EXPECT_EQ(PointerAt(comparer, 0), client.get());
  EXPECT_EQ(PointerAt(comparer, 1), original.get());
}

struct SNothing {};

TEST(ClassShapeTest, ComparersHoldTheClientsElementThenTheOriginalsThenWhetherItIsWritten) {
  ExpectSides<CCheckClass2024Helper, bool>(test::MakeClass({"A", {}, {}}), test::MakeClass({"A", {}, {}}));
  ExpectSides<CCheckLink2024Helper, SNothing>(test::MakeLink({"A", {}, {}}), test::MakeLink({"A", {}, {}}));
  ExpectSides<CCheckBehavior2024Helper, bool>(test::MakeBehavior({"A", {}, {}}), test::MakeBehavior({"A", {}, {}}));
  const auto element = test::MakeClass({"A", {}, {}});
  const CCheckClass2024Helper ofClass(*element, *element);
  EXPECT_EQ(Offset(ofClass, MemberOf(test::SShapeClassWritten())), 2 * sizeof(void*));
  EXPECT_FALSE(ofClass.*MemberOf(test::SShapeClassWritten()));
  const auto behavior = test::MakeBehavior({"A", {}, {}});
  const CCheckBehavior2024Helper ofBehavior(*behavior, *behavior);
  EXPECT_EQ(Offset(ofBehavior, MemberOf(test::SShapeBehaviorWritten())), 2 * sizeof(void*));
  EXPECT_FALSE(ofBehavior.*MemberOf(test::SShapeBehaviorWritten()));
}

TEST(ClassShapeTest, TheComparerOfPropertiesHoldsWhatIsSerializedThenTheSidesTheClientsFirst) {
  struct SShape {
    JsonPointer clientJson;
    JsonPointer originalJson;
    const void* client;
    const void* original;
  };
  static_assert(sizeof(CCheckProperty2024Helper) == sizeof(SShape));
  const auto client = test::Make(test::Property("P"));
  const auto original = test::Make(test::Property("P"));
  const CCheckProperty2024Helper helper(*client, *original);
  EXPECT_EQ(Offset(helper, MemberOf(test::SShapeClientProperty())), 0U);
  EXPECT_EQ(Offset(helper, MemberOf(test::SShapeOriginalProperty())), sizeof(JsonPointer));
  EXPECT_EQ(helper.*MemberOf(test::SShapeClientProperty()), nullptr);
  EXPECT_EQ(helper.*MemberOf(test::SShapeOriginalProperty()), nullptr);
  EXPECT_EQ(PointerAt(helper, 4), client.get());
  EXPECT_EQ(PointerAt(helper, 5), original.get());
}

TEST(ClassShapeTest, TheConverterHoldsTextWordsLanguageAndWhetherTheyAreLoadedAndNothingElse) {
  struct SShape : CSupportUpgradeHandler {
    std::stringstream buffer;
    std::shared_ptr<CMultiLanguageConfig> dictionary;
    std::string language;
    bool initialized;
  };
  static_assert(sizeof(CCheckResultConverter) == sizeof(SShape));
  CHandlerContext handlerContext;
  CUpgradeContext upgradeContext;
  const CCheckResultConverter converter(handlerContext, upgradeContext);
  const std::size_t buffer = Offset(converter, MemberOf(test::SShapeBuffer()));
  const std::size_t words = Offset(converter, MemberOf(test::SShapeWords()));
  const std::size_t language = Offset(converter, MemberOf(test::SShapeLanguage()));
  EXPECT_LT(buffer, words);
  EXPECT_LT(words, language);
  EXPECT_LT(language, Offset(converter, MemberOf(test::SShapeInitialized())));
  EXPECT_EQ((converter.*MemberOf(test::SShapeBuffer())).str(), "");
  EXPECT_EQ(converter.*MemberOf(test::SShapeWords()), nullptr);
  EXPECT_EQ(converter.*MemberOf(test::SShapeLanguage()), "");
  EXPECT_FALSE(converter.*MemberOf(test::SShapeInitialized()));
}

TEST(ClassShapeTest, WhatCanBeCopiedIsTheStrategyTheCheckTheComparersAndTheWords) {
  static_assert(std::is_default_constructible_v<CCheckMetaStrategy2024>);
  static_assert(std::is_copy_constructible_v<CCheckMetaStrategy2024>);
  static_assert(std::is_copy_assignable_v<CCheckMetaStrategy2024>);
  static_assert(std::is_copy_constructible_v<CCheckMeta2024Helper>);
  static_assert(std::is_copy_constructible_v<CCheckProperty2024Helper>);
  static_assert(std::is_copy_constructible_v<CMultiLanguageConfig>);
  static_assert(std::is_copy_assignable_v<CMultiLanguageConfig>);
  static_assert(std::is_default_constructible_v<CCheckProperty2024Interface>);
  static_assert(std::is_copy_assignable_v<CCheckProperty2024Interface>);
  static_assert(std::is_default_constructible_v<CMeta2024ToJsonConverter>);
  static_assert(std::is_copy_assignable_v<CMeta2024ToJsonConverter>);
  static_assert(!std::is_copy_constructible_v<CCheckResultConverter>);
  static_assert(!std::is_copy_assignable_v<CCheckResultConverter>);
}

}  // namespace
