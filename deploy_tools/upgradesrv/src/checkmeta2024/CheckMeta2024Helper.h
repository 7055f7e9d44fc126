#pragma once

#include <memory>

#include "checkmeta2024/checkmeta2024_export.h"
#include "upgradecontext/SupportUpgradeHandler.h"

class CJsonObject;
class CMetaDictionary2024;

/// Compares the client's metamodel with the original, one kind of element at a time. Elements are matched by internal
/// name, as the metamodel's lookup does. Both metamodels are loaded by the first check, the client's first; later
/// checks, and copies of the helper, use the same. What the loading throws leaves the check.
///
/// A check with a document answers true when no element of the kind was changed or deleted; it then writes nothing, not
/// even insertions. Otherwise it sets one member of the document, replacing one of that name:
///
///     "class":    { "inserted_classes": […],   "updated_classes": […],   "deleted_classes": […] }
///     "link":     { "inserted_links": […],     "updated_links": […],     "deleted_links": […] }
///     "behavior": { "inserted_behaviors": […], "updated_behaviors": […], "deleted_behaviors": […] }
///
/// in this order, each array present only when it has items. Inserted elements, in the order of the client's list, and
/// deleted ones, in that of the original's, are in it as element JSON (see CMeta2024ToJsonConverter); updated ones, in
/// the order of the client's list, as the entries of CCheckClass2024Helper, CCheckLink2024Helper and
/// CCheckBehavior2024Helper.
///
/// A check without a document answers true, or logs the first changed or deleted element and throws CKVXException with
/// the kind's code alone: 0xA4520005 for a class, 0xA4520006 for a link, 0xA4520004 for a behavior. It never answers
/// false.
class CHECKMETA2024_EXPORT CCheckMeta2024Helper : public CSupportUpgradeHandler {
 public:
  /// Loads nothing. Both contexts must outlive the helper and its copies.
  CCheckMeta2024Helper(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext);
  CCheckMeta2024Helper(const CCheckMeta2024Helper&);
  CCheckMeta2024Helper& operator=(const CCheckMeta2024Helper&) = delete;
  ~CCheckMeta2024Helper() override;

  bool CheckMetaClasses(std::shared_ptr<CJsonObject>& checkResult);
  bool CheckMetaClasses();
  bool CheckMetaLinks(std::shared_ptr<CJsonObject>& checkResult);
  bool CheckMetaLinks();
  bool CheckMetaBehaviors(std::shared_ptr<CJsonObject>& checkResult);
  bool CheckMetaBehaviors();

 private:
  void InitMetaDictionary();

  std::shared_ptr<CMetaDictionary2024> originalDictionary_;
  std::shared_ptr<CMetaDictionary2024> clientDictionary_;
};
