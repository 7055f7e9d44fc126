#include "upgrademeta2024/storage/DocumentMetaReader2024.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <limits>
#include <list>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptjson/File.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/JsonPlace.h"
#include "upgrademeta2024/storage/JsonTextFault.h"

namespace {

using simdjson::ondemand::json_type;
using Value = simdjson::ondemand::value;

constexpr std::uint64_t kGeneration = 2024;

constexpr std::array<std::string_view, 4> kDictionaryMembers = {"generation", "classes", "links", "behaviors"};
constexpr std::array<std::string_view, 6> kClassMembers = {"internal_name", "display_name", "class_id",
                                                           "table_name",    "behaviors",    "properties"};
constexpr std::array<std::string_view, 4> kBehaviorMembers = {"internal_name", "display_name", "methods", "properties"};
constexpr std::array<std::string_view, 2> kMethodMembers = {"internal_name", "display_name"};
constexpr std::array<std::string_view, 10> kPropertyMembers = {
    "internal_name", "display_name", "field", "type", "length",
    "default_value", "precision",    "max",   "min",  "lookup_internal_name"};

const char* TypeName(json_type type) {
  switch (type) {
    case json_type::array:
      return "an array";
    case json_type::object:
      return "an object";
    case json_type::number:
      return "a number";
    case json_type::string:
      return "a string";
    case json_type::boolean:
      return "a boolean";
    case json_type::null:
      return "null";
  }
  return "no value";
}

/// A failure whose place is known; the file is added where it is caught.
struct SContentError {
  std::string message;
};

class CReader {
 public:
  std::shared_ptr<CMetaDictionary2024> Read(simdjson::ondemand::document& document) {
    if (document.type() != json_type::object) {
      Fail("expected an object, found " + std::string(TypeName(document.type())));
    }
    auto dictionary = std::make_shared<CMetaDictionary2024>();
    bool hasGeneration = false;
    Members(document.get_object(), kDictionaryMembers, [&](std::size_t member, Value& value) {
      switch (member) {
        case 0:
          hasGeneration = true;
          if (const std::uint64_t generation = Number(value, std::numeric_limits<std::uint32_t>::max());
              generation != kGeneration) {
            Fail("the metamodel is of generation " + std::to_string(generation) + "; only 2024 can be read");
          }
          break;
        case 1:
          ReadClasses<CMetaClass2024>(value, [&](const auto& element) { return dictionary->AddClass(element); });
          break;
        case 2:
          ReadClasses<CMetaLink2024>(value, [&](const auto& element) { return dictionary->AddLink(element); });
          break;
        default:
          ReadBehaviors(value, *dictionary);
      }
    });
    if (!hasGeneration) {
      Fail("member \"generation\" is missing");
    }
    return dictionary;
  }

  const CJsonPlace& GetPlace() const { return place_; }

 private:
  template <typename Element, typename Add>
  void ReadClasses(Value& list, const Add& add) {
    std::vector<std::string> names;
    Items(list, [&](std::size_t, Value& item) {
      SMetaClassValues2024 values;
      Object(item, kClassMembers, [&](std::size_t member, Value& value) {
        switch (member) {
          case 0:
            values.internalName = Name(value);
            break;
          case 1:
            values.displayName = Text(value);
            break;
          case 2:
            values.classId = Uint32(value);
            break;
          case 3:
            values.tableName = Text(value);
            break;
          case 4:
            Items(value, [&](std::size_t, Value& name) { values.behaviors.emplace_back(Text(name)); });
            break;
          default:
            ReadProperties(value, values.properties);
        }
      });
      AddElement(names, std::make_shared<Element>(std::move(values)), add);
    });
  }

  void ReadBehaviors(Value& list, CMetaDictionary2024& dictionary) {
    std::vector<std::string> names;
    Items(list, [&](std::size_t, Value& item) {
      SMetaBehaviorValues2024 values;
      Object(item, kBehaviorMembers, [&](std::size_t member, Value& value) {
        switch (member) {
          case 0:
            values.internalName = Name(value);
            break;
          case 1:
            values.displayName = Text(value);
            break;
          case 2:
            ReadMethods(value, values.methods);
            break;
          default:
            ReadProperties(value, values.properties);
        }
      });
      const auto add = [&dictionary](const auto& element) { return dictionary.AddBehavior(element); };
      AddElement(names, std::make_shared<CMetaBehavior2024>(std::move(values)), add);
    });
  }

