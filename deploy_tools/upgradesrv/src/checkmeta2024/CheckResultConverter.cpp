#include "checkmeta2024/CheckResultConverter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/ErrorLog.h"
#include "checkmeta2024/MultiLanguageConfig.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "upgradecontext/UpgradeContext.h"

namespace {

// Fixed, so that whoever watches the log finds the line again.
constexpr int kUnknownChangeKindLine = 87;
constexpr int kUnknownMetaTypeLine = 115;

/// The one of `words` that `word` is; null when it is none of them.
const char* FindWord(std::initializer_list<const char*> words, const std::string& word) {
  const auto* const found = std::find_if(words.begin(), words.end(), [&word](const char* known) {
    return CStringHelper::StringCompare(known, word, false) == 0;
  });
  return found != words.end() ? *found : nullptr;
}

void LogUnknown(int line, const std::string& message) {
  checkmeta::LogError({__FILE__, line, "CCheckResultConverter::ConversionMetaInfoByType"}, message,
                      checkmeta::kUnknownKindError);
}

}  // namespace

CCheckResultConverter::CCheckResultConverter(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext)
    : CSupportUpgradeHandler(handlerContext, upgradeContext) {
  // A stream keeps quiet about memory that it does not get: a part of the text would be missing.
  buffer_.exceptions(std::ios::badbit | std::ios::failbit);
}

CCheckResultConverter::~CCheckResultConverter() = default;

void CCheckResultConverter::Init() {
  if (initialized_) {
    return;
  }
  const auto json = std::make_shared<CJsonObject>();
  json->CreateFromFile(GetUpgradeContext().GetUpgradeCfgPath() + "/multilanguage/strings/info.json");
  language_ = GetUpgradeContext().GetLang();
  dictionary_ = std::make_shared<CMultiLanguageConfig>(json);
  initialized_ = true;
}

std::string CCheckResultConverter::Display(const std::string& key) const {
  return dictionary_->GetDisplayString(language_, key);
}

void CCheckResultConverter::WriteElementLine(const std::string& indent, CJsonObject& element) {
  const std::string internalName = element.GetStringValue(checkmeta::kInternalName);
  const std::string displayName = element.GetStringValue(checkmeta::kDisplayName);
  WriteElementLine(indent, internalName, displayName);
}

void CCheckResultConverter::WriteElementLine(const std::string& indent, const std::string& internalName,
                                             const std::string& displayName) {
  buffer_ << indent << " " << Display(checkmeta::kInternalName) << ":" << internalName << ","
          << Display(checkmeta::kDisplayName) << ":" << displayName << "\n";
}

void CCheckResultConverter::ConversionMetaInfo(const std::string& metaType, const std::string& insertedKey,
                                               const std::string& deletedKey, const std::string& updatedKey,
                                               const std::shared_ptr<CJsonObject>& section, std::string& text) {
  Init();
  buffer_.str("");
  buffer_.clear();
  buffer_ << "\n";
  if (const auto [found, elements] = section->GetPropertyObjectArrayValue(insertedKey); found) {
    ConversionMetaInfoByType("", checkmeta::kInserted, metaType, elements);
  }
  if (const auto [found, elements] = section->GetPropertyObjectArrayValue(deletedKey); found) {
    ConversionMetaInfoByType("", checkmeta::kDeleted, metaType, elements);
  }
  if (const auto [found, elements] = section->GetPropertyObjectArrayValue(updatedKey); found) {
    ConversionUpdatedMetaInfo("", metaType, elements);
  }
  text += buffer_.str();
}

void CCheckResultConverter::ConversionMetaInfoByType(const std::string& indent, const std::string& changeKind,
                                                     const std::string& metaType, const ObjectList& elements) {
  if (elements.empty()) {
    return;
  }
  if (const char* const word = FindWord({checkmeta::kInserted, checkmeta::kDeleted}, changeKind); word != nullptr) {
    buffer_ << indent << Display(word);
  } else {
    LogUnknown(kUnknownChangeKindLine, "meta element check type error.check type:" + changeKind);
  }
  const char* const word = FindWord(
      {checkmeta::kClass, checkmeta::kLink, checkmeta::kBehavior, checkmeta::kMethod, checkmeta::kProperty}, metaType);
  if (word != nullptr) {
    buffer_ << Display(word) << ":\n";
  } else {
    LogUnknown(kUnknownMetaTypeLine, "meta element check type error.meta type:" + metaType);
  }
  for (const std::shared_ptr<CJsonObject>& element : elements) {
    WriteElementLine(indent, *element);
  }
  buffer_ << "\n";
}

void CCheckResultConverter::ConversionUpdatedMetaInfo(const std::string& indent, const std::string& metaType,
                                                      const ObjectList& elements) {
  if (elements.empty()) {
    return;
  }
  const std::array<std::pair<const char*, std::list<std::string>>, 3> nestedKinds = {{
      {checkmeta::kClass, {checkmeta::kBehavior, checkmeta::kProperty}},
      {checkmeta::kLink, {checkmeta::kProperty}},
      {checkmeta::kBehavior, {checkmeta::kMethod, checkmeta::kProperty}},
  }};
  buffer_ << indent << Display(checkmeta::kUpdated);
  const auto* const found = std::find_if(nestedKinds.begin(), nestedKinds.end(), [&metaType](const auto& row) {
    return CStringHelper::StringCompare(row.first, metaType, false) == 0;
  });
  if (found != nestedKinds.end()) {
    buffer_ << Display(found->first) << ":\n";
    ConversionUpdatedNestedMetaInfo(indent + " ", found->second, elements);
  }
}

