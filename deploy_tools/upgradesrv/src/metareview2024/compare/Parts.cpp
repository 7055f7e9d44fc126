#include "metareview2024/compare/Parts.h"

#include <unordered_set>

#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaClass2024.h"

namespace metareview {
namespace {

std::string LowerCase(std::string text) {
  CStringHelper::ToLower(text);
  return text;
}

}  // namespace

CNames::CNames(std::vector<std::string> names) : names_(std::move(names)) {}

std::optional<std::size_t> CNames::Find(const std::string& name) {
  if (next_ < names_.size() && names_[next_] == name) {
    return next_++;
  }
  if (positions_.empty()) {
    for (std::size_t i = 0; i < names_.size(); ++i) {
      positions_.emplace(LowerCase(names_[i]), i);
    }
  }
  const auto found = positions_.find(LowerCase(name));
  if (found == positions_.end()) {
    return std::nullopt;
  }
  next_ = found->second + 1;
  return found->second;
}

CNames ListedBehaviors(const CMetaClass2024& element) {
  std::unordered_set<std::string> known;
  std::vector<std::string> names;
  for (std::string& name : element.GetBehaviors()) {
    if (known.insert(LowerCase(name)).second) {
      names.push_back(std::move(name));
    }
  }
  return CNames(std::move(names));
}

}  // namespace metareview
