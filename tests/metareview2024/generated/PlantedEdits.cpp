#include "metareview2024/generated/PlantedEdits.h"

#include <rapidcheck.h>

#include <algorithm>
#include <functional>
#include <utility>

#include "kvxsptstring/StringHelper.h"

namespace test {
namespace {

const char* const kProperty = "Planted Property";
const char* const kPart = "Planted Part";

template <typename Item>
void InsertAnywhere(std::vector<Item>& items, Item item) {
  const auto position = *rc::gen::inRange<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(items.size()) + 1);
  items.insert(items.begin() + position, std::move(item));
}

std::string UpperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return text;
}

std::vector<std::string>& Parts(SClass& element) {
  return element.behaviors;
}

std::vector<std::string>& Parts(SBehavior& element) {
  return element.methods;
}

/// The same element of both metamodels, before it is planted.
template <typename Element>
struct STarget {
  Element client;
  Element original;
  /// What of it is planted.
  bool inClient = true;
  bool inOriginal = true;
  /// The kind's name.
  std::string kind;
  std::vector<std::string>& findings;
  /// Elements that only the client has beside it.
  std::vector<Element> others = {};

  SProperty& ClientProperty() { return PropertyOf(client); }
  SProperty& OriginalProperty() { return PropertyOf(original); }

  std::string Path() const { return kind + "/" + client.internalName; }
  void Expect(const std::string& path, const std::string& change, const std::string& rule) {
    findings.push_back(Path() + path + " " + change + " " + rule);
  }
  /// Of the property.
  void ExpectChanged(const std::string& attribute, const std::string& rule) {
    Expect("/property/" + ClientProperty().internalName + "/" + attribute, "changed", rule);
  }

 private:
  static SProperty& PropertyOf(Element& element) {
    return *std::find_if(element.properties.begin(), element.properties.end(), [](const SProperty& property) {
      return CStringHelper::StringCompare(property.internalName, kProperty, /*ignoreCase=*/true) == 0;
    });
  }
};

template <typename Element>
using Edit = void (*)(STarget<Element>&);

// What elements of every kind have.

template <typename Element>
void InsertElement(STarget<Element>& target) {
  target.inOriginal = false;
  target.Expect("", "inserted", target.kind + "-inserted");
}

template <typename Element>
void DeleteElement(STarget<Element>& target) {
  target.inClient = false;
  target.Expect("", "deleted", target.kind + "-deleted");
}

template <typename Element>
void RespellElement(STarget<Element>& target) {
  target.client.internalName = UpperCase(target.client.internalName);
  target.Expect("/internal_name", "changed", "spelling");
}

template <typename Element>
void RenameElement(STarget<Element>& target) {
  target.client.displayName += *rc::gen::element<std::string>(" ", "x", "\n", "图");
  target.Expect("/display_name", "changed", "display-name");
}

template <typename Element>
void InsertProperty(STarget<Element>& target) {
  InsertAnywhere(target.client.properties, Property("New Property"));
  target.Expect("/property/New Property", "inserted", "property-inserted");
}

template <typename Element>
void DeleteProperty(STarget<Element>& target) {
  InsertAnywhere(target.original.properties, Property("Old Property"));
  target.Expect("/property/Old Property", "deleted", "property-deleted");
}

template <typename Element>
void TakeField(STarget<Element>& target) {
  SProperty shipped = Property("Shipped Property");
  SProperty own = Property("Own Property");
  own.field = UpperCase(shipped.field);
  InsertAnywhere(target.original.properties, shipped);
  InsertAnywhere(target.client.properties, own);
  target.Expect("/property/Own Property", "inserted", "property-inserted");
  target.Expect("/property/Shipped Property", "deleted", "property-field-taken");
}

template <typename Element>
void RespellProperty(STarget<Element>& target) {
  target.ClientProperty().internalName = UpperCase(kProperty);
  target.ExpectChanged("internal_name", "spelling");
}

/// A text of the property: before and after, and what comes of it.
struct STextEdit {
  std::string SProperty::*text;
  const char* attribute;
  const char* client;
  const char* original;
  const char* rule;
};

