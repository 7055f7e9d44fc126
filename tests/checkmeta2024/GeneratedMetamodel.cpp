#include "checkmeta2024/GeneratedMetamodel.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "kvxsptstring/StringHelper.h"

namespace test {
namespace {

const char* const kTarget = "The Target";
const char* const kTargetProperty = "Target Property";
const char* const kTargetPart = "Target Part";

std::string AnyText() {
  return *rc::gen::element<std::string>("", "0", "10", "10.0", "-1", "text", "Text", " padded ", "a \"quoted\" \\ text",
                                        "two\nlines", "Größe", "零件", "{}", "string", "int64");
}

constexpr std::array<const char*, 5> kNames = {"Part", "code of\n\"it\"", "Ärger", "零件", "_"};

template <typename Item>
void InsertAnywhere(std::vector<Item>& items, Item item) {
  const auto position = *rc::gen::inRange<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(items.size()) + 1);
  items.insert(items.begin() + position, std::move(item));
}

/// Some of the names, in any order.
std::vector<std::string> AnyNames() {
  std::vector<std::string> names;
  for (const char* name : kNames) {
    if (*rc::gen::arbitrary<bool>()) {
      InsertAnywhere(names, std::string(name));
    }
  }
  return names;
}

SProperty AnyProperty(const std::string& name) {
  SProperty property;
  property.internalName = name;
  property.displayName = AnyText();
  property.field = AnyText();
  property.type = AnyText();
  property.length = *rc::gen::element<std::uint32_t>(0, 1, 32, 4294967295);
  property.defaultValue = AnyText();
  property.precision = *rc::gen::element<std::uint16_t>(0, 2, 65535);
  property.max = AnyText();
  property.min = AnyText();
  property.lookupClass = AnyText();
  return property;
}

std::vector<SProperty> AnyProperties() {
  std::vector<SProperty> properties;
  for (const std::string& name : AnyNames()) {
    properties.push_back(AnyProperty(name));
  }
  return properties;
}

SClass AnyClass(const std::string& name) {
  return {name, AnyNames(), AnyProperties(), AnyText(), *rc::gen::arbitrary<std::uint32_t>(), AnyText()};
}

SBehavior AnyBehavior(const std::string& name) {
  return {name, AnyNames(), AnyProperties(), AnyText()};
}

template <typename Element>
std::vector<Element> AnyElements(Element (*any)(const std::string&)) {
  std::vector<Element> elements;
  for (const std::string& name : AnyNames()) {
    elements.push_back(any(name));
  }
  return elements;
}

SProperty& PropertyOf(std::vector<SProperty>& properties) {
  return *std::find_if(properties.begin(), properties.end(),
                       [](const SProperty& property) { return property.internalName == kTargetProperty; });
}

/// Calls `action` with the list of the case's kind.
template <typename Action>
void WithElements(const SMetaKindRow& kind, SModel& model, const Action& action) {
  if (kind.kind == "class") {
    action(model.classes);
  } else if (kind.kind == "link") {
    action(model.links);
  } else {
    action(model.behaviors);
  }
}

/// Calls `action` with the client's target.
template <typename Action>
void WithTarget(SEditCase& edit, const Action& action) {
  WithElements(edit.kind, edit.client, [&action](auto& elements) {
    action(*std::find_if(elements.begin(), elements.end(),
                         [](const auto& element) { return element.internalName == kTarget; }));
  });
}

void RemoveTarget(SEditCase& edit) {
  WithElements(edit.kind, edit.client, [](auto& elements) {
    elements.erase(std::find_if(elements.begin(), elements.end(),
                                [](const auto& element) { return element.internalName == kTarget; }));
  });
  edit.findings.push_back(edit.kind.kind + " " + edit.kind.deletedKey + " " + kTarget);
  edit.failing = kTarget;
  edit.line = edit.kind.originalLine;
}

void InsertElement(SEditCase& edit) {
  WithElements(edit.kind, edit.client, [](auto& elements) {
    auto element = elements.front();
    element.internalName = "A New Element";
    InsertAnywhere(elements, element);
  });
}

/// The client's target differs in this.
void ExpectUpdate(SEditCase& edit, const std::string& what) {
  edit.findings.push_back(edit.kind.kind + " " + edit.kind.updatedKey + " " + kTarget + " " + what);
  edit.failing = kTarget;
  edit.line = edit.kind.clientLine;
}

void ChangeText(SEditCase& edit, const std::string& field, std::string SProperty::*member) {
  WithTarget(edit, [&](auto& target) {
    std::string& value = PropertyOf(target.properties).*member;
    const std::string before = value;
    value = *rc::gen::distinctFrom(rc::gen::exec(&AnyText), before);
    ExpectUpdate(edit,
                 "updated_properties " + std::string(kTargetProperty) + "." + field + ": " + before + " > " + value);
  });
}

template <typename Number>
void ChangeNumber(SEditCase& edit, const std::string& field, Number SProperty::*member) {
  WithTarget(edit, [&](auto& target) {
    Number& value = PropertyOf(target.properties).*member;
    const Number before = value;
    value = *rc::gen::distinctFrom(rc::gen::arbitrary<Number>(), before);
    ExpectUpdate(edit, "updated_properties " + std::string(kTargetProperty) + "." + field + ": " +
                           std::to_string(before) + " > " + std::to_string(value));
  });
}

std::vector<std::string>& Parts(SClass& element) {
  return element.behaviors;
}

std::vector<std::string>& Parts(SBehavior& element) {
  return element.methods;
}

std::string LowerCase(std::string text) {
  CStringHelper::ToLower(text);
  return text;
}

void InsertPart(SEditCase& edit) {
  WithTarget(edit, [](auto& target) { InsertAnywhere(Parts(target), std::string("A New Part")); });
}

void RemovePart(SEditCase& edit) {
  WithTarget(edit, [](auto& target) {
    std::vector<std::string>& parts = Parts(target);
    parts.erase(std::find(parts.begin(), parts.end(), kTargetPart));
  });
}

/// Everything about elements and properties that the check does not look at.
void ChangeUncompared(SProperty& property) {
  property.displayName = AnyText();
  property.field = AnyText();
  property.lookupClass = AnyText();
}

void ChangeUncompared(SClass& element) {
  element.displayName = AnyText();
  element.classId = *rc::gen::arbitrary<std::uint32_t>();
  element.tableName = AnyText();
}

void ChangeUncompared(SBehavior& element) {
  element.displayName = AnyText();
}

void ShowProperties(const std::vector<SProperty>& properties, std::ostream& output) {
  for (const SProperty& property : properties) {
    output << "\n    property " << property.internalName << ": " << property.type << ", " << property.length << ", "
           << property.precision << ", \"" << property.max << "\", \"" << property.min << "\", \""
           << property.defaultValue << "\"";
  }
}

template <typename Element>
void ShowElements(const char* kind, std::vector<Element> elements, std::ostream& output) {
  for (Element& element : elements) {
    output << "\n  " << kind << " " << element.internalName;
    for (const std::string& part : Parts(element)) {
      output << "\n    part " << part;
    }
    ShowProperties(element.properties, output);
  }
}

}  // namespace

