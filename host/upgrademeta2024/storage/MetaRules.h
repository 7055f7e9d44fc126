#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "upgrademeta2024/upgrademeta2024_export.h"

/// What every storage refuses in a metamodel, in words for its user.
namespace metarules {

inline constexpr const char* kEmptyName = "the name is empty";

UPGRADEMETA2024_EXPORT std::string WrongGeneration(const std::string& found);
UPGRADEMETA2024_EXPORT std::string WrongNumber(std::uint64_t max, const std::string& found);

/// An item of a list: its number, and what the storage calls that.
struct SItem {
  const char* numberName;
  std::uint64_t number;
  std::string name;
};
/// Of two items whose names are the same but for ASCII case.
UPGRADEMETA2024_EXPORT std::string RepeatedName(const std::string& name, const SItem& earlier);

/// The names of one list.
class UPGRADEMETA2024_EXPORT CUniqueNames {
 public:
  /// Empty, or what is wrong with the item: an earlier one has its name. No name, which is a fault of its own, is never
  /// an earlier one's.
  std::string Add(const SItem& item);

 private:
  std::unordered_map<std::string, SItem> items_;
};

}  // namespace metarules