const std::vector<STextEdit>& TextEdits() {
  static const std::vector<STextEdit> edits = {
      {&SProperty::displayName, "display_name", "Nummer", "Number", "display-name"},
      {&SProperty::field, "field", "F_OWN", "F_CODE", "field-moved"},
      {&SProperty::field, "field", "", "F_CODE", "field-unset"},
      {&SProperty::field, "field", "F_OWN", "", "field-unset"},
      {&SProperty::type, "type", "int8", "float32", "type-widened"},
      {&SProperty::type, "type", "lookup", "string", "type-narrowed"},
      {&SProperty::type, "type", "url", "text", "type-relaxed"},
      {&SProperty::type, "type", "string", "url", "type-changed"},
      {&SProperty::defaultValue, "default_value", "1.50", "1.5", "same-number"},
      {&SProperty::defaultValue, "default_value", "a", "b", "default-changes"},
      {&SProperty::max, "max", "9", "9.0", "same-number"},
      {&SProperty::max, "max", "10", "9", "max-tightens"},
      {&SProperty::max, "max", "", "9", "max-tightens"},
      {&SProperty::max, "max", "9", "10", "max-relaxes"},
      {&SProperty::max, "max", "9", "", "max-relaxes"},
      {&SProperty::max, "max", "9", "x", "limit-unclear"},
      {&SProperty::min, "min", "-0", "0", "same-number"},
      {&SProperty::min, "min", "9", "10", "min-tightens"},
      {&SProperty::min, "min", "", "9", "min-tightens"},
      {&SProperty::min, "min", "10", "9", "min-relaxes"},
      {&SProperty::min, "min", "9", "", "min-relaxes"},
      {&SProperty::min, "min", "x", "9", "limit-unclear"},
      {&SProperty::lookupClass, "lookup_internal_name", "User", "USER", "spelling"},
      {&SProperty::lookupClass, "lookup_internal_name", "User", "Group", "lookup-moved"},
      {&SProperty::lookupClass, "lookup_internal_name", "", "Group", "lookup-unset"},
      {&SProperty::lookupClass, "lookup_internal_name", "User", "", "lookup-unset"},
  };
  return edits;
}

template <typename Element>
void ChangeText(STarget<Element>& target) {
  const STextEdit edit = *rc::gen::elementOf(TextEdits());
  target.ClientProperty().*edit.text = edit.client;
  target.OriginalProperty().*edit.text = edit.original;
  target.ExpectChanged(edit.attribute, edit.rule);
}

template <typename Element>
void ChangeLength(STarget<Element>& target) {
  const auto client = *rc::gen::arbitrary<std::uint32_t>();
  const auto original = *rc::gen::distinctFrom(rc::gen::arbitrary<std::uint32_t>(), client);
  target.ClientProperty().length = client;
  target.OriginalProperty().length = original;
  target.ExpectChanged("length", client == 0 || original == 0 ? "length-unset"
                                 : client > original          ? "length-shrinks"
                                                              : "length-grows");
}

template <typename Element>
void ChangePrecision(STarget<Element>& target) {
  const auto client = *rc::gen::arbitrary<std::uint16_t>();
  const auto original = *rc::gen::distinctFrom(rc::gen::arbitrary<std::uint16_t>(), client);
  const std::uint32_t length = *rc::gen::element<std::uint32_t>(0, 12);
  target.ClientProperty().precision = client;
  target.OriginalProperty().precision = original;
  target.ClientProperty().length = length;
  target.OriginalProperty().length = length;
  target.ExpectChanged("precision", client > original ? "precision-shrinks"
                                    : length == 0     ? "precision-grows"
                                                      : "precision-takes-digits");
}

template <typename Element>
void ChangeTypeAndNumbers(STarget<Element>& target) {
  target.ClientProperty().type = "int32";
  target.OriginalProperty().type = "float64";
  target.ClientProperty().length += 1;
  target.ClientProperty().precision = 2;
  target.OriginalProperty().precision = 1;
  target.ExpectChanged("type", "type-widened");
  target.ExpectChanged("length", "follows-type");
  target.ExpectChanged("precision", "follows-type");
}

// What a class or link has.

void ListBehavior(STarget<SClass>& target) {
  InsertAnywhere(target.client.behaviors, std::string("Own Behavior"));
  target.Expect("/behavior/Own Behavior", "inserted", "listed-behavior-inserted");
}

void UnlistBehavior(STarget<SClass>& target) {
  InsertAnywhere(target.original.behaviors, std::string("Old Behavior"));
  target.Expect("/behavior/Old Behavior", "deleted", "listed-behavior-deleted");
}

void RespellAndRepeatBehaviors(STarget<SClass>& target) {
  std::vector<std::string>& behaviors = target.client.behaviors;
  std::transform(behaviors.begin(), behaviors.end(), behaviors.begin(), UpperCase);
  InsertAnywhere(behaviors, std::string(kPart));
}

void ChangeClassId(STarget<SClass>& target) {
  target.client.classId = *rc::gen::distinctFrom(rc::gen::arbitrary<std::uint32_t>(), target.original.classId);
  target.Expect("/class_id", "changed", "class-id");
}

