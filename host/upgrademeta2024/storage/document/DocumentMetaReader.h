#pragma once

#include <memory>
#include <string>

class CFaultTaker;
class CLoadProgress;
class CMetaDictionary2024;

/// Reads a metamodel document in one pass. `progress` counts its bytes twice, as they are read and as they are taken
/// apart. `faults` gets "FILE:LINE:COLUMN: /POINTER: what is wrong" for JSON that is not a metamodel document; the
/// place is that of the member or item. Throws CKVXException: kvx::kFileError when the file cannot be read,
/// kvx::kMalformedDocument "FILE:LINE:COLUMN: what is wrong" for text that is not JSON.
std::shared_ptr<CMetaDictionary2024> ReadMetaDocument(const std::string& path, CLoadProgress& progress,
                                                      CFaultTaker& faults);
