#pragma once

#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/upgrademeta2024_export.h"

/// A link (relation) of the metamodel: a class in every respect, listed and looked up apart from the classes.
class UPGRADEMETA2024_EXPORT CMetaLink2024 : public CMetaClass2024 {
 public:
  explicit CMetaLink2024(SMetaClassValues2024 values);
  ~CMetaLink2024();
};
