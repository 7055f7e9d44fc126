#include "kvxsptjson/JsonDocument.h"

#include <cstring>

#include "kvxsptjson/detail/DeepCopy.h"

namespace kvx {
namespace {

// Of a smaller document the last block is too large a part.
constexpr std::size_t kWorthGiving = 16384;

}  // namespace

bool JsonDocument::IsWorthGiving() {
  return !taken_.empty() || pool_.Size() > kWorthGiving;
}

JsonValue JsonDocument::Take(const std::shared_ptr<JsonDocument>& source) {
  source->PartTaken();
  taken_.push_back(source);
  source->isGiven_ = true;
  const JsonValue& root = *source;
  JsonValue value;
  // RapidJSON itself can only copy the root deeply, or empty it.
  std::memcpy(static_cast<void*>(&value), static_cast<const void*>(&root), sizeof(value));
  return value;
}

void JsonDocument::Part() {
  if (isGiven_) {
    JsonValue& root = *this;
    root = CDeepCopy(pool_).Copy(root);
    isGiven_ = false;
  }
}

void JsonDocument::PartTaken() {
  for (; parted_ < taken_.size(); ++parted_) {
    if (taken_[parted_].use_count() > 1) {
      taken_[parted_]->Part();
    }
  }
}

}  // namespace kvx