void MoveTable(STarget<SClass>& target) {
  target.client.tableName += "x";
  target.Expect("/table_name", "changed", "table-moved");
}

void UnsetTable(STarget<SClass>& target) {
  (*rc::gen::arbitrary<bool>() ? target.client : target.original).tableName.clear();
  target.Expect("/table_name", "changed", "table-unset");
}

void TakeIdentity(STarget<SClass>& target) {
  SClass other = target.original;
  other.internalName += " Taker";
  if (*rc::gen::arbitrary<bool>()) {
    other.tableName = UpperCase(other.tableName);
    other.classId = 0;
  } else {
    other.tableName.clear();
  }
  target.inClient = false;
  target.Expect("", "deleted", target.kind + "-identity-taken");
  target.Expect(" Taker", "inserted", target.kind + "-inserted");
  target.others.push_back(std::move(other));
}

// What a behavior has.

void InsertMethod(STarget<SBehavior>& target) {
  InsertAnywhere(target.client.methods, std::string("Own Method"));
  target.Expect("/method/Own Method", "inserted", "method-inserted");
}

void DeleteMethod(STarget<SBehavior>& target) {
  InsertAnywhere(target.original.methods, std::string("Old Method"));
  target.Expect("/method/Old Method", "deleted", "method-deleted");
}

void RespellMethod(STarget<SBehavior>& target) {
  const std::string name = UpperCase(kPart);
  std::replace(target.client.methods.begin(), target.client.methods.end(), std::string(kPart), name);
  target.client.methodDisplayNames[name] = std::string(kPart) + "()";
  target.Expect("/method/" + name + "/internal_name", "changed", "spelling");
}

void RenameMethod(STarget<SBehavior>& target) {
  target.client.methodDisplayNames[kPart] = "";
  target.Expect("/method/" + std::string(kPart) + "/display_name", "changed", "display-name");
}

template <typename Element>
std::vector<Edit<Element>> CommonEdits() {
  return {InsertElement<Element>,  DeleteElement<Element>,  RespellElement<Element>,  RenameElement<Element>,
          InsertProperty<Element>, DeleteProperty<Element>, TakeField<Element>,       RespellProperty<Element>,
          ChangeText<Element>,     ChangeLength<Element>,   ChangePrecision<Element>, ChangeTypeAndNumbers<Element>};
}

std::vector<Edit<SClass>> EditsOf(const SClass& /*element*/) {
  std::vector<Edit<SClass>> edits = CommonEdits<SClass>();
  edits.insert(edits.end(), {ListBehavior, UnlistBehavior, RespellAndRepeatBehaviors, ChangeClassId, MoveTable,
                             UnsetTable, TakeIdentity});
  return edits;
}

std::vector<Edit<SBehavior>> EditsOf(const SBehavior& /*element*/) {
  std::vector<Edit<SBehavior>> edits = CommonEdits<SBehavior>();
  edits.insert(edits.end(), {InsertMethod, DeleteMethod, RespellMethod, RenameMethod});
  return edits;
}

/// Plants an edit in a new element of one kind, which both have.
template <typename Element>
void Plant(std::vector<Element>& client, std::vector<Element>& original, const std::string& kind, Element element,
           std::vector<std::string>& findings) {
  InsertAnywhere(element.properties, Property(kProperty));
  InsertAnywhere(Parts(element), std::string(kPart));
  STarget<Element> target = {element, element, true, true, kind, findings};
  const Edit<Element> edit = *rc::gen::elementOf(EditsOf(element));
  edit(target);
  if (target.inClient) {
    InsertAnywhere(client, target.client);
  }
  if (target.inOriginal) {
    InsertAnywhere(original, target.original);
  }
  for (Element& other : target.others) {
    InsertAnywhere(client, std::move(other));
  }
}

}  // namespace

void CPlanter::PlantAny() {
  ++count_;
  const std::string name = "Planted " + std::to_string(count_);
  const std::vector<SProperty> properties = {Property("Kept")};
  const std::vector<std::string> parts = {"Kept"};
  // Far from what generated elements have, so that nothing is taken by chance.
  const auto classId = static_cast<std::uint32_t>(4000000000U + count_);
  const SClass element = {name, parts, properties, name, classId, "t_planted_" + std::to_string(count_)};
  SModel& client = planted_.client;
  SModel& original = planted_.original;
  switch (*rc::gen::inRange(0, 3)) {
    case 0:
      return Plant(client.classes, original.classes, "class", element, planted_.findings);
    case 1:
      return Plant(client.links, original.links, "link", element, planted_.findings);
    default:
      return Plant(client.behaviors, original.behaviors, "behavior", SBehavior{name, parts, properties, name},
                   planted_.findings);
  }
}

}  // namespace test
