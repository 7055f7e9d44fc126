#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>

#include "checkmeta2024/CheckBehavior2024Helper.h"
#include "checkmeta2024/CheckClass2024Helper.h"
#include "checkmeta2024/CheckLink2024Helper.h"
#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "upgrademeta2024/MetaDictionary2024.h"

/// What tells the three kinds of elements apart; the dictionary check is written once over these. The log lines are
/// fixed: whoever watches the log finds a failed check by them.
namespace checkmeta {

struct SClassKind {
  using Element = CMetaClass2024;
  using Comparer = CCheckClass2024Helper;

  static constexpr auto kList = &CMetaDictionary2024::GetClasses;
  static constexpr auto kExist = &CMetaDictionary2024::ExistClass;
  static constexpr auto kGet = &CMetaDictionary2024::GetClass;
  static constexpr auto kConvert = &CMeta2024ToJsonConverter::ConversionClass2024ToJson;
  static bool Compare(Comparer& comparer, std::shared_ptr<CJsonObject>& entry) { return comparer.CheckClass(entry); }
  static bool Compare(Comparer& comparer) { return comparer.CheckClass(); }

  static const std::string& Key() { return kClass; }
  static const std::string& InsertedKey() { return kInsertedClasses; }
  static const std::string& UpdatedKey() { return kUpdatedClasses; }
  static const std::string& DeletedKey() { return kDeletedClasses; }

  static constexpr const char* kLogPrefix = "meta check class error.class:";
  static constexpr const char* kFunction = "CCheckMeta2024Helper::CheckMetaClasses";
  static constexpr std::uint32_t kCode = kClassCheckError;
  static constexpr int kClientLine = 56;
  static constexpr int kOriginalLine = 69;
};

struct SLinkKind {
  using Element = CMetaLink2024;
  using Comparer = CCheckLink2024Helper;

  static constexpr auto kList = &CMetaDictionary2024::GetLinks;
  static constexpr auto kExist = &CMetaDictionary2024::ExistLink;
  static constexpr auto kGet = &CMetaDictionary2024::GetLink;
  static constexpr auto kConvert = &CMeta2024ToJsonConverter::ConversionLink2024ToJson;
  static bool Compare(Comparer& comparer, std::shared_ptr<CJsonObject>& entry) { return comparer.CheckLink(entry); }
  static bool Compare(Comparer& comparer) { return comparer.CheckLink(); }

  static const std::string& Key() { return kLink; }
  static const std::string& InsertedKey() { return kInsertedLinks; }
  static const std::string& UpdatedKey() { return kUpdatedLinks; }
  static const std::string& DeletedKey() { return kDeletedLinks; }

  static constexpr const char* kLogPrefix = "meta check link error.link:";
  static constexpr const char* kFunction = "CCheckMeta2024Helper::CheckMetaLinks";
  static constexpr std::uint32_t kCode = kLinkCheckError;
  static constexpr int kClientLine = 161;
  static constexpr int kOriginalLine = 174;
};

struct SBehaviorKind {
  using Element = CMetaBehavior2024;
  using Comparer = CCheckBehavior2024Helper;

  static constexpr auto kList = &CMetaDictionary2024::GetBehaviors;
  static constexpr auto kExist = &CMetaDictionary2024::ExistBehavior;
  static constexpr auto kGet = &CMetaDictionary2024::GetBehavior;
  static constexpr auto kConvert = &CMeta2024ToJsonConverter::ConversionBehavior2024ToJson;
  static bool Compare(Comparer& comparer, std::shared_ptr<CJsonObject>& entry) { return comparer.CheckBehavior(entry); }
  static bool Compare(Comparer& comparer) { return comparer.CheckBehavior(); }

  static const std::string& Key() { return kBehavior; }
  static const std::string& InsertedKey() { return kInsertedBehaviors; }
  static const std::string& UpdatedKey() { return kUpdatedBehaviors; }
  static const std::string& DeletedKey() { return kDeletedBehaviors; }

  static constexpr const char* kLogPrefix = "meta check behavior error.behavior:";
  static constexpr const char* kFunction = "CCheckMeta2024Helper::CheckMetaBehaviors";
  static constexpr std::uint32_t kCode = kBehaviorCheckError;
  static constexpr int kClientLine = 266;
  static constexpr int kOriginalLine = 279;
};

}  // namespace checkmeta