rc::Gen<SModel> GenModel() {
  return rc::gen::exec([] {
    return SModel{AnyElements(&AnyClass), AnyElements(&AnyClass), AnyElements(&AnyBehavior)};
  });
}

void showValue(const SModel& model, std::ostream& output) {
  ShowElements("class", model.classes, output);
  ShowElements("link", model.links, output);
  ShowElements("behavior", model.behaviors, output);
}

void showValue(const SEditCase& edit, std::ostream& output) {
  output << edit.kind.kind << "\n original:";
  showValue(edit.original, output);
  output << "\n client:";
  showValue(edit.client, output);
}

void PrintTo(const SEdit& edit, std::ostream* output) {
  *output << edit.name;
}

const std::vector<SEdit>& Edits() {
  static const std::vector<SEdit> edits = {
      {"None", [](SEditCase&) {}, ""},
      {"InsertElement", [](SEditCase& edit) { InsertElement(edit); }, ""},
      {"DeleteElement", [](SEditCase& edit) { RemoveTarget(edit); }, ""},
      {"InsertElementBesideADeletion",
       [](SEditCase& edit) {
         InsertElement(edit);
         edit.findings.push_back(edit.kind.kind + " " + edit.kind.insertedKey + " A New Element");
         RemoveTarget(edit);
       },
       ""},
      {"InsertProperty",
       [](SEditCase& edit) {
         WithTarget(edit, [](auto& target) { InsertAnywhere(target.properties, AnyProperty("A New Property")); });
         ExpectUpdate(edit, "inserted_properties A New Property");
       },
       ""},
      {"DeleteProperty",
       [](SEditCase& edit) {
         WithTarget(edit, [](auto& target) {
           target.properties.erase(
               std::find_if(target.properties.begin(), target.properties.end(),
                            [](const SProperty& property) { return property.internalName == kTargetProperty; }));
         });
         ExpectUpdate(edit, "deleted_properties " + std::string(kTargetProperty));
       },
       ""},
      {"ChangeType", [](SEditCase& edit) { ChangeText(edit, "type", &SProperty::type); }, ""},
      {"ChangeLength", [](SEditCase& edit) { ChangeNumber(edit, "length", &SProperty::length); }, ""},
      {"ChangePrecision", [](SEditCase& edit) { ChangeNumber(edit, "precision", &SProperty::precision); }, ""},
      {"ChangeMax", [](SEditCase& edit) { ChangeText(edit, "max", &SProperty::max); }, ""},
      {"ChangeMin", [](SEditCase& edit) { ChangeText(edit, "min", &SProperty::min); }, ""},
      {"ChangeDefaultValue", [](SEditCase& edit) { ChangeText(edit, "default_value", &SProperty::defaultValue); }, ""},
      {"ChangeWhatIsNotCompared",
       [](SEditCase& edit) {
         WithTarget(edit, [](auto& target) {
           ChangeUncompared(target);
           ChangeUncompared(PropertyOf(target.properties));
         });
       },
       ""},
      {"ChangeTheCaseOfNames",
       [](SEditCase& edit) {
         WithTarget(edit, [](auto& target) {
           target.internalName = LowerCase(target.internalName);
           SProperty& property = PropertyOf(target.properties);
           property.internalName = LowerCase(property.internalName);
           for (std::string& part : Parts(target)) {
             part = LowerCase(part);
           }
         });
       },
       ""},
      {"AddBehaviorName",
       [](SEditCase& edit) {
         InsertPart(edit);
         ExpectUpdate(edit, "inserted_behaviors a new part");
       },
       "class"},
      {"RemoveBehaviorName",
       [](SEditCase& edit) {
         RemovePart(edit);
         ExpectUpdate(edit, "deleted_behaviors target part");
       },
       "class"},
      {"ChangeBehaviorNamesOfALink",
       [](SEditCase& edit) {
         InsertPart(edit);
         RemovePart(edit);
       },
       "link"},
      {"AddMethod",
       [](SEditCase& edit) {
         InsertPart(edit);
         ExpectUpdate(edit, "inserted_methods A New Part");
       },
       "behavior"},
      {"RemoveMethod",
       [](SEditCase& edit) {
         RemovePart(edit);
         ExpectUpdate(edit, "deleted_methods " + std::string(kTargetPart));
       },
       "behavior"},
  };
  return edits;
}

