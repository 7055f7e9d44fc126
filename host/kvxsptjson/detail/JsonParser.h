#pragma once

#include <memory>
#include <string>

#include "kvxsptjson/JsonDocument.h"

namespace kvx {

/// Parses `text` into a new document by the rules of CJsonObject::CreateFromFile.
std::shared_ptr<JsonDocument> ParseDocument(const std::string& text, const std::string& name);

}  // namespace kvx
