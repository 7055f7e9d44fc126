#include "storage/MetaGenerator.h"

#include <rapidcheck.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "support/MetaMaker.h"
#include "upgrademeta2024/MetaDictionary2024.h"

namespace test {
namespace {

std::string Text() {
  static const std::vector<std::string> pieces = {
      "a",  "B",    "z",    "Z", "0",   "'",  "\"", "\\", ";",      "%",      "--",     "/*",        "\n",
      "\t", "\x01", "\x7F", " ", ":v0", "$1", "?",  "{",  "\u00C9", "\u00E9", "\u4E16", "\U0001F600"};
  std::string text;
  for (const std::string& piece : *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(pieces))) {
    text += piece;
  }
  return text;
}

/// No two names of one list may be the same; `index` sees to that.
std::string Name(std::size_t index) {
  return Text() + "#" + std::to_string(index);
}

std::size_t Count(std::size_t below) {
  return *rc::gen::inRange<std::size_t>(0, below);
}

template <typename Number>
Number AnyNumber() {
  return *rc::gen::oneOf(rc::gen::arbitrary<Number>(), rc::gen::just(std::numeric_limits<Number>::max()),
                         rc::gen::just<Number>(0));
}

std::vector<SProperty> Properties() {
  std::vector<SProperty> properties(Count(5));
  for (std::size_t i = 0; i < properties.size(); ++i) {
    properties[i] = {Name(i), Text(), Text(), Text(), AnyNumber<std::uint32_t>(), Text(), AnyNumber<std::uint16_t>(),
                     Text(),  Text(), Text()};
  }
  return properties;
}

SClass Class(std::size_t index) {
  SClass values;
  values.internalName = Name(index);
  values.displayName = Text();
  values.classId = AnyNumber<std::uint32_t>();
  values.tableName = Text();
  for (std::size_t i = Count(4); i > 0; --i) {
    values.behaviors.push_back(Text());
  }
  values.properties = Properties();
  return values;
}

std::shared_ptr<CMetaBehavior2024> Behavior(std::size_t index) {
  SMetaBehaviorValues2024 values;
  values.internalName = Name(index);
  values.displayName = Text();
  for (std::size_t i = Count(4); i > 0; --i) {
    values.methods.push_back(std::make_shared<CMetaMethod2024>(Name(i), Text()));
  }
  values.properties = MakeTable(Properties());
  return std::make_shared<CMetaBehavior2024>(std::move(values));
}

}  // namespace

std::shared_ptr<CMetaDictionary2024> GenerateMetamodel() {
  auto dictionary = std::make_shared<CMetaDictionary2024>();
  for (std::size_t i = Count(5); i > 0; --i) {
    dictionary->AddClass(MakeClass(Class(i)));
  }
  for (std::size_t i = Count(4); i > 0; --i) {
    dictionary->AddLink(MakeLink(Class(i)));
  }
  for (std::size_t i = Count(4); i > 0; --i) {
    dictionary->AddBehavior(Behavior(i));
  }
  return dictionary;
}

}  // namespace test
