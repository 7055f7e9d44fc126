#pragma once

#include <string>

class CMetaStorage;

/// The one function that the library of each kind of database exports: the storage for a location of that kind, whose
/// SMetaLocation::name is `name`. It becomes the caller's.
extern "C" __attribute__((visibility("default"))) CMetaStorage* OpenDatabase(const std::string& location,
                                                                             const std::string& name);
