#include "otherhost/HostTest.h"

namespace otherhost {

SValue DisplayDictionary() {
  SValue dictionary = Object();
  for (const std::string key : {"inserted", "deleted", "updated", "class", "link", "behavior", "method", "property",
                                "internal_name", "display_name", "updated_to"}) {
    dictionary.Set(key, Object({{"en", "<" + key + ">"}}));
  }
  return dictionary;
}

}  // namespace otherhost
