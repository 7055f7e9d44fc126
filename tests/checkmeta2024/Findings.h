#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kvxsptjson/JsonObject.h"

namespace test {

/// The object of a JSON text.
std::shared_ptr<CJsonObject> Json(const std::string& text);

/// The names of the members, in their order.
std::vector<std::string> Keys(const CJsonObject& object);
/// The internal names of the objects of an array, in their order; empty when there is no such array.
std::vector<std::string> Names(const CJsonObject& object, const std::string& key);
/// The property update entries of an entry, each as "property.field: original > client".
std::vector<std::string> Changes(const CJsonObject& entry);

/// Every finding of a check result document, one line each and in the order of the document:
///
///     class inserted_classes NAME
///     class updated_classes NAME inserted_properties NAME
///     class updated_classes NAME updated_properties PROPERTY.FIELD: ORIGINAL > CLIENT
///     class updated_classes NAME deleted_behaviors NAME
///
/// Fails the test on a member that no finding has.
std::vector<std::string> Findings(const CJsonObject& checkResult);

}  // namespace test
