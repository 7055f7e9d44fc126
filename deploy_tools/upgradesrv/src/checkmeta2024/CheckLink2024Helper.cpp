#include "checkmeta2024/CheckLink2024Helper.h"

#include "checkmeta2024/CheckMetaConstants.h"
#include "checkmeta2024/ElementProperties.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "upgrademeta2024/MetaLink2024.h"

namespace {

constexpr checkmeta::SPropertyCheckLog kPropertyLog = {__FILE__,
                                                       "CCheckLink2024Helper::CheckLink",
                                                       checkmeta::kLinkCheckError,
                                                       {__LINE__, "link check HasDeletedProperties error.link:"},
                                                       {__LINE__, "link check HasInsertedProperties error.link:"},
                                                       {__LINE__, "link check HasUpdatedProperties error.link:"}};

}  // namespace

CCheckLink2024Helper::CCheckLink2024Helper(const CMetaLink2024& clientLink, const CMetaLink2024& originalLink)
    : clientLink_(clientLink), originalLink_(originalLink) {}

bool CCheckLink2024Helper::CheckLink(std::shared_ptr<CJsonObject>& entry) {
  const bool passed = checkmeta::CheckElementProperties(clientLink_, originalLink_, entry);
  if (!passed) {
    CMeta2024ToJsonConverter::ConversionLink2024ToJson(clientLink_, entry);
  }
  return passed;
}

bool CCheckLink2024Helper::CheckLink() {
  return checkmeta::CheckElementProperties(clientLink_, originalLink_, kPropertyLog);
}