  void ReadMethods(Value& list, std::list<std::shared_ptr<CMetaMethod2024>>& methods) {
    std::unordered_map<std::string, std::size_t> positions;
    Items(list, [&](std::size_t index, Value& item) {
      std::string internalName;
      std::string displayName;
      Object(item, kMethodMembers, [&](std::size_t member, Value& value) {
        if (member == 0) {
          internalName = Name(value);
        } else {
          displayName = Text(value);
        }
      });
      std::string key = internalName;
      CStringHelper::ToLower(key);
      if (const auto [earlier, isNew] = positions.emplace(std::move(key), index); !isNew) {
        FailRepeated(internalName,
                     (*std::next(methods.begin(), static_cast<std::ptrdiff_t>(earlier->second)))->GetInternalName(),
                     earlier->second);
      }
      methods.push_back(std::make_shared<CMetaMethod2024>(std::move(internalName), std::move(displayName)));
    });
  }

  void ReadProperties(Value& list, CMetaPropertyTable2024& properties) {
    Items(list, [&](std::size_t, Value& item) {
      SMetaPropertyValues2024 values;
      Object(item, kPropertyMembers, [&](std::size_t member, Value& value) {
        switch (member) {
          case 0:
            values.internalName = Name(value);
            break;
          case 1:
            values.displayName = Text(value);
            break;
          case 2:
            values.field = Text(value);
            break;
          case 3:
            values.type = Text(value);
            break;
          case 4:
            values.length = Uint32(value);
            break;
          case 5:
            values.defaultValue = Text(value);
            break;
          case 6:
            values.precision = static_cast<std::uint16_t>(Number(value, std::numeric_limits<std::uint16_t>::max()));
            break;
          case 7:
            values.max = Text(value);
            break;
          case 8:
            values.min = Text(value);
            break;
          default:
            values.lookupClass = Text(value);
        }
      });
      properties.Add(values);
    });
    properties.Finish();
    if (const auto repeated = properties.FindRepeatedName()) {
      place_.Enter(repeated->second);
      FailRepeated(properties.At(repeated->second).GetInternalName(), properties.At(repeated->first).GetInternalName(),
                   repeated->first);
    }
  }

