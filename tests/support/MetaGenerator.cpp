#include "support/MetaGenerator.h"

#include <rapidcheck.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/MetaMaker.h"
#include "upgrademeta2024/MetaDictionary2024.h"

namespace test {
namespace {

void AppendUtf8(std::string& text, std::uint32_t character) {
  const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6U);
    put(0x80 | (character & 0x3FU));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12U);
    put(0x80 | (character >> 6U & 0x3FU));
    put(0x80 | (character & 0x3FU));
  } else {
    put(0xF0 | character >> 18U);
    put(0x80 | (character >> 12U & 0x3FU));
    put(0x80 | (character >> 6U & 0x3FU));
    put(0x80 | (character & 0x3FU));
  }
}

/// Any character from `first` on, controls and quotes among them, but no surrogate.
rc::Gen<std::uint32_t> Character(std::uint32_t first) {
  return rc::gen::oneOf(rc::gen::inRange<std::uint32_t>(first, 0x80), rc::gen::inRange<std::uint32_t>(0x80, 0xD800),
                        rc::gen::inRange<std::uint32_t>(0xE000, 0x110000));
}

/// Numbers of every size, the largest among them.
template <typename Number>
rc::Gen<Number> AnyNumber() {
  return rc::gen::oneOf(rc::gen::arbitrary<Number>(), rc::gen::just(std::numeric_limits<Number>::max()));
}

class CGenerator {
 public:
  explicit CGenerator(EControls controls) : first_(controls == EControls::kWithNul ? 0 : 1) {}

  std::shared_ptr<CMetaDictionary2024> Generate() const {
    auto dictionary = std::make_shared<CMetaDictionary2024>();
    ForEachName([&](const std::string& name) { dictionary->AddClass(MakeClass(ClassValues(name))); });
    ForEachName([&](const std::string& name) { dictionary->AddLink(MakeLink(ClassValues(name))); });
    ForEachName([&](const std::string& name) {
      dictionary->AddBehavior(MakeBehavior({name, Names(), Properties(), *Text()}));
    });
    return dictionary;
  }

 private:
  rc::Gen<std::string> Text() const {
    return rc::gen::map(rc::gen::container<std::vector<std::uint32_t>>(Character(first_)),
                        [](const std::vector<std::uint32_t>& characters) {
                          std::string text;
                          for (const std::uint32_t character : characters) {
                            AppendUtf8(text, character);
                          }
                          return text;
                        });
  }

  /// Names of one list: the number in front keeps them apart.
  std::vector<std::string> Names() const {
    std::vector<std::string> names = *rc::gen::container<std::vector<std::string>>(Text());
    for (std::size_t i = 0; i < names.size(); ++i) {
      names[i].insert(0, std::to_string(i) + "_");
    }
    return names;
  }

  std::vector<SProperty> Properties() const {
    std::vector<SProperty> properties;
    for (const std::string& name : Names()) {
      properties.push_back({name, *Text(), *Text(), *Text(), *AnyNumber<std::uint32_t>(), *Text(),
                            *AnyNumber<std::uint16_t>(), *Text(), *Text(), *Text()});
    }
    return properties;
  }

  SClass ClassValues(const std::string& name) const {
    return {name,
            *rc::gen::container<std::vector<std::string>>(Text()),
            Properties(),
            *Text(),
            *AnyNumber<std::uint32_t>(),
            *Text()};
  }

  /// Lists are kept short: each element has lists of its own.
  template <typename Add>
  void ForEachName(const Add& add) const {
    for (const std::string& name : *rc::gen::resize(4, rc::gen::exec([this] { return Names(); }))) {
      add(name);
    }
  }

  std::uint32_t first_;
};

}  // namespace

std::shared_ptr<CMetaDictionary2024> GenerateMetamodel(EControls controls) {
  return CGenerator(controls).Generate();
}

}  // namespace test
