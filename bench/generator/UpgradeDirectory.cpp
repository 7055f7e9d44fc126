#include "generator/UpgradeDirectory.h"

#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "generator/Metamodel.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace bench {
namespace {

using Path = std::filesystem::path;

/// The example's without a base: a review of the two metamodels is measured by a run, which reads no more.
constexpr const char* kConfiguration = R"({
  "lang": "en",
  "version": "2024",
  "original_metamodel": "2024/metamodel.json",
  "client_metamodel": "installation.json",
  "strategies": [
    {
      "module": "checkmeta2024",
      "class": "CCheckMetaStrategy2024",
      "parameter": { "execute_elements": ["class", "link", "behavior"] }
    }
  ]
}
)";

CMetaPropertyTable2024 Properties(const SElement& element) {
  CMetaPropertyTable2024 table;
  for (const SMetaPropertyValues2024& values : element.properties) {
    table.Add(values);
  }
  return table;
}

std::shared_ptr<CMetaBehavior2024> Behavior(const SElement& element) {
  SMetaBehaviorValues2024 values;
  values.internalName = element.name.internalName;
  values.displayName = element.name.displayName;
  for (const SName& method : element.methods) {
    values.methods.push_back(std::make_shared<CMetaMethod2024>(method.internalName, method.displayName));
  }
  values.properties = Properties(element);
  return std::make_shared<CMetaBehavior2024>(std::move(values));
}

SMetaClassValues2024 Class(const SElement& element) {
  SMetaClassValues2024 values;
  values.internalName = element.name.internalName;
  values.displayName = element.name.displayName;
  values.classId = element.classId;
  values.tableName = "T_" + element.name.storedName;
  values.behaviors.assign(element.behaviors.begin(), element.behaviors.end());
  values.properties = Properties(element);
  return values;
}

/// `generate` calls the sink that it is given with each element.
template <typename Generate>
void WriteDocument(const Path& path, const Generate& generate) {
  CMetaDictionary2024 dictionary;
  generate([&dictionary](EKind kind, const SElement& element) {
    switch (kind) {
      case kClasses:
        dictionary.AddClass(std::make_shared<CMetaClass2024>(Class(element)));
        break;
      case kLinks:
        dictionary.AddLink(std::make_shared<CMetaLink2024>(Class(element)));
        break;
      case kBehaviors:
        dictionary.AddBehavior(Behavior(element));
        break;
    }
  });
  OpenMetaStorage(path)->Save(dictionary);
}

void CopyFromExample(const Path& name, const Path& directory) {
  const Path target = directory / name;
  std::filesystem::create_directories(target.parent_path());
  std::filesystem::copy_file(Path(UPGRADESRV_EXAMPLE_DIR) / name, target,
                             std::filesystem::copy_options::overwrite_existing);
}

}  // namespace

void WriteUpgradeDirectory(const SSize& size, const SVariant& variant, std::uint32_t seed, const Path& directory) {
  std::filesystem::create_directories(directory);
  if (!(std::ofstream(directory / "upgrade.json") << kConfiguration).flush()) {
    throw std::runtime_error((directory / "upgrade.json").string() + ": cannot be written");
  }
  CopyFromExample("multilanguage/strings/info.json", directory);
  std::filesystem::create_directories(directory / "2024");
  WriteDocument(directory / "2024" / "metamodel.json",
                [&](const ElementSink& sink) { GenerateOriginal(size, seed, sink); });
  WriteDocument(directory / "installation.json",
                [&](const ElementSink& sink) { GenerateClient(size, variant, seed, sink); });
}

}  // namespace bench
