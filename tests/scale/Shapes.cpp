#include "scale/Shapes.h"

namespace test {
namespace {

std::string Named(const std::string& name, const std::string& members = "") {
  return R"({"internal_name": ")" + name + R"(", "display_name": ")" + name + "\"" + members + "}";
}

std::string Property(const std::string& name, int length) {
  return Named(name, R"(, "length": )" + std::to_string(length));
}

/// A member whose value is the array of `size` items.
template <typename Item>
std::string Array(const std::string& key, std::size_t size, const Item& item) {
  std::string text = "\"" + key + "\": [";
  for (std::size_t i = 0; i < size; ++i) {
    text += (i == 0 ? "" : ",\n") + item(std::to_string(i));
  }
  return text + "]";
}

std::string Document(const std::string& members) {
  return R"({"generation": 2024, )" + members + "}";
}

/// A metamodel of one element, whose name is the same on both sides.
std::string OneElement(const std::string& kind, const std::string& members) {
  return Document(Array(kind, 1, [&](const std::string&) { return Named("Only", ", " + members); }));
}

}  // namespace

std::string ClassesOfOneProperty(std::size_t size, const std::string& prefix, int length) {
  return Document(Array("classes", size, [&](const std::string& number) {
    const auto property = [&](const std::string&) { return Property("Property", length); };
    return Named(prefix + number, ", " + Array("properties", 1, property));
  }));
}

std::string PropertiesOfOneClass(std::size_t size, const std::string& prefix, int length) {
  return OneElement("classes", Array("properties", size,
                                     [&](const std::string& number) { return Property(prefix + number, length); }));
}

std::string MethodsOfOneBehavior(std::size_t size, const std::string& prefix, int /*length*/) {
  return OneElement("behaviors",
                    Array("methods", size, [&](const std::string& number) { return Named(prefix + number); }));
}

std::string BehaviorNamesOfOneClass(std::size_t size, const std::string& prefix, int /*length*/) {
  return OneElement("classes",
                    Array("behaviors", size, [&](const std::string& number) { return "\"" + prefix + number + "\""; }));
}

std::string LongNames(std::size_t size, const std::string& prefix, int length) {
  std::string name = prefix;
  while (name.size() < size * 10) {
    name += "0123456789";
  }
  const auto property = [&](const std::string&) { return Property(name, length); };
  const auto method = [&](const std::string&) { return Named(name); };
  const auto behaviorName = [&](const std::string&) { return "\"" + name + "\""; };
  const std::string properties = Array("properties", 1, property);
  const auto element = [&](const std::string& members) {
    return [&, members](const std::string&) { return Named(name, ", " + properties + members); };
  };
  return Document(Array("classes", 1, element(", " + Array("behaviors", 1, behaviorName))) + ", " +
                  Array("links", 1, element("")) + ", " +
                  Array("behaviors", 1, element(", " + Array("methods", 1, method))));
}

}  // namespace test
