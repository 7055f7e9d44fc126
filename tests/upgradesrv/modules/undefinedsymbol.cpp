// A module that was built against another host.

#include "upgradesrv/modules/Factory.h"

CUpgradeStrategy* OperationOfAnotherHost();

CUpgradeStrategy* CreateReflectionClassObject(const std::string& /*className*/) {
  return OperationOfAnotherHost();
}
