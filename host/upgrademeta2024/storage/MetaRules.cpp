#include "upgrademeta2024/storage/MetaRules.h"

#include <utility>

#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaDictionary2024.h"

namespace metarules {

std::string WrongGeneration(const std::string& found) {
  return "the metamodel is of generation " + CStringHelper::ToVisible(found) + "; only " +
         std::to_string(CMetaDictionary2024::kGeneration) + " can be read";
}

std::string WrongNumber(std::uint64_t max, const std::string& found) {
  return "expected a whole number from 0 to " + std::to_string(max) + ", found " + CStringHelper::ToVisible(found);
}

std::string RepeatedName(const std::string& name, const SItem& earlier) {
  return "the name \"" + CStringHelper::ToVisible(name) + "\" repeats \"" + CStringHelper::ToVisible(earlier.name) +
         "\" of " + earlier.numberName + " " + std::to_string(earlier.number) +
         " of the same list; names must differ in more than letter case";
}

std::string CUniqueNames::Add(const SItem& item) {
  if (item.name.empty()) {
    return {};
  }
  std::string key = item.name;
  CStringHelper::ToLower(key);
  const auto [earlier, isNew] = items_.emplace(std::move(key), item);
  return isNew ? std::string() : RepeatedName(item.name, earlier->second);
}

}  // namespace metarules
