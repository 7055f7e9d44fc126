#pragma once

#include <list>
#include <memory>
#include <sstream>
#include <string>

#include "checkmeta2024/checkmeta2024_export.h"
#include "upgradecontext/SupportUpgradeHandler.h"

class CJsonObject;
class CMultiLanguageConfig;

/// Turns the check result document into text in the language of the run. Every word comes from the display dictionary
/// "multilanguage/strings/info.json" in the upgrade configuration directory, read at the first conversion; spaces
/// between words are the dictionary's. Display keys: "inserted", "deleted", "updated", "class", "link", "behavior",
/// "method", "property", "internal_name", "display_name", "updated_to".
///
/// The text of one kind, D(key) being a word of the dictionary:
///
///     (empty line)
///     D(inserted)D(class):
///      D(internal_name):NAME,D(display_name):NAME           one line per inserted element
///     (empty line)
///     D(deleted)D(class):                                   the same for deleted elements
///      …
///     (empty line)
///     D(updated)D(class):                                   the updated elements' behaviors, methods and properties
///       D(internal_name):NAME,D(display_name):NAME
///        D(inserted)D(property):
///         D(internal_name):NAME,D(display_name):NAME
///     …
///
/// Lists that the section lacks, or that are empty, have no block.
class CHECKMETA2024_EXPORT CCheckResultConverter : public CSupportUpgradeHandler {
 public:
  /// Reads nothing. Both contexts must outlive the converter.
  CCheckResultConverter(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext);
  CCheckResultConverter(const CCheckResultConverter&) = delete;
  CCheckResultConverter& operator=(const CCheckResultConverter&) = delete;
  ~CCheckResultConverter() override;

  /// Appends the text of one kind to `text`. `metaType` is "class", "link" or "behavior", `section` that kind's object
  /// of the check result document (not null), the keys name its three arrays. Throws CKVXException: what reading the
  /// dictionary file throws (the next call tries again), 0xA4C0003E or 0xA4C00004 for a display key or an entry of the
  /// document that is missing or of the wrong type. `text` is then unchanged. An unknown `metaType` is logged (code
  /// 0xA4520008) and leaves its word out.
  void ConversionMetaInfo(const std::string& metaType, const std::string& insertedKey, const std::string& deletedKey,
                          const std::string& updatedKey, const std::shared_ptr<CJsonObject>& section,
                          std::string& text);

 private:
  using ObjectList = std::list<std::shared_ptr<CJsonObject>>;

  void Init();
  /// The word of a display key in the language of the run.
  std::string Display(const std::string& key) const;
  void WriteElementLine(const std::string& indent, CJsonObject& element);
  void WriteElementLine(const std::string& indent, const std::string& internalName, const std::string& displayName);
  void ConversionMetaInfoByType(const std::string& indent, const std::string& changeKind, const std::string& metaType,
                                const ObjectList& elements);
  void ConversionUpdatedMetaInfo(const std::string& indent, const std::string& metaType, const ObjectList& elements);
  void ConversionUpdatedNestedMetaInfo(const std::string& indent, const std::list<std::string>& nestedKinds,
                                       const ObjectList& elements);
  void ConversionUpdatedNestedMetaInfo(const std::string& indent, const std::string& nestedType,
                                       const std::string& insertedKey, const std::string& deletedKey,
                                       const std::string& updatedKey, const ObjectList& elements);
  void ConversionUpdatedBehaviorInfoOfClass(const std::string& indent, const std::string& insertedKey,
                                            const std::string& deletedKey, const std::string& updatedKey,
                                            const ObjectList& elements);
  void ConversionUpdatedPropertyInfo(const std::string& indent, const ObjectList& changes);

  std::stringstream buffer_;
  std::shared_ptr<CMultiLanguageConfig> dictionary_;
  std::string language_;
  bool initialized_ = false;
};
