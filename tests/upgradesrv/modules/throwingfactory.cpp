// A module that fails while it makes its strategy, in one way or another by the class name.

#include <stdexcept>

#include "kvxsptexception/KVXException.h"
#include "upgradesrv/modules/Factory.h"

CUpgradeStrategy* CreateReflectionClassObject(const std::string& className) {
  if (className == "CHostException") {
    throw CKVXException(0xA4520008, "the factory's message");
  }
  if (className == "CInt") {
    throw 42;
  }
  throw std::runtime_error("no licence for " + className);
}
