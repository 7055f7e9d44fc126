#pragma once

#include <memory>

#include "otherhost/Host.h"
#include "upgrademeta2024/MetaBehavior2024.h"
#include "upgrademeta2024/MetaClass2024.h"
#include "upgrademeta2024/MetaLink2024.h"
#include "upgrademeta2024/MetaMethod2024.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace otherhost {

/// An element of each side; its calls are recorded under "client" and "original".
template <typename Element>
struct SSides {
  SSides(const SElement& clientValues, const SElement& originalValues)
      : client("client", clientValues), original("original", originalValues) {}

  Element client;
  Element original;
};

/// A property of each side, recorded as "client.NAME" and "original.NAME".
struct SPropertySides {
  SPropertySides(const SProperty& clientValues, const SProperty& originalValues)
      : client("client", clientValues), original("original", originalValues) {}

  CMetaProperty2024 client;
  CMetaProperty2024 original;
};

}  // namespace otherhost
