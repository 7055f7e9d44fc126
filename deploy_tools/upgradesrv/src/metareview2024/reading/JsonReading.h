#pragma once

#include <rapidjson/document.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kvxsptjson/JsonDocument.h"
#include "kvxsptjson/JsonObject.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// What is wrong with a value, and where it is: a JSON pointer.
struct METAREVIEW2024_EXPORT SJsonFault {
  std::string pointer;
  std::string problem;
};

/// Reads values of a parsed document strictly: what is not as expected throws SJsonFault.
class METAREVIEW2024_EXPORT CJsonReading {
 public:
  using Json = kvx::JsonValue;

  /// A member of an object that is read into a T.
  template <typename T>
  struct SMember {
    std::string_view name;
    bool isRequired;
    void (*read)(CJsonReading& reading, const Json& json, T& target);
  };

  /// All members, each once, those that are required, and no other.
  template <typename T, std::size_t N>
  void Object(const Json& json, T& target, const std::array<SMember<T>, N>& members) {
    static_assert(N <= 32, "a bit per member");
    RequireType(json.IsObject(), "an object");
    std::uint32_t seen = 0;
    for (const auto& [key, value] : json.GetObject()) {
      const std::string_view name(key.GetString(), key.GetStringLength());
      std::size_t i = 0;
      while (i < N && members[i].name != name) {
        ++i;
      }
      Enter(name);
      if (i == N) {
        FailUnknown(members);
      }
      if ((seen >> i & 1U) != 0) {
        Fail("duplicate member");
      }
      seen |= 1U << i;
      members[i].read(*this, value, target);
      Leave();
    }
    for (std::size_t i = 0; i < N; ++i) {
      if (members[i].isRequired && (seen >> i & 1U) == 0) {
        Fail("the member \"" + std::string(members[i].name) + "\" is missing");
      }
    }
  }

  /// Calls `item(value)` for each item of an array.
  template <typename Item>
  void Array(const Json& json, const Item& item) {
    RequireType(json.IsArray(), "an array");
    std::size_t index = 0;
    for (const Json& value : json.GetArray()) {
      steps_.push_back({{}, index++});
      item(value);
      Leave();
    }
  }

  /// A text that is one of the words that `find` knows.
  template <typename T>
  T Word(const Json& json, std::optional<T> (*find)(std::string_view)) {
    const std::string text = Text(json);
    const std::optional<T> word = find(text);
    if (!word.has_value()) {
      Fail("\"" + text + "\" is not known here");
    }
    return *word;
  }

  std::string Text(const Json& json);
  std::uint64_t Number(const Json& json, std::uint64_t max = std::numeric_limits<std::uint64_t>::max());
  bool Truth(const Json& json);

  void Enter(std::string_view key) { steps_.push_back({key, 0}); }
  void Leave() { steps_.pop_back(); }

  /// Throws a fault at the place that is entered; the second, at a member of it.
  [[noreturn]] void Fail(const std::string& problem) const;
  [[noreturn]] void Fail(std::string_view member, const std::string& problem);

 private:
  struct SStep {
    std::string_view key;
    std::size_t index;
  };

  void RequireType(bool isType, const char* type) const;

  template <typename T, std::size_t N>
  [[noreturn]] void FailUnknown(const std::array<SMember<T>, N>& members) const {
    std::string names;
    for (const SMember<T>& member : members) {
      names += (names.empty() ? "" : ", ") + std::string(member.name);
    }
    Fail("unknown member; known here: " + names);
  }

  std::vector<SStep> steps_;
};

/// Throws CKVXException (kvx::kMalformedDocument, "NAME:LINE:COLUMN: POINTER: what is wrong").
[[noreturn]] METAREVIEW2024_EXPORT void FailWithPlace(const std::string& text, const std::string& name,
                                                      const SJsonFault& fault);

/// Parses the text, which messages call `name`, and answers what `read(root)` does. Throws CKVXException
/// (kvx::kMalformedDocument) with the place of what is wrong.
template <typename Read>
auto ReadJson(const std::string& text, const std::string& name, const Read& read) {
  CJsonObject json;
  json.CreateFromText(text, name);
  try {
    return read(*json.Share());
  } catch (const SJsonFault& fault) {
    FailWithPlace(text, name, fault);
  }
}

}  // namespace metareview
