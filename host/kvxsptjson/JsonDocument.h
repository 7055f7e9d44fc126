#pragma once

#include <rapidjson/document.h>

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "kvxsptjson/JsonAllocator.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/kvxsptjson_export.h"

namespace kvx {

/// Memory that begins with a small block and grows in larger ones: tens of thousands of small documents are alive at
/// once during a check.
class CJsonMemory {
 private:
  // Holds a property, or the change of one, with all texts.
  static constexpr std::size_t kFirstBlock = 1536;
  // With its head a little less than 8 KiB.
  static constexpr std::size_t kLaterBlocks = 8160;

  // The pool begins in these.
  alignas(std::max_align_t) std::array<char, kFirstBlock> firstBlock_;
  CJsonAllocator system_;

 protected:
  CJsonMemory() : pool_(firstBlock_.data(), firstBlock_.size(), kLaterBlocks, &system_) {}

  JsonDocumentBase::AllocatorType pool_;
};

/// RapidJSON's document, with memory of its own. A large one that is set into another by CJsonObject is not copied at
/// once: both documents have the same values. Before either changes them, or shows them to someone who might, the one
/// that was set gets a copy.
class KVXSPTJSON_EXPORT JsonDocument : private CJsonMemory, public JsonDocumentBase {
 public:
  JsonDocument() : JsonDocumentBase(&pool_) {}

  /// Whether the values fill their memory well enough to be had by another document: a copy might need less.
  bool IsWorthGiving();
  /// The root of `source`, which lives on as long as this document. Nobody else may have a view into either, so that no
  /// two documents keep one another alive.
  JsonValue Take(const std::shared_ptr<JsonDocument>& source);

  /// To be called before the values of this document are changed, or shown to someone who might: a copy takes the place
  /// of those that another document has.
  void Part();
  /// To be called before the values of this document are changed, too: whoever has given some of them gets a copy.
  void PartTaken();

 private:
  std::vector<std::shared_ptr<JsonDocument>> taken_;
  // As many of these have other values by now, or nobody has a view into them.
  std::size_t parted_ = 0;
  // Another document has the values.
  bool isGiven_ = false;
};

}  // namespace kvx
