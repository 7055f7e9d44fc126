#pragma once

#include <array>
#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaMembers.h"
#include "upgrademeta2024/storage/MetaRules.h"
#include "upgrademeta2024/storage/document/DocumentMembers.h"
#include "upgrademeta2024/storage/document/JsonValueReader.h"

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

inline constexpr std::array<std::string_view, 4> kDictionaryNames = {kGenerationMember, kClassesMember, kLinksMember,
                                                                     kBehaviorsMember};
inline constexpr auto kClassNames = NamesOf(metamembers::kClass, kBehaviorsMember, kPropertiesMember);
inline constexpr auto kBehaviorNames = NamesOf(metamembers::kBehavior, kMethodsMember, kPropertiesMember);
inline constexpr auto kMethodNames = NamesOf(metamembers::kMethod);
inline constexpr auto kPropertyNames = NamesOf(metamembers::kProperty);

/// What has been read of a document.
struct SDocumentLists {
  std::shared_ptr<CMetaDictionary2024> dictionary = std::make_shared<CMetaDictionary2024>();
  metarules::CUniqueNames classNames;
  metarules::CUniqueNames linkNames;
  metarules::CUniqueNames behaviorNames;
};

/// Reads the lists of a document, or parts of them.
class CDocumentListReader : protected CJsonValueReader {
 protected:
  /// `size` is that of the text.
  CDocumentListReader(const simdjson::ondemand::parser& parser, std::size_t size, SDocumentLists& lists,
                      JsonFaultHandler onFault)
      : CJsonValueReader(parser, size, std::move(onFault)), lists_(lists) {}
  virtual ~CDocumentListReader() = default;

  /// `name` is one of the lists' names.
  void ReadList(std::string_view name, Value& list) {
    CMetaDictionary2024& dictionary = *lists_.dictionary;
    if (name == kClassesMember) {
      ReadClasses<CMetaClass2024>(list, lists_.classNames, [&](const auto& element) { dictionary.AddClass(element); });
    } else if (name == kLinksMember) {
      ReadClasses<CMetaLink2024>(list, lists_.linkNames, [&](const auto& element) { dictionary.AddLink(element); });
    } else {
      ReadBehaviors(list);
    }
  }

  /// Before an element is read, and after it has been put into the dictionary.
  virtual void ElementBegins(const char* /*where*/) {}
  virtual void ElementEnds() {}

 private:
  template <typename Element, typename Add>
  void ReadClasses(Value& list, metarules::CUniqueNames& names, const Add& add) {
    Items(list, [&](std::size_t index, Value& item) {
      ElementBegins(item.raw_json_token().data());
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
      ElementEnds();
    });
  }

  void ReadBehaviors(Value& list) {
    Items(list, [&](std::size_t index, Value& item) {
      ElementBegins(item.raw_json_token().data());
      SMetaBehaviorValues2024 values;
      Object(item, kBehaviorNames, metamembers::kBehavior, values, [&](std::string_view name, Value& value) {
        if (name == kMethodsMember) {
          ReadMethods(value, values.methods);
        } else {
          ReadProperties(value, values.properties);
        }
      });
      RequireUnique(lists_.behaviorNames, index, values.internalName);
      lists_.dictionary->AddBehavior(std::make_shared<CMetaBehavior2024>(std::move(values)));
      ElementEnds();
    });
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
    // What is no text at all has been told.
    if (name.empty() && name.data() != nullptr) {
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

  SDocumentLists& lists_;
  // Of the list that is being read: whether names repeat is known only once it has ended.
  std::vector<const char*> propertyStarts_;
};
