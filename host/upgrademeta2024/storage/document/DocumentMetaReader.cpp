#include "upgrademeta2024/storage/document/DocumentMetaReader.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <list>
#include <new>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/IsUtf16.h"
#include "kvxsptfile/LineAndColumn.h"
#include "kvxsptfile/ReadFile.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/document/JsonTextFault.h"
#include "upgrademeta2024/storage/document/JsonValueReader.h"

namespace {

constexpr std::uint64_t kGeneration = 2024;

constexpr std::array<std::string_view, 4> kDictionaryMembers = {"generation", "classes", "links", "behaviors"};

// The members of each kind of object, the name first, and where the texts among them go.
constexpr std::array<std::string_view, 6> kClassMembers = {"internal_name", "display_name", "class_id",
                                                           "table_name",    "behaviors",    "properties"};
constexpr std::array<std::string SMetaClassValues2024::*, 6> kClassTexts = {
    &SMetaClassValues2024::internalName, &SMetaClassValues2024::displayName, nullptr, &SMetaClassValues2024::tableName};

constexpr std::array<std::string_view, 4> kBehaviorMembers = {"internal_name", "display_name", "methods", "properties"};
constexpr std::array<std::string SMetaBehaviorValues2024::*, 4> kBehaviorTexts = {
    &SMetaBehaviorValues2024::internalName, &SMetaBehaviorValues2024::displayName};

struct SMethodValues {
  std::string internalName;
  std::string displayName;
};
constexpr std::array<std::string_view, 2> kMethodMembers = {"internal_name", "display_name"};
constexpr std::array<std::string SMethodValues::*, 2> kMethodTexts = {&SMethodValues::internalName,
                                                                      &SMethodValues::displayName};

constexpr std::array<std::string_view, 10> kPropertyMembers = {
    "internal_name", "display_name", "field", "type", "length",
    "default_value", "precision",    "max",   "min",  "lookup_internal_name"};
constexpr std::array<std::string_view SMetaPropertyValues2024::*, 10> kPropertyTexts = {
    &SMetaPropertyValues2024::internalName,
    &SMetaPropertyValues2024::displayName,
    &SMetaPropertyValues2024::field,
    &SMetaPropertyValues2024::type,
    nullptr,
    &SMetaPropertyValues2024::defaultValue,
    nullptr,
    &SMetaPropertyValues2024::max,
    &SMetaPropertyValues2024::min,
    &SMetaPropertyValues2024::lookupClass};

class CReader : private CJsonValueReader {
 public:
  /// `text` is what is read.
  CReader(std::string_view text, CLoadProgress& progress) : text_(text), progress_(progress) {}

