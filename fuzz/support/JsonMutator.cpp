// Mutates inputs that are JSON as trees: values change their type, vanish, are doubled, move to other places. Random
// bytes would mostly make texts that the parser refuses. A part of the mutations stays with the bytes.
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <random>
#include <vector>

#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "kvxsptjson/JsonDocument.h"
#include "kvxsptjson/JsonObject.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using kvx::JsonDocument;
using rapidjson::SizeType;
using Value = kvx::JsonValue;

class CTreeMutator {
 public:
  CTreeMutator(JsonDocument& document, unsigned seed)
      : document_(document), allocator_(document.GetAllocator()), random_(seed) {}

  void Mutate() {
    for (std::size_t round = Below(3) + 1; round > 0; --round) {
      nodes_.clear();
      Collect(document_);
      Change(Pick());
    }
  }

 private:
  std::size_t Below(std::size_t bound) { return random_() % bound; }

  void Collect(Value& value) {
    nodes_.push_back(&value);
    if (value.IsObject()) {
      for (auto& member : value.GetObject()) {
        Collect(member.value);
      }
    } else if (value.IsArray()) {
      for (Value& item : value.GetArray()) {
        Collect(item);
      }
    }
  }

  Value& Pick() { return *nodes_[Below(nodes_.size())]; }

  void Change(Value& node) {
    switch (Below(6)) {
      case 0:
        Replace(node);
        break;
      case 1:
        node = Value(Pick(), allocator_);
        break;
      case 2:
        Remove(node);
        break;
      case 3:
        Repeat(node);
        break;
      case 4:
        Swap(node);
        break;
      default:
        Edit(node);
    }
  }

  void Replace(Value& node) {
    static const std::array<const char*, 16> texts = {
        "null",  "true",  "0",      "-1", "1.5", "65535",  "65536", "4294967295", "4294967296", "18446744073709551616",
        "1e308", R"("")", R"("a")", "[]", "{}",  R"([""])"};
    kvx::JsonDocumentBase value(&allocator_);
    value.Parse(texts[Below(texts.size())]);
    node.Swap(value);
  }

  void Remove(Value& node) {
    if (node.IsObject() && !node.ObjectEmpty()) {
      node.EraseMember(node.MemberBegin() + static_cast<std::ptrdiff_t>(Below(node.MemberCount())));
    } else if (node.IsArray() && !node.Empty()) {
      node.Erase(node.Begin() + Below(node.Size()));
    }
  }

  /// Adds another of the node's values, or one from elsewhere, at its end.
  void Repeat(Value& node) {
    if (node.IsObject() && !node.ObjectEmpty()) {
      const auto member = node.MemberBegin() + static_cast<std::ptrdiff_t>(Below(node.MemberCount()));
      Value name(member->name, allocator_);
      if (Below(4) == 0) {
        Edit(name);
      }
      node.AddMember(name, Value(Below(2) == 0 ? member->value : Pick(), allocator_), allocator_);
    } else if (node.IsArray()) {
      Value copy(node.Empty() || Below(4) == 0 ? Pick() : node[static_cast<SizeType>(Below(node.Size()))], allocator_);
      node.PushBack(copy, allocator_);
    }
  }

  void Swap(Value& node) {
    if (node.IsObject() && !node.ObjectEmpty()) {
      const auto first = node.MemberBegin() + static_cast<std::ptrdiff_t>(Below(node.MemberCount()));
      const auto second = node.MemberBegin() + static_cast<std::ptrdiff_t>(Below(node.MemberCount()));
      first->value.Swap(second->value);
    } else if (node.IsArray() && !node.Empty()) {
      node[static_cast<SizeType>(Below(node.Size()))].Swap(node[static_cast<SizeType>(Below(node.Size()))]);
    }
  }

  /// A small change of a string; other values are replaced.
  void Edit(Value& node) {
    if (!node.IsString()) {
      Replace(node);
      return;
    }
    static const std::array<std::string, 8> pieces = {"a",    "Z",      "\n",         std::string(1, '\0'),
                                                      "\x7F", "\u00C4", "\U0001F600", "/../"};
    std::string text(node.GetString(), node.GetStringLength());
    switch (Below(3)) {
      case 0:
        text += pieces[Below(pieces.size())];
        break;
      case 1:
        text.resize(Below(text.size() + 1));
        break;
      default:
        for (char& c : text) {
          const bool isLetter = static_cast<unsigned char>((c | ' ') - 'a') < 26U;
          c = static_cast<char>(isLetter ? c ^ ' ' : c);
        }
    }
    node.SetString(text.data(), static_cast<SizeType>(text.size()), allocator_);
  }

  JsonDocument& document_;
  JsonDocument::AllocatorType& allocator_;
  std::minstd_rand random_;
  std::vector<Value*> nodes_;
};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
  CJsonObject input;
  const bool isText = seed % 3 == 0;
  if (isText || !fuzz::Succeeded(test::ErrorOf([&] { input.CreateFromText(fuzz::Text(data, size), "input"); }))) {
    return LLVMFuzzerMutate(data, size, maxSize);
  }
  const std::shared_ptr<JsonDocument> document = input.Share();
  CTreeMutator(*document, seed).Mutate();
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  document->Accept(writer);
  if (buffer.GetSize() > maxSize) {
    return LLVMFuzzerMutate(data, size, maxSize);
  }
  std::memcpy(data, buffer.GetString(), buffer.GetSize());
  return buffer.GetSize();
}
