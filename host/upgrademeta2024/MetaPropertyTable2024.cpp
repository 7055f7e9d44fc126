#include "upgrademeta2024/MetaPropertyTable2024.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string_view>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"

namespace {

/// A lower-cased name to be sorted.
struct SName {
  // The first bytes, as a number that orders as they do: most comparisons need no more.
  std::uint64_t begin = 0;
  std::string_view name;
  std::uint32_t position = 0;

  SName(std::string_view lowerName, std::uint32_t namePosition) : name(lowerName), position(namePosition) {
    for (std::size_t i = 0; i < sizeof(begin); ++i) {
      begin = begin << 8U | (i < name.size() ? static_cast<unsigned char>(name[i]) : 0U);
    }
  }

  bool operator<(const SName& other) const {
    if (begin != other.begin) {
      return begin < other.begin;
    }
    const int order = name.compare(other.name);
    return order < 0 || (order == 0 && position < other.position);
  }
};

// What most elements need, so that filling does not begin with a series of ever larger blocks.
constexpr std::size_t kReservedProperties = 64;
constexpr std::size_t kReservedTexts = 8192;

}  // namespace

struct CMetaPropertyTable2024::SBlock {
  std::string texts;
  std::vector<CMetaProperty2024> properties;
  std::optional<std::pair<std::size_t, std::size_t>> repeatedName;
  bool finished = false;

  // The properties ordered by lower-cased name and, among equal names, by position; the names come one after the other
  // in one string: a dictionary of them is asked for again and again.
  struct SByName {
    std::uint32_t position;
    std::uint32_t nameEnd;
  };
  std::vector<SByName> byName;
  std::string lowerNames;

  void SortNames();
};

void CMetaPropertyTable2024::SBlock::SortNames() {
  std::string listed;
  for (const CMetaProperty2024& property : properties) {
    listed += property.Text(CMetaProperty2024::kInternalName);
  }
  CStringHelper::ToLower(listed);
  std::vector<SName> names;
  names.reserve(properties.size());
  std::size_t begin = 0;
  for (const CMetaProperty2024& property : properties) {
    const std::size_t size = property.Text(CMetaProperty2024::kInternalName).size();
    names.emplace_back(std::string_view(listed).substr(begin, size), static_cast<std::uint32_t>(names.size()));
    begin += size;
  }
  std::sort(names.begin(), names.end());
  lowerNames.reserve(listed.size());
  byName.reserve(names.size());
  const SName* previous = nullptr;
  for (const SName& name : names) {
    if (previous != nullptr && previous->name == name.name && (!repeatedName || name.position < repeatedName->second)) {
      repeatedName.emplace(previous->position, name.position);
    }
    lowerNames += name.name;
    byName.push_back({name.position, static_cast<std::uint32_t>(lowerNames.size())});
    previous = &name;
  }
}

CMetaPropertyTable2024::CMetaPropertyTable2024() : block_(std::make_shared<SBlock>()) {}

CMetaPropertyTable2024::~CMetaPropertyTable2024() = default;

CMetaPropertyTable2024::CMetaPropertyTable2024(CMetaPropertyTable2024&&) noexcept = default;

CMetaPropertyTable2024& CMetaPropertyTable2024::operator=(CMetaPropertyTable2024&&) noexcept = default;

void CMetaPropertyTable2024::Add(const SMetaPropertyValues2024& values) {
  const std::array<std::string_view, CMetaProperty2024::kTextCount> parts = {
      values.internalName, values.displayName, values.field, values.type,
      values.defaultValue, values.max,         values.min,   values.lookupClass};
  std::string& texts = block_->texts;
  if (block_->properties.capacity() == 0) {
    block_->properties.reserve(kReservedProperties);
    texts.reserve(kReservedTexts);
  }
  const std::size_t begin = texts.size();
  std::size_t end = begin;
  for (const std::string_view part : parts) {
    end += part.size();
  }
  if (end > std::numeric_limits<std::uint32_t>::max()) {
    throw CKVXException(kvx::kMetamodelError, "the texts of one element's properties exceed 4 GiB");
  }
  CMetaProperty2024& property =
      block_->properties.emplace_back(CMetaProperty2024(texts, values, static_cast<std::uint32_t>(begin)));
  if (end > texts.capacity()) {
    texts.reserve(end * 2);
  }
  texts.resize(end);
  std::size_t at = begin;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    at += parts[i].copy(&texts[at], parts[i].size());
    property.ends_[i] = static_cast<std::uint32_t>(at);
  }
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
  for (const SBlock::SByName& item : block_->byName) {
    properties.emplace_hint(properties.end(), std::string(block_->lowerNames, begin, item.nameEnd - begin),
                            std::shared_ptr<CMetaProperty2024>(block_, &block_->properties[item.position]));
    begin = item.nameEnd;
  }
  return properties;
}
