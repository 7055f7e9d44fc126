#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "checkmeta2024/CheckBehavior2024Helper.h"
#include "checkmeta2024/CheckClass2024Helper.h"
#include "checkmeta2024/CheckLink2024Helper.h"
#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/MetaLink2024.h"

/// What tells the three kinds of elements apart; the dictionary check is written once over these. The log lines are
/// fixed: whoever watches the log finds a failed check by them.
namespace checkmeta {

struct SClassKind {
  using Element = CMetaClass2024;
  using Comparer = CCheckClass2024Helper;

  static auto List(CMetaDictionary2024& dictionary) { return dictionary.GetClasses(); }
  static bool Exist(CMetaDictionary2024& dictionary, const std::string& name, std::shared_ptr<Element>& out) {
    return dictionary.ExistClass(name, out);
  }
  static auto Get(CMetaDictionary2024& dictionary, const std::string& name) { return dictionary.GetClass(name); }

  static constexpr auto kConvert = &CMeta2024ToJsonConverter::ConversionClass2024ToJson;
  static bool Compare(Comparer& comparer, std::shared_ptr<CJsonObject>& entry) { return comparer.CheckClass(entry); }
  static bool Compare(Comparer& comparer) { return comparer.CheckClass(); }

  static constexpr const char* kKey = kClass;
  static constexpr const char* kInsertedKey = kInsertedClasses;
  static constexpr const char* kUpdatedKey = kUpdatedClasses;
  static constexpr const char* kDeletedKey = kDeletedClasses;

  static constexpr const char* kLogPrefix = "meta check class error.class:";
  static constexpr const char* kFunction = "CCheckMeta2024Helper::CheckMetaClasses";
  static constexpr std::uint32_t kCode = kClassCheckError;
  static constexpr int kClientLine = 56;
  static constexpr int kOriginalLine = 69;
};

struct SLinkKind {
  using Element = CMetaLink2024;
  using Comparer = CCheckLink2024Helper;

  static auto List(CMetaDictionary2024& dictionary) { return dictionary.GetLinks(); }
  static bool Exist(CMetaDictionary2024& dictionary, const std::string& name, std::shared_ptr<Element>& out) {
    return dictionary.ExistLink(name, out);
  }
  static auto Get(CMetaDictionary2024& dictionary, const std::string& name) { return dictionary.GetLink(name); }

  static constexpr auto kConvert = &CMeta2024ToJsonConverter::ConversionLink2024ToJson;
  static bool Compare(Comparer& comparer, std::shared_ptr<CJsonObject>& entry) { return comparer.CheckLink(entry); }
  static bool Compare(Comparer& comparer) { return comparer.CheckLink(); }

  static constexpr const char* kKey = kLink;
  static constexpr const char* kInsertedKey = kInsertedLinks;
  static constexpr const char* kUpdatedKey = kUpdatedLinks;
  static constexpr const char* kDeletedKey = kDeletedLinks;

  static constexpr const char* kLogPrefix = "meta check link error.link:";
  static constexpr const char* kFunction = "CCheckMeta2024Helper::CheckMetaLinks";
  static constexpr std::uint32_t kCode = kLinkCheckError;
  static constexpr int kClientLine = 161;
  static constexpr int kOriginalLine = 174;
};

struct SBehaviorKind {
  using Element = CMetaBehavior2024;
  using Comparer = CCheckBehavior2024Helper;

  static auto List(CMetaDictionary2024& dictionary) { return dictionary.GetBehaviors(); }
  static bool Exist(CMetaDictionary2024& dictionary, const std::string& name, std::shared_ptr<Element>& out) {
    return dictionary.ExistBehavior(name, out);
  }
  static auto Get(CMetaDictionary2024& dictionary, const std::string& name) { return dictionary.GetBehavior(name); }

  static constexpr auto kConvert = &CMeta2024ToJsonConverter::ConversionBehavior2024ToJson;
  static bool Compare(Comparer& comparer, std::shared_ptr<CJsonObject>& entry) { return comparer.CheckBehavior(entry); }
  static bool Compare(Comparer& comparer) { return comparer.CheckBehavior(); }

  static constexpr const char* kKey = kBehavior;
  static constexpr const char* kInsertedKey = kInsertedBehaviors;
  static constexpr const char* kUpdatedKey = kUpdatedBehaviors;
  static constexpr const char* kDeletedKey = kDeletedBehaviors;

  static constexpr const char* kLogPrefix = "meta check behavior error.behavior:";
  static constexpr const char* kFunction = "CCheckMeta2024Helper::CheckMetaBehaviors";
  static constexpr std::uint32_t kCode = kBehaviorCheckError;
  static constexpr int kClientLine = 266;
  static constexpr int kOriginalLine = 279;
};

}  // namespace checkmeta