void CCheckResultConverter::ConversionUpdatedNestedMetaInfo(const std::string& indent,
                                                            const std::list<std::string>& nestedKinds,
                                                            const ObjectList& elements) {
  for (const std::string& kind : nestedKinds) {
    if (CStringHelper::StringCompare(checkmeta::kBehavior, kind, false) == 0) {
      ConversionUpdatedBehaviorInfoOfClass(indent, checkmeta::kInsertedBehaviors, checkmeta::kDeletedBehaviors,
                                           checkmeta::kUpdatedBehaviors, elements);
    } else if (CStringHelper::StringCompare(checkmeta::kMethod, kind, false) == 0) {
      ConversionUpdatedNestedMetaInfo(indent, checkmeta::kMethod, checkmeta::kInsertedMethods,
                                      checkmeta::kDeletedMethods, checkmeta::kUpdatedMethods, elements);
    } else if (CStringHelper::StringCompare(checkmeta::kProperty, kind, false) == 0) {
      ConversionUpdatedNestedMetaInfo(indent, checkmeta::kProperty, checkmeta::kInsertedProperties,
                                      checkmeta::kDeletedProperties, checkmeta::kUpdatedProperties, elements);
    }
  }
}

void CCheckResultConverter::ConversionUpdatedNestedMetaInfo(const std::string& indent, const std::string& nestedType,
                                                            const std::string& insertedKey,
                                                            const std::string& deletedKey,
                                                            const std::string& updatedKey, const ObjectList& elements) {
  const std::string nestedIndent = indent + "  ";
  for (const std::shared_ptr<CJsonObject>& element : elements) {
    const auto [hasInserted, inserted] = element->GetPropertyObjectArrayValue(insertedKey);
    const auto [hasDeleted, deleted] = element->GetPropertyObjectArrayValue(deletedKey);
    const auto [hasUpdated, updated] = element->GetPropertyObjectArrayValue(updatedKey);
    if (!hasInserted && !hasDeleted && !hasUpdated) {
      continue;
    }
    WriteElementLine(indent, *element);
    if (hasInserted) {
      ConversionMetaInfoByType(nestedIndent, checkmeta::kInserted, nestedType, inserted);
    }
    if (hasDeleted) {
      ConversionMetaInfoByType(nestedIndent, checkmeta::kDeleted, nestedType, deleted);
    }
    if (hasUpdated) {
      ConversionUpdatedPropertyInfo(nestedIndent, updated);
    }
  }
  buffer_ << "\n";
}

void CCheckResultConverter::ConversionUpdatedBehaviorInfoOfClass(const std::string& indent,
                                                                 const std::string& insertedKey,
                                                                 const std::string& deletedKey,
                                                                 const std::string& updatedKey,
                                                                 const ObjectList& elements) {
  const std::string behaviorWord = Display(checkmeta::kBehavior);
  // One space more with each list, from one class to the next as well: readers of the text rely on this layout.
  std::string prefix = indent;
  for (const std::shared_ptr<CJsonObject>& element : elements) {
    using Found = std::pair<bool, std::list<std::string>>;
    const std::array<std::pair<const char*, Found>, 3> lists = {{
        {checkmeta::kInserted, element->GetPropertyStringArrayValue(insertedKey)},
        {checkmeta::kDeleted, element->GetPropertyStringArrayValue(deletedKey)},
        {checkmeta::kUpdated, element->GetPropertyStringArrayValue(updatedKey)},
    }};
    if (std::none_of(lists.begin(), lists.end(), [](const auto& list) { return list.second.first; })) {
      continue;
    }
    WriteElementLine(indent, *element);
    for (const auto& [kind, found] : lists) {
      if (!found.first) {
        continue;
      }
      prefix += " ";
      buffer_ << prefix << " " << Display(kind) << behaviorWord << ":\n";
      for (const std::string& name : found.second) {
        buffer_ << prefix << "   " << name << "\n";
      }
    }
  }
}

void CCheckResultConverter::ConversionUpdatedPropertyInfo(const std::string& indent, const ObjectList& changes) {
  if (changes.empty()) {
    return;
  }
  buffer_ << indent << Display(checkmeta::kUpdated) << Display(checkmeta::kProperty) << ":\n";
  for (const std::shared_ptr<CJsonObject>& change : changes) {
    const std::string field = change->GetStringValue(checkmeta::kUpdatedField);
    const std::shared_ptr<CJsonObject> client = change->GetObjectValue(checkmeta::kClientProperty);
    const std::shared_ptr<CJsonObject> original = change->GetObjectValue(checkmeta::kOriginalProperty);
    if (client == nullptr || original == nullptr) {
      continue;
    }
    const std::string internalName = client->GetStringValue(checkmeta::kInternalName);
    const std::string displayName = client->GetStringValue(checkmeta::kDisplayName);
    const std::string clientValue = client->GetStringValue(field);
    const std::string originalValue = original->GetStringValue(field);
    WriteElementLine(indent, internalName, displayName);
    buffer_ << indent << "  " << field << ":" << originalValue << Display(checkmeta::kUpdatedTo) << ":" << clientValue
            << "\n";
  }
}
