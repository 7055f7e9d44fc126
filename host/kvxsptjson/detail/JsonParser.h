#pragma once

#include <rapidjson/document.h>

#include <memory>
#include <string>

#include "kvxsptjson/JsonAllocator.h"
#include "kvxsptjson/JsonObject.h"

namespace kvx {

/// A new document whose memory begins with a small block and grows in larger ones: tens of thousands of small documents
/// are alive at once during a check.
std::shared_ptr<JsonDocument> NewDocument();

/// Parses `text` into a new document by the rules of CJsonObject::CreateFromFile.
std::shared_ptr<JsonDocument> ParseDocument(const std::string& text, const std::string& name);

}  // namespace kvx
