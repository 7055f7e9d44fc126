#pragma once

#include <string>

#include "upgradecontext/UpgradeStrategy.h"

extern "C" __attribute__((visibility("default"))) CUpgradeStrategy* CreateReflectionClassObject(
    const std::string& className);
