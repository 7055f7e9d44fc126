#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/MetaMaker.h"
#include "support/TemporaryDirectory.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/MetaText.h"
#include "upgrademeta2024/storage/MetaStorage2024.h"

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

/// Any character, NUL, controls and quotes among them, but no surrogate.
rc::Gen<std::uint32_t> Character() {
  return rc::gen::oneOf(rc::gen::inRange<std::uint32_t>(0, 0x80), rc::gen::inRange<std::uint32_t>(0x80, 0xD800),
                        rc::gen::inRange<std::uint32_t>(0xE000, 0x110000));
}

rc::Gen<std::string> Text() {
  return rc::gen::map(rc::gen::container<std::vector<std::uint32_t>>(Character()),
                      [](const std::vector<std::uint32_t>& characters) {
                        std::string text;
                        for (const std::uint32_t character : characters) {
                          AppendUtf8(text, character);
                        }
                        return text;
                      });
}

/// Numbers of every size, the largest among them.
template <typename Number>
rc::Gen<Number> AnyNumber() {
  return rc::gen::oneOf(rc::gen::arbitrary<Number>(), rc::gen::just(std::numeric_limits<Number>::max()));
}

/// Names of one list: the number in front keeps them apart.
std::vector<std::string> Names() {
  std::vector<std::string> names = *rc::gen::container<std::vector<std::string>>(Text());
  for (std::size_t i = 0; i < names.size(); ++i) {
    names[i].insert(0, std::to_string(i) + "_");
  }
  return names;
}

std::vector<test::SProperty> Properties() {
  std::vector<test::SProperty> properties;
  for (const std::string& name : Names()) {
    properties.push_back({name, *Text(), *Text(), *Text(), *AnyNumber<std::uint32_t>(), *Text(),
                          *AnyNumber<std::uint16_t>(), *Text(), *Text(), *Text()});
  }
  return properties;
}

test::SClass ClassValues(const std::string& name) {
  return {
      name,   *rc::gen::container<std::vector<std::string>>(Text()), Properties(), *Text(), *AnyNumber<std::uint32_t>(),
      *Text()};
}

/// Lists are kept short: each element has lists of its own.
template <typename Add>
void ForEachName(const Add& add) {
  for (const std::string& name : *rc::gen::resize(4, rc::gen::exec(Names))) {
    add(name);
  }
}

TEST(DocumentMetaRoundTripTest, AnyMetamodelLoadsAsItWasSavedAndSavesTheSameAgain) {
  const test::CTemporaryDirectory directory;
  const bool holds = rc::check("saving and loading gives the same metamodel", [&directory] {
    CMetaDictionary2024 dictionary;
    ForEachName([&](const std::string& name) { dictionary.AddClass(test::MakeClass(ClassValues(name))); });
    ForEachName([&](const std::string& name) { dictionary.AddLink(test::MakeLink(ClassValues(name))); });
    ForEachName([&](const std::string& name) {
      dictionary.AddBehavior(test::MakeBehavior({name, Names(), Properties(), *Text()}));
    });

    const auto first = CMetaStorage2024::Open(directory.File("first.json"));
    first->Save(dictionary);
    const auto loaded = first->Load();
    RC_ASSERT(test::TextOf(*loaded) == test::TextOf(dictionary));

    CMetaStorage2024::Open(directory.File("second.json"))->Save(*loaded);
    RC_ASSERT(test::ReadFile(directory.File("second.json")) == test::ReadFile(directory.File("first.json")));
  });
  EXPECT_TRUE(holds);
}

}  // namespace