rc::Gen<SEditCase> GenEditCase(const SEdit& edit) {
  return rc::gen::exec([&edit] {
    SEditCase result;
    result.kind = *rc::gen::suchThat(rc::gen::elementOf(MetaKindRows()), [&edit](const SMetaKindRow& row) {
      return edit.onlyKind.empty() || edit.onlyKind == row.kind;
    });
    result.original = *GenModel();
    WithElements(result.kind, result.original, [](auto& elements) {
      typename std::decay_t<decltype(elements)>::value_type target;
      target.internalName = kTarget;
      target.properties = AnyProperties();
      InsertAnywhere(target.properties, AnyProperty(kTargetProperty));
      Parts(target) = AnyNames();
      InsertAnywhere(Parts(target), std::string(kTargetPart));
      InsertAnywhere(elements, target);
    });
    result.client = result.original;
    edit.apply(result);
    return result;
  });
}

std::vector<std::string> SListPair::InState(const List& list, EState state) {
  std::vector<std::string> names;
  for (const auto& [name, itsState] : list) {
    if (itsState == state) {
      names.push_back(name);
    }
  }
  return names;
}

void showValue(const SListPair& lists, std::ostream& output) {
  rc::show(lists.original, output);
  output << " ";
  rc::show(lists.client, output);
}

rc::Gen<SListPair> GenListPair() {
  return rc::gen::exec([] {
    using State = SListPair::EState;
    SListPair lists;
    const auto states = *rc::gen::container<std::vector<State>>(
        rc::gen::element(State::kSame, State::kChanged, State::kDeleted, State::kInserted));
    for (std::size_t i = 0; i < states.size(); ++i) {
      const std::string name = "n" + std::to_string(i);
      if (states[i] != State::kInserted) {
        InsertAnywhere(lists.original, {name, states[i]});
      }
      if (states[i] != State::kDeleted) {
        InsertAnywhere(lists.client, {name, states[i]});
      }
    }
    return lists;
  });
}

}  // namespace test