  std::shared_ptr<CMetaDictionary2024> Read(simdjson::ondemand::document& document) {
    if (const Type type = document.type(); type != Type::object) {
      FailType(Type::object, type);
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

 private:
  template <typename Element, typename Add>
  void ReadClasses(Value& list, const Add& add) {
    std::vector<std::string> names;
    Items(list, [&](std::size_t, Value& item) {
      CountUpTo(item);
      SMetaClassValues2024 values;
      Object(item, kClassMembers, kClassTexts, values, [&](std::size_t member, Value& value) {
        switch (member) {
          case 2:
            values.classId = Uint32(value);
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
      CountUpTo(item);
      SMetaBehaviorValues2024 values;
      Object(item, kBehaviorMembers, kBehaviorTexts, values, [&](std::size_t member, Value& value) {
        if (member == 2) {
          ReadMethods(value, values.methods);
        } else {
          ReadProperties(value, values.properties);
        }
      });
      const auto add = [&dictionary](const auto& element) { return dictionary.AddBehavior(element); };
      AddElement(names, std::make_shared<CMetaBehavior2024>(std::move(values)), add);
    });
  }

  /// All of the text has been read, and is taken apart up to an element.
  void CountUpTo(Value& element) {
    progress_.SetDone(text_.size() + static_cast<std::size_t>(element.raw_json_token().data() - text_.data()));
  }

  void ReadMethods(Value& list, std::list<std::shared_ptr<CMetaMethod2024>>& methods) {
    std::unordered_map<std::string, std::size_t> positions;
    Items(list, [&](std::size_t index, Value& item) {
      SMethodValues values;
      Object(item, kMethodMembers, kMethodTexts, values, [](std::size_t, Value&) {});
      std::string key = values.internalName;
      CStringHelper::ToLower(key);
      if (const auto [earlier, isNew] = positions.emplace(std::move(key), index); !isNew) {
        FailRepeated(values.internalName,
                     (*std::next(methods.begin(), static_cast<std::ptrdiff_t>(earlier->second)))->GetInternalName(),
                     earlier->second);
      }
      methods.push_back(
          std::make_shared<CMetaMethod2024>(std::move(values.internalName), std::move(values.displayName)));
    });
  }

  void ReadProperties(Value& list, CMetaPropertyTable2024& properties) {
    propertyStarts_.clear();
    Items(list, [&](std::size_t, Value& item) {
      propertyStarts_.push_back(Place().Where());
      SMetaPropertyValues2024 values;
      Object(item, kPropertyMembers, kPropertyTexts, values, [&](std::size_t member, Value& value) {
        if (member == 4) {
          values.length = Uint32(value);
        } else {
          values.precision = static_cast<std::uint16_t>(Number(value, std::numeric_limits<std::uint16_t>::max()));
        }
      });
      properties.Add(values);
    });
    properties.Finish();
    if (const auto repeated = properties.FindRepeatedName()) {
      Place().Enter(repeated->second, propertyStarts_[repeated->second]);
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

  /// An object in which "internal_name", the first of the known members, is required. Texts go where `texts` says,
  /// other members to `other(position in known, value)`.
  template <std::size_t N, typename String, typename Values, typename Other>
  void Object(Value& value, const std::array<std::string_view, N>& known, const std::array<String Values::*, N>& texts,
              Values& values, const Other& other) {
    RequireType(value, Type::object);
    const std::uint32_t seen = Members(value.get_object(), known, [&](std::size_t member, Value& memberValue) {
      if (member == 0) {
        values.*texts[0] = Name(memberValue);
      } else if (texts[member] != nullptr) {
        values.*texts[member] = Text(memberValue);
      } else {
        other(member, memberValue);
      }
    });
    if ((seen & 1U) == 0) {
      Fail("member \"internal_name\" is missing");
    }
  }

  std::string_view Name(Value& value) {
    const std::string_view name = Text(value);
    if (name.empty()) {
      Fail("the name is empty");
    }
    return name;
  }

  /// The current place is the item's.
  [[noreturn]] void FailRepeated(const std::string& name, const std::string& earlierName, std::size_t earlier) {
    Place().Enter("internal_name", Place().Where());
    Fail("the name \"" + CStringHelper::ToVisible(name) + "\" repeats \"" + CStringHelper::ToVisible(earlierName) +
         "\" of item " + std::to_string(earlier) + " of the same list; names must differ in more than letter case");
  }

  std::string_view text_;
  CLoadProgress& progress_;
  // Of the list that is being read: whether names repeat is known only once it has ended.
  std::vector<const char*> propertyStarts_;
};

}  // namespace

std::shared_ptr<CMetaDictionary2024> ReadMetaDocument(const std::string& path, CLoadProgress& progress) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  kvx::SReading reading;
  reading.padding = simdjson::SIMDJSON_PADDING;
  reading.observer = [&progress](std::size_t done, std::size_t total) {
    progress.SetTotal(2 * total);
    progress.SetDone(done);
  };
  reading.mayBePipe = true;
  const std::string file = kvx::ReadFile(path, reading);
  progress.SetTotal(2 * file.size());
  const std::size_t begin = file.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0 ? kByteOrderMark.size() : 0;
  const std::string_view text = std::string_view(file).substr(begin);
  const auto fault = [&](std::size_t offset, const std::string& problem) {
    const std::string place = CStringHelper::ToVisible(path) + ":" + kvx::LineAndColumn(file.data(), begin + offset);
    return CKVXException(kvx::kMalformedDocument, place + ": " + problem);
  };
  if (kvx::IsUtf16(text)) {
    throw fault(0, kvx::kUtf16Problem);
  }

  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document;
  // A document that iterate() has refused cannot be asked for its location.
  bool iterating = false;
  try {
    document = parser.iterate(text.data(), text.size(), file.capacity() - begin);
    iterating = true;
    std::shared_ptr<CMetaDictionary2024> dictionary = CReader(text, progress).Read(document);
    // A location is left only where text follows the root's end.
    if (document.current_location().error() == simdjson::SUCCESS) {
      throw simdjson::simdjson_error(simdjson::TRAILING_CONTENT);
    }
    return dictionary;
  } catch (const SJsonContentError& error) {
    throw fault(error.where != nullptr ? static_cast<std::size_t>(error.where - text.data()) : 0, error.message);
  } catch (const simdjson::simdjson_error& error) {
    if (error.error() == simdjson::MEMALLOC) {
      // No fault of the document.
      throw std::bad_alloc();
    }
    const char* location = nullptr;
    const bool located = iterating && document.current_location().get(location) == simdjson::SUCCESS;
    const std::size_t offset = FindJsonTextFault(text, error.error(), located ? location - text.data() : -1);
    throw fault(offset, JsonTextFaultMessage(error.error()));
  }
}
