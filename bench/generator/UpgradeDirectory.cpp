#include "generator/UpgradeDirectory.h"

#include <rapidjson/filewritestream.h>
#include <rapidjson/writer.h>

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

#include "generator/Metamodel.h"

namespace bench {
namespace {

using Writer = rapidjson::Writer<rapidjson::FileWriteStream>;
using Path = std::filesystem::path;

/// A metamodel document that is written element by element.
class CDocument {
 public:
  explicit CDocument(const Path& path)
      : path_(path),
        file_(std::fopen(path.c_str(), "wb"), &std::fclose),
        stream_(RequireOpen(), buffer_->data(), buffer_->size()),
        writer_(stream_) {
    writer_.StartObject();
    Number("generation", 2024);
  }

  void Add(EKind kind, const SElement& element) {
    Open(kind);
    writer_.StartObject();
    Names(element.name.internalName, element.name.displayName);
    if (kind == kBehaviors) {
      Array("methods", element.methods, [this](const SName& method) {
        writer_.StartObject();
        Names(method.internalName, method.displayName);
        writer_.EndObject();
      });
    } else {
      Number("class_id", element.classId);
      Member("table_name", "T_" + element.name.storedName);
      Array("behaviors", element.behaviors, [this](const std::string& name) { Text(name); });
    }
    Array("properties", element.properties, [this](const SMetaPropertyValues2024& values) { Property(values); });
    writer_.EndObject();
  }

  void Close() {
    if (isInArray_) {
      writer_.EndArray();
    }
    writer_.EndObject();
    stream_.Flush();
    if (std::fclose(file_.release()) != 0) {
      throw std::runtime_error(path_.string() + ": cannot be written");
    }
  }

 private:
  std::FILE* RequireOpen() {
    if (file_ == nullptr) {
      throw std::runtime_error(path_.string() + ": cannot be opened for writing");
    }
    return file_.get();
  }

  void Open(EKind kind) {
    constexpr std::array<std::string_view, 3> kKeys = {"classes", "links", "behaviors"};
    if (isInArray_ && kind == kind_) {
      return;
    }
    if (isInArray_) {
      writer_.EndArray();
    }
    isInArray_ = true;
    kind_ = kind;
    Key(kKeys[kind]);
    writer_.StartArray();
  }

  void Property(const SMetaPropertyValues2024& values) {
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

  template <typename Items, typename Write>
  void Array(std::string_view key, const Items& items, const Write& write) {
    Key(key);
    writer_.StartArray();
    for (const auto& item : items) {
      write(item);
    }
    writer_.EndArray();
  }

  void Names(std::string_view internalName, std::string_view displayName) {
    Member("internal_name", internalName);
    Member("display_name", displayName);
  }
  void Member(std::string_view key, std::string_view text) {
    Key(key);
    Text(text);
  }
  void Number(std::string_view key, std::uint32_t number) {
    Key(key);
    writer_.Uint(number);
  }
  void Key(std::string_view key) { writer_.Key(key.data(), static_cast<rapidjson::SizeType>(key.size())); }
  void Text(std::string_view text) {
    // RapidJSON wants a pointer to a text without characters as well.
    writer_.String(text.empty() ? "" : text.data(), static_cast<rapidjson::SizeType>(text.size()));
  }

  using Buffer = std::array<char, 65536>;

  Path path_;
  std::unique_ptr<Buffer> buffer_ = std::make_unique<Buffer>();
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
  rapidjson::FileWriteStream stream_;
  Writer writer_;
  bool isInArray_ = false;
  EKind kind_ = kClasses;
};

void CopyFromExample(const Path& name, const Path& directory) {
  const Path target = directory / name;
  std::filesystem::create_directories(target.parent_path());
  std::filesystem::copy_file(Path(UPGRADESRV_EXAMPLE_DIR) / name, target,
                             std::filesystem::copy_options::overwrite_existing);
}

}  // namespace

void WriteUpgradeDirectory(const SSize& size, const SVariant& variant, std::uint32_t seed, const Path& directory) {
  CopyFromExample("upgrade.json", directory);
  CopyFromExample("multilanguage/strings/info.json", directory);
  std::filesystem::create_directories(directory / "2024");
  CDocument original(directory / "2024" / "metamodel.json");
  GenerateOriginal(size, seed, [&](EKind kind, const SElement& element) { original.Add(kind, element); });
  original.Close();
  CDocument client(directory / "installation.json");
  GenerateClient(size, variant, seed, [&](EKind kind, const SElement& element) { client.Add(kind, element); });
  client.Close();
}

}  // namespace bench
