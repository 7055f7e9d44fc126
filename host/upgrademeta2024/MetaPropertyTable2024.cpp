#include "upgrademeta2024/MetaPropertyTable2024.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <numeric>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"

struct CMetaPropertyTable2024::SBlock {
  std::string texts;
  std::vector<CMetaProperty2024> properties;
  // Positions ordered by lower-cased name and, among equal names, by position.
  std::vector<std::uint32_t> byName;
  std::optional<std::pair<std::size_t, std::size_t>> repeatedName;
  bool finished = false;

  // The lower-cased names in the order of byName, one after the other, and where each ends: a dictionary of them is
  // asked for again and again.
  std::string lowerNames;
  std::vector<std::uint32_t> lowerNameEnds;

  std::string LowerName(std::uint32_t position) const {
    std::string name = properties[position].GetInternalName();
    CStringHelper::ToLower(name);
    return name;
  }
  void SortNames();
};

void CMetaPropertyTable2024::SBlock::SortNames() {
  std::vector<std::string> names;
  names.reserve(properties.size());
  for (std::uint32_t i = 0; i < properties.size(); ++i) {
    names.push_back(LowerName(i));
  }
  byName.resize(properties.size());
  std::iota(byName.begin(), byName.end(), 0U);
  std::sort(byName.begin(), byName.end(), [&names](std::uint32_t a, std::uint32_t b) {
    const int order = names[a].compare(names[b]);
    return order < 0 || (order == 0 && a < b);
  });
  for (std::size_t i = 1; i < byName.size(); ++i) {
    if (names[byName[i - 1]] == names[byName[i]] && (!repeatedName || byName[i] < repeatedName->second)) {
      repeatedName.emplace(byName[i - 1], byName[i]);
    }
  }
  lowerNameEnds.reserve(byName.size());
  for (const std::uint32_t position : byName) {
    lowerNames += names[position];
    lowerNameEnds.push_back(static_cast<std::uint32_t>(lowerNames.size()));
  }
  lowerNames.shrink_to_fit();
}

CMetaPropertyTable2024::CMetaPropertyTable2024() : block_(std::make_shared<SBlock>()) {}

CMetaPropertyTable2024::~CMetaPropertyTable2024() = default;

CMetaPropertyTable2024::CMetaPropertyTable2024(CMetaPropertyTable2024&&) noexcept = default;

CMetaPropertyTable2024& CMetaPropertyTable2024::operator=(CMetaPropertyTable2024&&) noexcept = default;

void CMetaPropertyTable2024::Add(const SMetaPropertyValues2024& values) {
  const std::array<std::string_view, CMetaProperty2024::kTextCount> texts = {
      values.internalName, values.displayName, values.field, values.type,
      values.defaultValue, values.max,         values.min,   values.lookupClass};
  const std::size_t begin = block_->texts.size();
  std::size_t end = begin;
  for (const std::string_view text : texts) {
    end += text.size();
  }
  if (end > std::numeric_limits<std::uint32_t>::max()) {
    throw CKVXException(kvx::kMetamodelError, "the texts of one element's properties exceed 4 GiB");
  }
  CMetaProperty2024 property(block_->texts, values, static_cast<std::uint32_t>(begin));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    block_->texts += texts[i];
    property.ends_[i] = static_cast<std::uint32_t>(block_->texts.size());
  }
  block_->properties.push_back(property);
}

void CMetaPropertyTable2024::Finish() {
  if (block_->finished) {
    return;
  }
  block_->texts.shrink_to_fit();
  block_->properties.shrink_to_fit();
  block_->SortNames();
  block_->finished = true;
}

std::size_t CMetaPropertyTable2024::GetSize() const {
  return block_->properties.size();
}

const CMetaProperty2024& CMetaPropertyTable2024::At(std::size_t index) const {
  return block_->properties.at(index);
}

std::optional<std::pair<std::size_t, std::size_t>> CMetaPropertyTable2024::FindRepeatedName() const {
  return block_->repeatedName;
}

std::list<std::shared_ptr<CMetaProperty2024>> CMetaPropertyTable2024::GetProperties() const {
  std::list<std::shared_ptr<CMetaProperty2024>> properties;
  for (CMetaProperty2024& property : block_->properties) {
    properties.emplace_back(block_, &property);
  }
  return properties;
}

std::map<std::string, std::shared_ptr<CMetaProperty2024>> CMetaPropertyTable2024::GetPropertyDict() const {
  std::map<std::string, std::shared_ptr<CMetaProperty2024>> properties;
  std::uint32_t begin = 0;
  for (std::size_t i = 0; i < block_->byName.size(); ++i) {
    const std::uint32_t end = block_->lowerNameEnds[i];
    properties.emplace_hint(properties.end(), std::string(block_->lowerNames, begin, end - begin),
                            std::shared_ptr<CMetaProperty2024>(block_, &block_->properties[block_->byName[i]]));
    begin = end;
  }
  return properties;
}
