#pragma once

#include <string>

class CMetaDictionary2024;

/// Writes a metamodel document, every member of every element included, and replaces the file as a whole.
/// Throws CKVXException (kvx::kFileError).
void WriteMetaDocument2024(const std::string& path, const CMetaDictionary2024& dictionary);
