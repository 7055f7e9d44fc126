#pragma once

#include <string>
#include <vector>

class CKVXException;
class CUpgradeContext;

namespace upgradesrv {

struct SStrategyConfiguration;

// The metamodel check is a strategy like any other. This is all that the tool knows of its parameter and of its display
// texts.

/// Whether it checks elements of that kind.
bool IsKind(const std::string& kind);
/// Its kinds, separated by commas and spaces.
std::string KindNames();

bool IsCheck(const SStrategyConfiguration& strategy);

/// Puts kinds in place of those that the strategy's parameter lists. False when it lists none, of any strategy.
bool ReplaceKinds(const SStrategyConfiguration& strategy, const std::vector<std::string>& kinds);

/// Throws CTrouble with the place for a parameter with which the check would fail, or skip a kind.
void RequireCheckParameter(const SStrategyConfiguration& strategy);

/// What the reader of the check's report has to know beforehand: that nothing is checked, that words will be left out.
/// Display texts that cannot be read are left to the check, which may not need them.
std::vector<std::string> CheckNotes(const SStrategyConfiguration& strategy, const CUpgradeContext& context);

/// The file that the check saves what it found in.
std::string CheckDocument(const CUpgradeContext& context);

/// What the check's report leaves out; `command` shows it.
std::string NoteOnReport(const SStrategyConfiguration& strategy, const std::string& command);

/// Where the display text is that the check has failed to find; empty when something else has failed.
std::string PlaceOfDisplayText(const CKVXException& failure, const CUpgradeContext& context);

}  // namespace upgradesrv
