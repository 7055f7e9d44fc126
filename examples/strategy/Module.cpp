#include <memory>
#include <string>

#include "LongTextStrategy.h"
#include "PrefixRuleStrategy.h"

extern "C" CUpgradeStrategy* CreateReflectionClassObject(const std::string& className) {
  if (className == "CPrefixRuleStrategy") {
    return std::make_unique<CPrefixRuleStrategy>().release();
  }
  if (className == "CLongTextStrategy") {
    return std::make_unique<CLongTextStrategy>().release();
  }
  return nullptr;
}
