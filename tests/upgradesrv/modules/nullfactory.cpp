// A module that knows no class at all.

#include "upgradesrv/modules/Factory.h"

CUpgradeStrategy* CreateReflectionClassObject(const std::string& /*className*/) {
  return nullptr;
}
