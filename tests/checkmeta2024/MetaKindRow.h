#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "checkmeta2024/CheckMeta2024Helper.h"
#include "checkmeta2024/UpgradeFolder.h"

namespace test {

/// An element of any kind with one property, "Code", of this length.
struct SElement {
  std::string name;
  std::uint32_t length = 32;
};

/// What tells a kind of element apart in the check of two metamodels.
struct SMetaKindRow {
  std::string kind;
  std::string insertedKey;
  std::string updatedKey;
  std::string deletedKey;
  bool (CCheckMeta2024Helper::*checkWithDocument)(std::shared_ptr<CJsonObject>&);
  bool (CCheckMeta2024Helper::*check)();
  /// A metamodel with these elements of the kind, and none of another.
  SModel (*model)(const std::vector<SElement>&);
  std::string logPrefix;
  std::string function;
  std::uint32_t code;
  std::string codeText;
  int clientLine;
  int originalLine;
};

void PrintTo(const SMetaKindRow& row, std::ostream* output);

/// Classes, links and behaviors.
const std::vector<SMetaKindRow>& MetaKindRows();

}  // namespace test
