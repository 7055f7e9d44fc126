#pragma once

#include <string>

namespace fuzz {

/// What a database file holds for whoever reads it with SQLite alone: an opinion that shares no code with the reader
/// under test.
struct SPlainReading {
  /// Why the file holds no metamodel, in what SQLite says or by the rules for its content. Empty when it holds one.
  std::string fault;
  /// The metamodel as test::TextOf() writes it, if there is one.
  std::string text;
  /// Whether the numbers of rows are stored; if so, they are right, or that is the fault.
  bool hasCounts = false;
  /// Whether an ordinal is a text, which SQLite and a reader may put in different orders.
  bool hasTextOrdinals = false;
};

SPlainReading ReadPlainly(const std::string& path);

/// Whether PRAGMA integrity_check finds nothing, in all of the file.
bool IsSoundPlainly(const std::string& path);

/// Executes statements, which must succeed, in a database file.
void ExecutePlainly(const std::string& path, const std::string& statements);

}  // namespace fuzz
