#include "upgradecontext/EnableReflection.h"

CEnableReflection::CEnableReflection() = default;

CEnableReflection::CEnableReflection(const CEnableReflection&) = default;

CEnableReflection& CEnableReflection::operator=(const CEnableReflection&) = default;

CEnableReflection::~CEnableReflection() = default;
