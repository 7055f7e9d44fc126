// A module that fails while it makes its strategy.

#include <stdexcept>

#include "upgradesrv/modules/Factory.h"

CUpgradeStrategy* CreateReflectionClassObject(const std::string& className) {
  throw std::runtime_error("no licence for " + className);
}
