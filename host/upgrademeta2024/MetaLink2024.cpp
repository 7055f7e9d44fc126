#include "upgrademeta2024/MetaLink2024.h"

#include <utility>

CMetaLink2024::CMetaLink2024(SMetaClassValues2024 values) : CMetaClass2024(std::move(values)) {}

CMetaLink2024::~CMetaLink2024() = default;
