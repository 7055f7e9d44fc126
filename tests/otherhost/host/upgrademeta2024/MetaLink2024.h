#pragma once

#include "upgrademeta2024/MetaClass2024.h"

class CMetaLink2024 : public CMetaClass2024 {
 public:
  using CMetaClass2024::CMetaClass2024;
};
