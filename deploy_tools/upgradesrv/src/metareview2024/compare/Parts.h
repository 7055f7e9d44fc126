#pragma once

#include <cstddef>
#include <iterator>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

class CMetaBehavior2024;
class CMetaClass2024;

namespace metareview {

/// Names in the order of a list, found without regard to ASCII case; of several that differ in nothing else, the first.
class CNames {
 public:
  explicit CNames(std::vector<std::string> names);

  std::size_t Size() const { return names_.size(); }
  const std::string& At(std::size_t index) const { return names_[index]; }

  /// Lists that are alike are searched in one pass: the name after the last one found is looked at first.
  std::optional<std::size_t> Find(const std::string& name);

 private:
  std::vector<std::string> names_;
  std::size_t next_ = 0;
  std::unordered_map<std::string, std::size_t> positions_;
};

/// What an element lists: methods or properties.
template <typename Part>
class CParts {
 public:
  explicit CParts(const std::list<std::shared_ptr<Part>>& parts)
      : parts_(parts.begin(), parts.end()), names_(NamesOf(parts)) {}

  CNames& Names() { return names_; }
  const Part& At(std::size_t index) const { return *parts_[index]; }
  /// Null when there is none of that name.
  const Part* Find(const std::string& name) {
    const std::optional<std::size_t> index = names_.Find(name);
    return index ? parts_[*index].get() : nullptr;
  }

 private:
  static std::vector<std::string> NamesOf(const std::list<std::shared_ptr<Part>>& parts) {
    std::vector<std::string> names;
    names.reserve(parts.size());
    for (const std::shared_ptr<Part>& part : parts) {
      names.push_back(part->GetInternalName());
    }
    return names;
  }

  std::vector<std::shared_ptr<Part>> parts_;
  CNames names_;
};

/// The names of the behaviors that a class or link lists, each once, as it first occurs there.
CNames ListedBehaviors(const CMetaClass2024& element);

/// Calls `pair(client's, original's)` or `inserted(client's)` for each name of the client, in its order, then
/// `deleted(original's)` for each that only the original has; all of them with positions.
template <typename Pair, typename Inserted, typename Deleted>
void MatchNames(const CNames& client, CNames& original, const Pair& pair, const Inserted& inserted,
                const Deleted& deleted) {
  std::vector<bool> matched(original.Size());
  for (std::size_t i = 0; i < client.Size(); ++i) {
    if (const std::optional<std::size_t> found = original.Find(client.At(i))) {
      matched[*found] = true;
      pair(i, *found);
    } else {
      inserted(i);
    }
  }
  for (std::size_t i = 0; i < matched.size(); ++i) {
    if (!matched[i]) {
      deleted(i);
    }
  }
}

}  // namespace metareview
