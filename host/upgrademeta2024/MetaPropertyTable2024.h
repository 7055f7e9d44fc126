#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "upgrademeta2024/MetaProperty2024.h"
#include "upgrademeta2024/upgrademeta2024_export.h"

/// The properties of one element, in order. Filled, then moved into the element. Properties that it hands out share its
/// memory and keep that alive, also when the table itself is gone.
class UPGRADEMETA2024_EXPORT CMetaPropertyTable2024 {
 public:
  CMetaPropertyTable2024();
  ~CMetaPropertyTable2024();
  CMetaPropertyTable2024(CMetaPropertyTable2024&&) noexcept;
  CMetaPropertyTable2024& operator=(CMetaPropertyTable2024&&) noexcept;
  CMetaPropertyTable2024(const CMetaPropertyTable2024&) = delete;
  CMetaPropertyTable2024& operator=(const CMetaPropertyTable2024&) = delete;

  /// Appends a property. No property may have been handed out yet. Throws CKVXException
  /// (kvx::kMetamodelError) when the texts of all properties together exceed 4 GiB.
  void Add(const SMetaPropertyValues2024& values);
  /// Ends filling: gives back what was reserved in advance and sorts the names. The element that a table is moved into
  /// calls it as well; a second call does nothing.
  void Finish();

  std::size_t GetSize() const;
  const CMetaProperty2024& At(std::size_t index) const;
  /// The positions of two properties whose names are the same but for ASCII case, the later one second; of several such
  /// pairs one with the earliest second. Finish() must have been called.
  std::optional<std::pair<std::size_t, std::size_t>> FindRepeatedName() const;

  std::list<std::shared_ptr<CMetaProperty2024>> GetProperties() const;
  /// Keyed by the lower-cased name; of properties of one name the first. Finish() must have been called.
  std::map<std::string, std::shared_ptr<CMetaProperty2024>> GetPropertyDict() const;

 private:
  struct SBlock;
  std::shared_ptr<SBlock> block_;
};
