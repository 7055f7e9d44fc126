#include "upgrademeta2024/storage/document/DocumentMetaWriter.h"

#include <memory>
#include <string_view>

#include "kvxsptfile/AtomicFile.h"
#include "kvxsptjson/JsonTextWriter.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaMembers.h"
#include "upgrademeta2024/storage/MetaStorage.h"
#include "upgrademeta2024/storage/document/DocumentMembers.h"

namespace {

class CDocumentWriter {
 public:
  explicit CDocumentWriter(kvx::CAtomicFile& file) : writer_(file) {}

  void Dictionary(const CMetaDictionary2024& dictionary) {
    writer_.StartObject();
    Key(kGenerationMember);
    writer_.Uint(CMetaDictionary2024::kGeneration);
    Array(kClassesMember, dictionary.GetClasses(), [this](const auto& element) { Class(element->GetValues()); });
    Array(kLinksMember, dictionary.GetLinks(), [this](const auto& element) { Class(element->GetValues()); });
    Array(kBehaviorsMember, dictionary.GetBehaviors(), [this](const auto& element) { Behavior(element->GetValues()); });
    writer_.EndObject();
  }

 private:
  void Class(const SMetaClassValues2024& values) {
    writer_.StartObject();
    Members(metamembers::kClass, values);
    Array(kBehaviorsMember, values.behaviors, [this](const std::string& name) { Text(name); });
    Properties(values.properties);
    writer_.EndObject();
  }

  void Behavior(const SMetaBehaviorValues2024& values) {
    writer_.StartObject();
    Members(metamembers::kBehavior, values);
    Array(kMethodsMember, values.methods, [this](const std::shared_ptr<CMetaMethod2024>& method) {
      writer_.StartObject();
      Members(metamembers::kMethod, metamembers::SMethodValues{method->GetInternalName(), method->GetDisplayName()});
      writer_.EndObject();
    });
    Properties(values.properties);
    writer_.EndObject();
  }

  void Properties(const CMetaPropertyTable2024& table) {
    Key(kPropertiesMember);
    writer_.StartArray();
    for (std::size_t i = 0; i < table.GetSize(); ++i) {
      writer_.StartObject();
      Members(metamembers::kProperty, table.At(i).GetValues());
      writer_.EndObject();
    }
    writer_.EndArray();
  }

  template <typename Items, typename Write>
  void Array(std::string_view key, const Items& items, const Write& write) {
    Key(key);
    writer_.StartArray();
    for (const auto& item : items) {
      write(item);
    }
    writer_.EndArray();
  }

  template <typename Table, typename Values>
  void Members(const Table& table, const Values& values) {
    for (const auto& member : table) {
      Key(member.name);
      metamembers::Visit(
          member, values, [this](std::string_view text) { Text(text); },
          [this](std::uint32_t number) { writer_.Uint(number); });
    }
  }

  void Key(std::string_view key) { writer_.Key(key.data(), static_cast<rapidjson::SizeType>(key.size())); }
  void Text(std::string_view text) { writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }

  kvx::CJsonTextWriter writer_;
};

}  // namespace

bool WriteMetaDocument(const std::string& path, const CMetaDictionary2024& dictionary, EExistingMeta existing) {
  kvx::CAtomicFile file(path);
  CDocumentWriter(file).Dictionary(dictionary);
  file.Put('\n');
  if (existing == EExistingMeta::kRefuse) {
    return file.CommitNew();
  }
  file.Commit();
  return true;
}
