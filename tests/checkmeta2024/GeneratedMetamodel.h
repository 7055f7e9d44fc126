#pragma once

#include <rapidcheck.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "checkmeta2024/MetaKindRow.h"
#include "checkmeta2024/UpgradeFolder.h"

namespace test {

/// Metamodels with a few elements of each kind, with names and texts of many sorts. Two metamodels of this generator
/// have about half of their names in common.
rc::Gen<SModel> GenModel();

/// Shows a metamodel as its elements' names with what they carry.
void showValue(const SModel& model, std::ostream& output);

/// One change of a client against an original, with what a check must find of it.
struct SEditCase {
  SMetaKindRow kind;
  SModel original;
  SModel client;
  /// As test::Findings has them.
  std::vector<std::string> findings;
  /// The element whose check fails first, and the line at which that is logged; nothing fails when it is empty.
  std::string failing;
  int line = 0;
};

void showValue(const SEditCase& edit, std::ostream& output);

/// A kind of edit: changes the client of a case whose two metamodels are the same and hold the element `kTarget` of the
/// kind, which carries the property `kTargetProperty` and, if a class or link, the behavior name, if a behavior the
/// method `kTargetPart`.
struct SEdit {
  std::string name;
  void (*apply)(SEditCase&);
  /// Whether the edit is one of these kinds of elements only; empty for all.
  std::string onlyKind;
};

void PrintTo(const SEdit& edit, std::ostream* output);

const std::vector<SEdit>& Edits();
rc::Gen<SEditCase> GenEditCase(const SEdit& edit);

/// Two lists of names: what became of the original's in the client's, which is in an order of its own.
struct SListPair {
  enum EState { kSame, kChanged, kDeleted, kInserted };
  using List = std::vector<std::pair<std::string, EState>>;

  List original;
  List client;

  /// The names in one state, in the list's order.
  static std::vector<std::string> InState(const List& list, EState state);
};

void showValue(const SListPair& lists, std::ostream& output);

rc::Gen<SListPair> GenListPair();

}  // namespace test
