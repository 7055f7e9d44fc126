#include "support/MetaText.h"

#include <iomanip>
#include <sstream>

#include "upgrademeta2024/MetaDictionary2024.h"

namespace test {
namespace {

template <typename Element>
void PutProperties(std::ostream& output, const Element& element) {
  for (const auto& property : element.GetProperties()) {
    std::string max;
    std::string min;
    property->GetMaxMinValue(max, min);
    output << "  property " << std::quoted(property->GetInternalName()) << ' '
           << std::quoted(property->GetDisplayName()) << ' ' << std::quoted(property->GetField()) << ' '
           << std::quoted(property->GetType()) << ' ' << property->GetLength() << ' '
           << std::quoted(property->GetDefaultValue()) << ' ' << property->GetPrecision() << ' ' << std::quoted(max)
           << ' ' << std::quoted(min) << ' ' << std::quoted(property->GetLookupClass()) << '\n';
  }
}

void PutClass(std::ostream& output, const char* kind, const CMetaClass2024& element) {
  output << kind << ' ' << std::quoted(element.GetInternalName()) << ' ' << std::quoted(element.GetDisplayName()) << ' '
         << element.GetClassId() << ' ' << std::quoted(element.GetTableName());
  for (const std::string& name : element.GetBehaviors()) {
    output << ' ' << std::quoted(name);
  }
  output << '\n';
  PutProperties(output, element);
}

}  // namespace

std::string TextOf(const CMetaDictionary2024& dictionary) {
  std::ostringstream output;
  for (const auto& element : dictionary.GetClasses()) {
    PutClass(output, "class", *element);
  }
  for (const auto& element : dictionary.GetLinks()) {
    PutClass(output, "link", *element);
  }
  for (const auto& element : dictionary.GetBehaviors()) {
    output << "behavior " << std::quoted(element->GetInternalName()) << ' ' << std::quoted(element->GetDisplayName())
           << '\n';
    for (const auto& method : element->GetMethods()) {
      output << "  method " << std::quoted(method->GetInternalName()) << ' ' << std::quoted(method->GetDisplayName())
             << '\n';
    }
    PutProperties(output, *element);
  }
  return output.str();
}

}  // namespace test
