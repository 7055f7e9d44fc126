#pragma once

#include <string>

class CMetaDictionary2024;
enum class EExistingMeta;

/// Writes a metamodel document, every member of every element included, and replaces the file as a whole.
/// False, with nothing changed, when something is there that may not be replaced. Throws CKVXException
/// (kvx::kFileError).
bool WriteMetaDocument(const std::string& path, const CMetaDictionary2024& dictionary, EExistingMeta existing);
