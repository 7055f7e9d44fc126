#include "storage/MetaText.h"

#include <sstream>

#include "upgrademeta2024/MetaDictionary2024.h"

namespace test {
namespace {

class CText {
 public:
  template <typename Value>
  void Add(const char* what, const Value& value) {
    text_ << what << " [" << value << "]\n";
  }

  template <typename Element>
  void AddNames(const char* kind, const Element& element) {
    Add(kind, element.GetInternalName());
    Add("display name", element.GetDisplayName());
  }

  void AddClass(const char* kind, const CMetaClass2024& element) {
    AddNames(kind, element);
    Add("class id", element.GetClassId());
    Add("table name", element.GetTableName());
    for (const std::string& name : element.GetBehaviors()) {
      Add("behavior name", name);
    }
    AddProperties(element);
  }

  template <typename Element>
  void AddProperties(const Element& element) {
    for (const auto& property : element.GetProperties()) {
      std::string max;
      std::string min;
      property->GetMaxMinValue(max, min);
      AddNames("property", *property);
      Add("field", property->GetField());
      Add("type", property->GetType());
      Add("length", property->GetLength());
      Add("default value", property->GetDefaultValue());
      Add("precision", property->GetPrecision());
      Add("max", max);
      Add("min", min);
      Add("lookup class", property->GetLookupClass());
    }
  }

  std::string Get() const { return text_.str(); }

 private:
  std::ostringstream text_;
};

}  // namespace

std::string MetaText(const CMetaDictionary2024& dictionary) {
  CText text;
  for (const auto& element : dictionary.GetClasses()) {
    text.AddClass("class", *element);
  }
  for (const auto& element : dictionary.GetLinks()) {
    text.AddClass("link", *element);
  }
  for (const auto& element : dictionary.GetBehaviors()) {
    text.AddNames("behavior", *element);
    for (const auto& method : element->GetMethods()) {
      text.AddNames("method", *method);
    }
    text.AddProperties(*element);
  }
  return text.Get();
}

}  // namespace test
