#include "upgrademeta2024/storage/document/DocumentMetaReader.h"

#include <simdjson.h>

#include <array>
#include <list>
#include <new>
#include <string_view>
#include <type_traits>
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
#include "upgrademeta2024/storage/MetaFaults.h"
#include "upgrademeta2024/storage/MetaMembers.h"
#include "upgrademeta2024/storage/MetaRules.h"
#include "upgrademeta2024/storage/document/DocumentMembers.h"
#include "upgrademeta2024/storage/document/JsonTextFault.h"
#include "upgrademeta2024/storage/document/JsonValueReader.h"

namespace {

/// The names of an object's members: first those that hold one value, then those that hold a list.
template <std::size_t N, typename Member, typename... Lists>
constexpr std::array<std::string_view, N + sizeof...(Lists)> NamesOf(const std::array<Member, N>& members,
                                                                     Lists... lists) {
  std::array<std::string_view, N + sizeof...(Lists)> names{};
  std::size_t count = 0;
  for (const Member& member : members) {
    names[count++] = member.name;
  }
  ((names[count++] = lists), ...);
  return names;
}

constexpr std::array<std::string_view, 4> kDictionaryNames = {kGenerationMember, kClassesMember, kLinksMember,
                                                              kBehaviorsMember};
constexpr auto kClassNames = NamesOf(metamembers::kClass, kBehaviorsMember, kPropertiesMember);
constexpr auto kBehaviorNames = NamesOf(metamembers::kBehavior, kMethodsMember, kPropertiesMember);
constexpr auto kMethodNames = NamesOf(metamembers::kMethod);
constexpr auto kPropertyNames = NamesOf(metamembers::kProperty);

class CReader : private CJsonValueReader {
 public:
  /// `text` is what is read.
  CReader(const simdjson::ondemand::parser& parser, std::string_view text, CLoadProgress& progress,
          JsonFaultHandler onFault)
      : CJsonValueReader(parser, text.size(), std::move(onFault)), text_(text), progress_(progress) {}

  void Read(simdjson::ondemand::document& document, CMetaDictionary2024& dictionary) {
    if (const Type type = document.type(); type != Type::object) {
      FailType(Type::object, type);
      return;
    }
    Members(document.get_object(), kDictionaryNames, [&](std::size_t member, Value& value) {
      const std::string_view name = kDictionaryNames[member];
      if (name == kGenerationMember) {
        RequireGeneration(value);
      } else if (name == kClassesMember) {
        ReadClasses<CMetaClass2024>(value, [&](const auto& element) { dictionary.AddClass(element); });
      } else if (name == kLinksMember) {
        ReadClasses<CMetaLink2024>(value, [&](const auto& element) { dictionary.AddLink(element); });
      } else {
        ReadBehaviors(value, dictionary);
      }
    });
    // A location is left only where text follows the root's end.
    if (document.current_location().error() == simdjson::SUCCESS) {
      throw simdjson::simdjson_error(simdjson::TRAILING_CONTENT);
    }
  }

 private:
  void RequireGeneration(Value& value) {
    const auto generation = Number<std::uint32_t>(value);
    if (generation != CMetaDictionary2024::kGeneration) {
      Fail(metarules::WrongGeneration(std::to_string(generation)));
    }
  }

  template <typename Element, typename Add>
  void ReadClasses(Value& list, const Add& add) {
    metarules::CUniqueNames names;
    Items(list, [&](std::size_t index, Value& item) {
      CountUpTo(item);
      SMetaClassValues2024 values;
      Object(item, kClassNames, metamembers::kClass, values, [&](std::string_view name, Value& value) {
        if (name == kBehaviorsMember) {
          Items(value, [&](std::size_t, Value& behavior) { values.behaviors.emplace_back(Text(behavior)); });
        } else {
          ReadProperties(value, values.properties);
        }
      });
      RequireUnique(names, index, values.internalName);
      add(std::make_shared<Element>(std::move(values)));
    });
  }

  void ReadBehaviors(Value& list, CMetaDictionary2024& dictionary) {
    metarules::CUniqueNames names;
    Items(list, [&](std::size_t index, Value& item) {
      CountUpTo(item);
      SMetaBehaviorValues2024 values;
      Object(item, kBehaviorNames, metamembers::kBehavior, values, [&](std::string_view name, Value& value) {
        if (name == kMethodsMember) {
          ReadMethods(value, values.methods);
        } else {
          ReadProperties(value, values.properties);
        }
      });
      RequireUnique(names, index, values.internalName);
      dictionary.AddBehavior(std::make_shared<CMetaBehavior2024>(std::move(values)));
    });
  }

  /// All of the text has been read, and is taken apart up to an element.
  void CountUpTo(Value& element) {
    progress_.SetDone(text_.size() + static_cast<std::size_t>(element.raw_json_token().data() - text_.data()));
  }

