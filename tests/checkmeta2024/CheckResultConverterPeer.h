#pragma once

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>

#include "checkmeta2024/CheckResultConverter.h"
#include "checkmeta2024/Findings.h"
#include "checkmeta2024/UpgradeFolder.h"

/// Calls the blocks of a converter by themselves. Each operation answers with what it has written.
class CCheckResultConverterPeer {
 public:
  using ObjectList = std::list<std::shared_ptr<CJsonObject>>;

  /// Reads the display dictionary.
  explicit CCheckResultConverterPeer(CCheckResultConverter& converter);

  std::string ByType(const std::string& indent, const std::string& changeKind, const std::string& metaType,
                     const ObjectList& elements);
  std::string Updated(const std::string& indent, const std::string& metaType, const ObjectList& elements);
  std::string Nested(const std::string& indent, const std::list<std::string>& kinds, const ObjectList& elements);
  std::string NestedMethods(const std::string& indent, const ObjectList& elements);
  std::string BehaviorNames(const std::string& indent, const ObjectList& elements);
  std::string Changes(const std::string& indent, const ObjectList& changes);

  /// What has been written since the last answer; emptied.
  std::string Take();

 private:
  CCheckResultConverter& converter_;
};

namespace test {

/// The objects of the text of a JSON array.
std::list<std::shared_ptr<CJsonObject>> Objects(const std::string& array);

/// Appends the text of one kind of a check result document to `text`.
void Convert(CCheckResultConverter& converter, const std::string& kind, const std::shared_ptr<CJsonObject>& section,
             std::string& text);

/// A converter on an upgrade configuration directory.
class ConverterTest : public testing::Test {
 protected:
  /// The text of one kind's object.
  std::string Text(const std::string& kind, const std::string& section);

  CUpgradeFolder folder_;
  CCheckResultConverter converter_{folder_.handlerContext, folder_.context};
};

}  // namespace test