  /// Adds an element to the dictionary; `names` holds those of the elements before it.
  template <typename Element, typename Add>
  void AddElement(std::vector<std::string>& names, const std::shared_ptr<Element>& element, const Add& add) {
    if (!add(element)) {
      const auto earlier = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
        return CStringHelper::StringCompare(name, element->GetInternalName(), /*ignoreCase=*/true) == 0;
      });
      FailRepeated(element->GetInternalName(), *earlier, static_cast<std::size_t>(earlier - names.begin()));
    }
    names.push_back(element->GetInternalName());
  }

  /// Calls `item(index, value)` for each item of an array.
  template <typename Item>
  void Items(Value& list, const Item& item) {
    RequireType(list, json_type::array);
    std::size_t index = 0;
    for (simdjson::simdjson_result<Value> result : list.get_array()) {
      if (result.error() != simdjson::SUCCESS) {
        throw simdjson::simdjson_error(result.error());
      }
      place_.Enter(index);
      Value&& value = std::move(result).value_unsafe();
      item(index, value);
      place_.Leave();
      ++index;
    }
  }

  /// An object in which "internal_name", the first of the known members, is required.
  template <std::size_t N, typename Member>
  void Object(Value& value, const std::array<std::string_view, N>& known, const Member& member) {
    RequireType(value, json_type::object);
    if ((Members(value.get_object(), known, member) & 1U) == 0) {
      Fail("member \"internal_name\" is missing");
    }
  }

  /// Calls `member(position in known, value)` for each member; answers with the set of positions seen.
  template <std::size_t N, typename Member>
  std::uint32_t Members(simdjson::ondemand::object object, const std::array<std::string_view, N>& known,
                        const Member& member) {
    std::uint32_t seen = 0;
    std::size_t next = 0;
    for (simdjson::simdjson_result<simdjson::ondemand::field> result : object) {
      if (result.error() != simdjson::SUCCESS) {
        throw simdjson::simdjson_error(result.error());
      }
      // In place: copies of a value made for each member take as long as the parsing.
      simdjson::ondemand::field&& field = std::move(result).value_unsafe();
      const simdjson::ondemand::raw_json_string raw = field.key();
      // Documents mostly keep one order of members, so the one after the last is tried first.
      std::size_t position = next;
      if (position == N || !IsKey(raw, known[position])) {
        position = 0;
        while (position < N && !IsKey(raw, known[position])) {
          ++position;
        }
      }
      if (position == N) {
        // A known name may be written with escapes.
        const std::string_view key = field.unescaped_key();
        position = static_cast<std::size_t>(std::find(known.begin(), known.end(), key) - known.begin());
        place_.Enter(key);
        if (position == N) {
          FailUnknown(known.data(), N);
        }
      } else {
        place_.Enter(known[position]);
      }
      if ((seen & (1U << position)) != 0) {
        Fail("the member stands twice");
      }
      seen |= 1U << position;
      next = position + 1;
      member(position, field.value());
      place_.Leave();
    }
    return seen;
  }

  /// The content of a string; valid until the reader's end.
  std::string_view Text(Value& value) {
    RequireType(value, json_type::string);
    // A token reaches up to the next one. The parser has validated its characters, so without an escape in it the
    // string can be used where it stands.
    std::string_view token = value.raw_json_token();
    if (token.back() != '"') {
      token = Trimmed(token);
    }
    if (token.size() >= 2 && token.back() == '"') {
      const std::string_view content = token.substr(1, token.size() - 2);
      if (content.find('\\') == std::string_view::npos) {
        // A value that was not taken lets the parser pass over whatever follows it up to a closing bracket.
        static_cast<void>(value.get_raw_json_string().value());
        return content;
      }
    }
    const std::string_view text = value.get_string();
    return text;
  }

  std::string_view Name(Value& value) {
    const std::string_view name = Text(value);
    if (name.empty()) {
      Fail("the name is empty");
    }
    return name;
  }

  std::uint32_t Uint32(Value& value) {
    return static_cast<std::uint32_t>(Number(value, std::numeric_limits<std::uint32_t>::max()));
  }

  std::uint64_t Number(Value& value, std::uint64_t max) {
    RequireType(value, json_type::number);
    const std::string_view token = value.raw_json_token();
    std::uint64_t number = 0;
    if (value.get_uint64().get(number) != simdjson::SUCCESS || number > max) {
      Fail("expected a whole number from 0 to " + std::to_string(max) + ", found " +
           CStringHelper::ToVisible(std::string(Trimmed(token))));
    }
    return number;
  }

  /// A token without the white space that follows it.
  static std::string_view Trimmed(std::string_view token) {
    return token.substr(0, token.find_last_not_of(" \t\r\n") + 1);
  }

  /// Whether a key is written as `name`. The text is padded, so that it can be read beyond the key's end.
  static bool IsKey(simdjson::ondemand::raw_json_string key, std::string_view name) {
    return std::memcmp(key.raw(), name.data(), name.size()) == 0 && key.raw()[name.size()] == '"';
  }

  void RequireType(Value& value, json_type expected) {
    const json_type found = value.type();
    if (found != expected) {
      Fail(std::string("expected ") + TypeName(expected) + ", found " + TypeName(found));
    }
  }

  [[noreturn]] void Fail(const std::string& problem) const { throw SContentError{place_.ToPointer() + ": " + problem}; }

  [[noreturn]] void FailUnknown(const std::string_view* known, std::size_t count) const {
    std::string names;
    for (std::size_t i = 0; i < count; ++i) {
      names += (i == 0 ? "" : ", ") + std::string(known[i]);
    }
    Fail("unknown member; known here: " + names);
  }

  /// The current place is the item's.
  [[noreturn]] void FailRepeated(const std::string& name, const std::string& earlierName, std::size_t earlier) {
    place_.Enter("internal_name");
    Fail("the name \"" + CStringHelper::ToVisible(name) + "\" repeats \"" + CStringHelper::ToVisible(earlierName) +
         "\" of item " + std::to_string(earlier) + " of the same list; names must differ in more than letter case");
  }

  CJsonPlace place_;
};

}  // namespace

std::shared_ptr<CMetaDictionary2024> ReadMetaDocument2024(const std::string& path) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  const std::string file = kvx::ReadFile(path, simdjson::SIMDJSON_PADDING);
  const std::size_t begin = file.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0 ? kByteOrderMark.size() : 0;
  const std::string_view text = std::string_view(file).substr(begin);
  const std::string name = CStringHelper::ToVisible(path);

  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document;
  // A document that iterate() has refused cannot be asked for its location.
  bool iterating = false;
  try {
    document = parser.iterate(text.data(), text.size(), file.capacity() - begin);
    iterating = true;
    std::shared_ptr<CMetaDictionary2024> dictionary = CReader().Read(document);
    // A location is left only where text follows the root's end.
    if (document.current_location().error() == simdjson::SUCCESS) {
      throw simdjson::simdjson_error(simdjson::TRAILING_CONTENT);
    }
    return dictionary;
  } catch (const SContentError& error) {
    throw CKVXException(kvx::kMalformedDocument, name + ": " + error.message);
  } catch (const simdjson::simdjson_error& error) {
    const char* location = nullptr;
    const bool located = iterating && document.current_location().get(location) == simdjson::SUCCESS;
    const std::size_t offset = FindJsonTextFault(text, error.error(), located ? location - text.data() : -1);
    throw CKVXException(kvx::kMalformedDocument, name + ":" + kvx::LineAndColumn(file.data(), begin + offset) + ": " +
                                                     JsonTextFaultMessage(error.error()));
  }
}
