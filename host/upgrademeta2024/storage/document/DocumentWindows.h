#pragma once

#include <memory>
#include <string>

class CLoadProgress;
class CMetaDictionary2024;

/// Reads a metamodel document a megabyte at a time, so that neither its text nor an index of it is ever in memory as a
/// whole. An empty pointer where that cannot be done: for a pipe, which cannot be read twice, and for whatever is not
/// a metamodel document, since only the whole text shows the place of a fault. Throws CKVXException (kvx::kFileError).
std::shared_ptr<CMetaDictionary2024> ReadDocumentInWindows(const std::string& path, CLoadProgress& progress);