  void ReadMethods(Value& list, std::list<std::shared_ptr<CMetaMethod2024>>& methods) {
    metarules::CUniqueNames names;
    Items(list, [&](std::size_t index, Value& item) {
      metamembers::SMethodValues values;
      Object(item, kMethodNames, metamembers::kMethod, values);
      RequireUnique(names, index, values.internalName);
      methods.push_back(
          std::make_shared<CMetaMethod2024>(std::move(values.internalName), std::move(values.displayName)));
    });
  }

  void ReadProperties(Value& list, CMetaPropertyTable2024& properties) {
    propertyStarts_.clear();
    Items(list, [&](std::size_t, Value& item) {
      propertyStarts_.push_back(Place().Where());
      SMetaPropertyValues2024 values;
      Object(item, kPropertyNames, metamembers::kProperty, values);
      properties.Add(values);
    });
    properties.Finish();
    if (!properties.FindRepeatedName()) {
      return;
    }
    metarules::CUniqueNames names;
    for (std::size_t i = 0; i < properties.GetSize(); ++i) {
      Place().Enter(i, propertyStarts_[i]);
      RequireUnique(names, i, properties.At(i).GetInternalName());
      Place().Leave();
    }
  }

  /// An object of which the first member is required and holds a name. Values go to where the member's table says,
  /// lists to `list(name of the member, value)`.
  template <std::size_t N, std::size_t M, typename Values, typename List>
  void Object(Value& value, const std::array<std::string_view, N>& names,
              const std::array<metamembers::SMember<Values>, M>& members, Values& values, const List& list) {
    if (!RequireType(value, Type::object)) {
      return;
    }
    Members(value.get_object(), names, [&](std::size_t i, Value& member) {
      if (i >= M) {
        list(names[i], member);
        return;
      }
      metamembers::Visit(
          members[i], values, [&](auto& text) { text = i == 0 ? Name(member) : Text(member); },
          [&](auto& number) { number = Number<std::decay_t<decltype(number)>>(member); });
    });
  }
  template <std::size_t N, typename Values>
  void Object(Value& value, const std::array<std::string_view, N>& names,
              const std::array<metamembers::SMember<Values>, N>& members, Values& values) {
    Object(value, names, members, values, [](std::string_view, Value&) {});
  }

  std::string_view Name(Value& value) {
    const std::string_view name = Text(value);
    if (name.empty()) {
      Fail(metarules::kEmptyName);
    }
    return name;
  }

  /// The current place is the item's.
  void RequireUnique(metarules::CUniqueNames& names, std::size_t index, const std::string& name) {
    if (const std::string problem = names.Add({"item", index, name}); !problem.empty()) {
      Place().Enter(metamembers::kProperty.front().name, Place().Where());
      Fail(problem);
      Place().Leave();
    }
  }

  std::string_view text_;
  CLoadProgress& progress_;
  // Of the list that is being read: whether names repeat is known only once it has ended.
  std::vector<const char*> propertyStarts_;
};

}  // namespace

std::shared_ptr<CMetaDictionary2024> ReadMetaDocument(const std::string& path, CLoadProgress& progress,
                                                      CFaultTaker& faults) {
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
  const auto words = [&](std::size_t offset, const std::string& problem) {
    return CStringHelper::ToVisible(path) + ":" + kvx::LineAndColumn(file.data(), begin + offset) + ": " + problem;
  };
  if (kvx::IsUtf16(text)) {
    throw CKVXException(kvx::kMalformedDocument, words(0, kvx::kUtf16Problem));
  }

  const auto onFault = [&](const std::string& message, const char* where) {
    const auto offset = where == nullptr ? 0 : static_cast<std::size_t>(where - text.data());
    faults.Take([&] { return words(offset, message); });
  };

  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document;
  // A document that iterate() has refused cannot be asked for its location.
  bool iterating = false;
  try {
    document = parser.iterate(text.data(), text.size(), file.capacity() - begin);
    iterating = true;
    auto dictionary = std::make_shared<CMetaDictionary2024>();
    CReader(parser, text, progress, onFault).Read(document, *dictionary);
    return dictionary;
  } catch (const simdjson::simdjson_error& error) {
    if (error.error() == simdjson::MEMALLOC) {
      // No fault of the document.
      throw std::bad_alloc();
    }
    const char* location = nullptr;
    const bool located = iterating && document.current_location().get(location) == simdjson::SUCCESS;
    const std::size_t offset = FindJsonTextFault(text, error.error(), located ? location - text.data() : -1);
    throw CKVXException(kvx::kMalformedDocument, words(offset, JsonTextFaultMessage(error.error())));
  }
}
