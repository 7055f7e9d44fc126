#include "upgrademeta2024/storage/document/DocumentMetaWriter.h"

#include <list>
#include <memory>
#include <string_view>

#include "kvxsptfile/AtomicFile.h"
#include "kvxsptjson/detail/JsonTextWriter.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaStorage.h"

namespace {

class CWriter {
 public:
  explicit CWriter(kvx::CAtomicFile& file) : writer_(file) {}

  void Dictionary(const CMetaDictionary2024& dictionary) {
    writer_.StartObject();
    Number("generation", 2024);
    Array("classes", dictionary.GetClasses(), &CWriter::Class);
    Array("links", dictionary.GetLinks(), &CWriter::Class);
    Array("behaviors", dictionary.GetBehaviors(), &CWriter::Behavior);
    writer_.EndObject();
  }

 private:
  void Class(const CMetaClass2024& element) {
    Names(element.GetInternalName(), element.GetDisplayName());
    Number("class_id", element.GetClassId());
    Member("table_name", element.GetTableName());
    Key("behaviors");
    writer_.StartArray();
    for (const std::string& name : element.GetBehaviors()) {
      Text(name);
    }
    writer_.EndArray();
    Properties(element.GetPropertyTable());
  }

  void Behavior(const CMetaBehavior2024& element) {
    Names(element.GetInternalName(), element.GetDisplayName());
    Array("methods", element.GetMethods(), &CWriter::Method);
    Properties(element.GetPropertyTable());
  }

  void Method(const CMetaMethod2024& method) { Names(method.GetInternalName(), method.GetDisplayName()); }

  void Properties(const CMetaPropertyTable2024& table) {
    Key("properties");
    writer_.StartArray();
    for (std::size_t i = 0; i < table.GetSize(); ++i) {
      const SMetaPropertyValues2024 values = table.At(i).GetValues();
      writer_.StartObject();
      Names(values.internalName, values.displayName);
      Member("field", values.field);
      Member("type", values.type);
      Number("length", values.length);
      Member("default_value", values.defaultValue);
      Number("precision", values.precision);
      Member("max", values.max);
      Member("min", values.min);
      Member("lookup_internal_name", values.lookupClass);
      writer_.EndObject();
    }
    writer_.EndArray();
  }

  template <typename Element, typename Base>
  void Array(std::string_view key, const std::list<std::shared_ptr<Element>>& elements,
             void (CWriter::*write)(const Base&)) {
    Key(key);
    writer_.StartArray();
    for (const std::shared_ptr<Element>& element : elements) {
      writer_.StartObject();
      (this->*write)(*element);
      writer_.EndObject();
    }
    writer_.EndArray();
  }

  void Names(std::string_view internalName, std::string_view displayName) {
    Member("internal_name", internalName);
    Member("display_name", displayName);
  }
  void Member(std::string_view key, std::string_view value) {
    Key(key);
    Text(value);
  }
  void Number(std::string_view key, std::uint32_t value) {
    Key(key);
    writer_.Uint(value);
  }
  void Key(std::string_view key) { writer_.Key(key.data(), static_cast<rapidjson::SizeType>(key.size())); }
  void Text(std::string_view text) { writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }

  kvx::CJsonTextWriter writer_;
};

}  // namespace

bool WriteMetaDocument(const std::string& path, const CMetaDictionary2024& dictionary, EExistingMeta existing) {
  kvx::CAtomicFile file(path);
  CWriter(file).Dictionary(dictionary);
  file.Put('\n');
  if (existing == EExistingMeta::kRefuse) {
    return file.CommitNew();
  }
  file.Commit();
  return true;
}
